// SPDX-License-Identifier: MIT
// All that answers for the platform: the fault plan and the scripted answers.
#ifndef SWCTL_PROBE_PLAN_H
#define SWCTL_PROBE_PLAN_H

#include <optional>
#include <string>
#include <vector>

#include "rule.h"

namespace swprobe {

struct Verdict {
  int32_t result;
  std::vector<Output> outputs;
};

class Plan {
 public:
  void add_rule(Rule rule) { rules_.push_back(std::move(rule)); }
  void add_answer(Rule rule) { answers_.push_back(std::move(rule)); }
  void clear();
  // Every rule counts the call; nothing if none of them is meant for it.
  std::optional<Verdict> judge(const Call &made);
  uint64_t verdicts() const { return verdicts_; }
  // What is wrong with the rules that were read from somewhere, after the calls
  // that were judged: a line for each that answered none of them, or that
  // another contradicts.
  std::vector<std::string> complaints() const;

 private:
  Rule *choose(const Call &made);

  std::vector<Rule> rules_;
  std::vector<Rule> answers_;
  uint64_t verdicts_ = 0;
};

}  // namespace swprobe

#endif
