// SPDX-License-Identifier: MIT
#ifndef SWCTL_PROBE_WRONG_H
#define SWCTL_PROBE_WRONG_H

#include <stdexcept>
#include <string>

namespace swprobe {

// What is read from a file or from the environment is not as it should be.
[[noreturn]] inline void wrong(const std::string &what) {
  throw std::runtime_error(what);
}

}  // namespace swprobe

#endif
