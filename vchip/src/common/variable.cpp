// SPDX-License-Identifier: MIT
#include "common/variable.h"

#include <cstdlib>

namespace vchip {

std::string variable(const char *name) {
  const char *value = getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace vchip
