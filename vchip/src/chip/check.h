// SPDX-License-Identifier: MIT
#ifndef VCHIP_CHIP_CHECK_H
#define VCHIP_CHIP_CHECK_H

#include <swctl-vchip/image.h>

#include <vector>

#include "unit/state.h"

namespace vchip {

// What no call could have left in a chip that no call is changing.
std::vector<Fault> faults_of(const State &state);

// Private memory with what a killed call has left, as the next call would repair
// it: an interrupted reset is done again.
void recover_copy(State &state);

}  // namespace vchip

#endif
