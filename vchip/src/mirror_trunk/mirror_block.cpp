// SPDX-License-Identifier: MIT
#include "mirror_trunk/mirror_block.h"

#include <algorithm>
#include <atomic>

#include "common/sound.h"

namespace vchip {

bool MirrorBlock::sound() const {
  return std::ranges::all_of(groups_, [](const chip_mirror_entry &group) {
    return group.mirroring_port < VCHIP_PORTS && is_ports(group.ingress) && is_ports(group.egress);
  });
}

void MirrorBlock::set_group(uint32_t group, const chip_mirror_entry &entry) {
  chip_mirror_entry &own = groups_[group];
  const std::atomic_ref<uint32_t> enable(own.enable);
  chip_mirror_entry disabled = entry;
  disabled.enable = 0;
  enable.exchange(0);
  own = disabled;
  enable.exchange(entry.enable);
}

}  // namespace vchip
