// SPDX-License-Identifier: MIT
#include "acl/acl_count_block.h"

namespace vchip {

// A counter that is full begins again at 0.
void AclCountBlock::count(uint32_t counter, uint64_t packets, uint64_t bytes) {
  packets_[counter] += packets;
  bytes_[counter] += bytes;
}

}  // namespace vchip
