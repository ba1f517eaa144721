// SPDX-License-Identifier: MIT
#ifndef VCHIPCTL_USAGE_ERROR_H
#define VCHIPCTL_USAGE_ERROR_H

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

}  // namespace vchipctl

#endif
