// SPDX-License-Identifier: MIT
// One call on its way through the probe.
#ifndef SWCTL_PROBE_OBSERVATION_H
#define SWCTL_PROBE_OBSERVATION_H

#include <optional>

#include "capture.h"
#include "plan.h"
#include "session.h"

namespace swprobe {

class Observation {
 public:
  // Looks at what goes into the call and asks the plan. What the addresses are
  // of lives as long as this.
  Observation(Site &site, std::span<const Address> addresses);
  ~Observation();
  Observation(const Observation &) = delete;
  Observation &operator=(const Observation &) = delete;

  // Whether this thread is inside a call of the platform: what the platform
  // calls is its own affair.
  static bool is_inside();

  // Where to pass the call on to; null if the platform is not to be called or
  // has no such call.
  template <class Function>
  Function next() const {
    return reinterpret_cast<Function>(next_);
  }

  // Looks at what the call wrote. Takes the platform's result, or anything if
  // the platform was not called, and gives the one for the caller.
  int32_t finish(int32_t result);

 private:
  void look();
  void record(int32_t result);
  void add(int32_t result);
  void answer_output(const Output &output);
  void answer_outputs();

  Site &site_;
  std::span<const Address> addresses_;
  bool outermost_;
  Look look_ = Look::none;
  void *next_ = nullptr;
  std::vector<Part> parts_;
  Call call_{};
  uint64_t expected_ = 0;
  std::optional<Verdict> verdict_;
};

}  // namespace swprobe

#endif
