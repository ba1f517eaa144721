// SPDX-License-Identifier: MIT
#include "stp/stp_block.h"

#include <algorithm>
#include <atomic>

namespace vchip {
namespace {

// A killed call must not leave an instance with half of its states.
void set_exists(StpInstance &instance, uint32_t exists) {
  std::atomic_ref<uint32_t>(instance.exists).exchange(exists);
}

}  // namespace

void StpBlock::make(uint32_t instance, uint32_t state) {
  set_exists(instances_[instance], 0);
  instances_[instance].states.fill(state);
  set_exists(instances_[instance], 1);
}

void StpBlock::power_on() {
  make(kCommonInstance, kStpForwarding);
}

void StpBlock::create(uint32_t instance) {
  make(instance, kStpDisabled);
}

void StpBlock::destroy(uint32_t instance) {
  set_exists(instances_[instance], 0);
}

bool StpBlock::sound() const {
  return std::ranges::all_of(instances_, [](const StpInstance &instance) {
    return std::ranges::all_of(instance.states,
                               [](uint32_t state) { return state <= kStpForwarding; });
  });
}

}  // namespace vchip
