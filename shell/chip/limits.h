// SPDX-License-Identifier: MIT
// How far the numbers of the command line go, where the headers of libswctl
// have no name for it.
#ifndef SWCTL_SHELL_CHIP_LIMITS_H
#define SWCTL_SHELL_CHIP_LIMITS_H

#include <swctl/qos.h>

#include <cstdint>

namespace swsh {

// The VLANs that there can be, and what a VLAN field holds.
inline constexpr int64_t kFirstVlan = 1;
inline constexpr int64_t kLastVlan = 4094;
inline constexpr int64_t kLastVlanId = 4095;

inline constexpr int64_t kLastRule = 1535;
inline constexpr int64_t kLastRuleCounter = 1535;
inline constexpr int64_t kLastRuleTemplate = 7;
inline constexpr int64_t kLastMeter = 255;

// Rates, in kbit/s, and bursts, in bytes, in the steps that the chip has; 20 and
// 16 bits count them.
inline constexpr int64_t kRateStep = 16;
inline constexpr int64_t kLastRate = 0xFFFFF * kRateStep;
inline constexpr int64_t kBurstStep = 128;
inline constexpr int64_t kLastBurst = 0xFFFF * kBurstStep;

inline constexpr int64_t kLastPriority = USER_QOS_PRIORITIES - 1;
inline constexpr int64_t kLastQueue = USER_QOS_QUEUES - 1;
inline constexpr int64_t kLastCodePoint = 63;

inline constexpr int64_t kLastInstance = 15;
inline constexpr int64_t kLastTrunk = 31;
inline constexpr int64_t kLastMirrorGroup = 3;
inline constexpr int64_t kLastTpidEntry = 3;
inline constexpr int64_t kLastAttackType = 31;

}  // namespace swsh

#endif
