// SPDX-License-Identifier: MIT
#ifndef VCHIPCTL_USAGE_ERROR_H
#define VCHIPCTL_USAGE_ERROR_H

#include <swctl-vchip/vchip.h>

#include <stdexcept>

namespace vchipctl {

// Wrong words on the command line: what() names the word and what was expected.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The chip or its image said no.
struct Refused : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Two that were compared differ. Nothing went wrong, and all was said.
struct Differ {};

// For the result of a control: whatever is not 0 is a refusal.
inline void expect_done(int32_t result) {
  if (result != 0) throw Refused(vchip_result_text(result));
}

}  // namespace vchipctl

#endif
