// SPDX-License-Identifier: MIT
#ifndef VCHIP_COMMON_VARIABLE_H
#define VCHIP_COMMON_VARIABLE_H

#include <string>

namespace vchip {

// A variable of the environment, empty if it is not set.
std::string variable(const char *name);

}  // namespace vchip

#endif
