// SPDX-License-Identifier: MIT
// Sees what the platform answers to the library. The library does not hand on
// every result: a call that failed without a word is found out here.
#ifndef SWCTL_SHELL_CHIP_WITNESS_H
#define SWCTL_SHELL_CHIP_WITNESS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace swsh {

struct FailedCall {
  const char *name;
  int32_t result;
};

// Notes the calls of the SDK and the adapter that answer less than 0 while it
// lives. Calls that the platform makes inside one of its own do not count.
class Witness {
 public:
  Witness();
  ~Witness();
  Witness(const Witness &) = delete;
  Witness &operator=(const Witness &) = delete;

  const std::vector<FailedCall> &failed() const { return failed_; }
  bool saw(std::string_view name) const;
  // What to name for a call of the library that gave `result`: the first call
  // that failed if the library does not answer with its result, else the
  // library's.
  FailedCall blame(const char *function, int32_t result) const;

  // What the platform answered to a call; used by the calls themselves.
  static void note(const char *name, int32_t result);

 private:
  Witness *outer_;
  std::vector<FailedCall> failed_;
};

}  // namespace swsh

#endif
