// SPDX-License-Identifier: MIT
// What the environment says about the chip's image and its lock.
#ifndef VCHIP_CHIP_SETTINGS_H
#define VCHIP_CHIP_SETTINGS_H

#include <cstdint>
#include <string>

namespace vchip {

// The image's name; empty for a private chip.
std::string image_setting();

// How long a call waits for the lock, in nanoseconds, or Patience::kForever.
// Read once, until it is forgotten.
uint64_t wait_setting();
void forget_wait_setting();

// Whether a record lock is asked for.
bool record_lock_setting();

}  // namespace vchip

#endif
