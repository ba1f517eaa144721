// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_SWEEP_JUDGE_H
#define SWCTL_TESTS_SWEEP_JUDGE_H

#include <swctl/platform/l2_records.h>

#include "wire.h"

namespace sweep {

// What a run without the failure looks like, and what the walks come by.
struct Reference {
  const FunctionRules *rules;
  Trace trace;  // with the effect of every call
  int32_t result;
  std::vector<chip_l2_ucast_entry> entries;  // in the order of the scan
  // The function's outputs, before the call and after it.
  std::vector<uint8_t> given = {};
  std::vector<uint8_t> written = {};
};

// Follows a run beside its reference, call by call. The first thing that is
// not as the rules say is thrown as a std::runtime_error.
class Judge {
 public:
  Judge(const Reference &reference, const Trace &run) : reference_(reference), run_(run) {}
  void judge(int32_t result);

  // What the calls that got through did to the chip.
  const std::vector<const Changes *> &effects() const { return effects_; }

 private:
  bool follow();
  bool follow_alone();
  void hold_arguments(const Seen &seen, const Seen &expected) const;
  bool has_same_arguments(const Seen &seen, const Seen &expected) const;
  void note_effect(const Seen &seen, const Seen &expected);
  void apply(Rule rule, const Seen &seen, const Seen &expected);
  void apply_to_walk(Rule rule, const Seen &seen, const Seen &expected);
  void apply_to_arguments(Rule rule, const Seen &seen, const Seen &expected);
  void stop_if(bool failed, int32_t result);
  void purge();
  void take_removal(bool is_recorded);
  void end_walk(const Seen &seen, bool is_early);
  const Seen &take(const std::string &name);

  const Reference &reference_;
  const Trace &run_;
  std::vector<const Changes *> effects_;

  size_t at_ = 0;        // in the run
  size_t expected_ = 0;  // in the reference's trace
  bool ended_ = false;
  // Calls may be missing: what they are about was not reached.
  bool gaps_ = false;
  // Arguments may differ: they carry what was not read or written.
  bool loose_ = false;
  // The reference has no more to say.
  bool alone_ = false;
  size_t walked_ = 0;
  bool purged_ = false;
  int32_t usual_port_ = 0;  // what the adapter would have answered
  int32_t fed_port_ = 0;    // and what it did
  std::optional<int32_t> result_;
};

}  // namespace sweep

#endif
