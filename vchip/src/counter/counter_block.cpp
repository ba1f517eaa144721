// SPDX-License-Identifier: MIT
#include "counter/counter_block.h"

namespace vchip {

uint64_t PortCounterBlock::count(int32_t port, uint32_t counter) const {
  const user_counter_t &value = ports_[port].value[counter];
  return uint64_t{value.high} << 32 | value.low;
}

void PortCounterBlock::set(int32_t port, uint32_t counter, uint64_t value) {
  ports_[port].value[counter] = {static_cast<uint32_t>(value >> 32), static_cast<uint32_t>(value)};
}

void PortCounterBlock::add(int32_t port, uint32_t counter, uint64_t amount) {
  set(port, counter, count(port, counter) + amount);
}

}  // namespace vchip
