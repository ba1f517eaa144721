// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_LEAD_H
#define SWCTL_SHELL_CHIP_LEAD_H

#include <cstdint>

namespace swsh {

// The leading argument of every function of the library, which none reads.
inline constexpr uint32_t kLead = 0;

}  // namespace swsh

#endif
