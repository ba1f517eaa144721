// SPDX-License-Identifier: MIT
// Fails the calls of a function one after the other.
#ifndef SWCTL_TESTS_PORT_FAIL_EACH_H
#define SWCTL_TESTS_PORT_FAIL_EACH_H

#include <algorithm>

#include "support/library_test.h"

namespace swctl_test {

inline constexpr int32_t kMadeUpFailure = -77;

// One run with one failed call.
struct FailedRun {
  size_t place;      // of the failed call among the SDK calls, from 0
  std::string name;  // of the failed call
  size_t made;       // SDK calls made, the failed one included
  size_t usual;      // SDK calls of a run without a failure
  int32_t result;
};

inline std::vector<swprobe::Call> take_sdk_calls() {
  std::vector<swprobe::Call> calls = swprobe::take();
  std::erase_if(calls, [](const swprobe::Call &call) { return call.name.starts_with("adp_"); });
  return calls;
}

// Runs run() once as it is and then once for every SDK call that it made, with
// that call failing. prepare() goes before each run, judge(FailedRun) after
// each failed one.
template <typename Prepare, typename Run, typename Judge>
void fail_each(Prepare prepare, Run run, Judge judge) {
  prepare();
  swprobe::forget();
  run();
  const std::vector<swprobe::Call> usual = take_sdk_calls();
  ASSERT_FALSE(usual.empty());
  for (size_t place = 0; place < usual.size(); ++place) {
    const std::string &name = usual[place].name;
    SCOPED_TRACE(name + " at " + std::to_string(place));
    const auto end = usual.begin() + static_cast<std::ptrdiff_t>(place);
    const auto before =
        std::count_if(usual.begin(), end, [&](const auto &call) { return call.name == name; });
    swprobe::clear_plan();
    prepare();
    swprobe::Answer failure;
    failure.result = kMadeUpFailure;
    swprobe::answer(name, static_cast<uint64_t>(before) + 1, failure);
    swprobe::forget();
    const int32_t result = run();
    judge(FailedRun{place, name, take_sdk_calls().size(), usual.size(), result});
  }
  swprobe::clear_plan();
}

// What most functions do: end there and say so.
inline void expect_end(const FailedRun &run) {
  EXPECT_EQ(run.result, kMadeUpFailure);
  EXPECT_EQ(run.made, run.place + 1);
}

}  // namespace swctl_test

#endif
