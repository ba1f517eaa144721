// SPDX-License-Identifier: MIT
#include "l2/group_block.h"

#include <swctl-vchip/vchip.h>

#include <algorithm>
#include <atomic>
#include <cstring>

#include "common/sound.h"

namespace vchip {
namespace {

constexpr int32_t kNoGroup = -1;

}  // namespace

bool GroupBlock::sound() const {
  return std::ranges::all_of(groups_, [this](const Group &group) {
    return group.exists == 0 ||
           (group.vid < kVlanIds && group.mask < kPortMasks && is_ports(masks_[group.mask]));
  });
}

int32_t GroupBlock::next(int32_t index) const {
  while (++index < kGroups)
    if (groups_[index].exists != 0) return index;
  return kNoGroup;
}

int32_t GroupBlock::find(uint32_t vid, const uint8_t *mac) const {
  for (int32_t index = next(kNoGroup); index != kNoGroup; index = next(index)) {
    const Group &group = groups_[index];
    if (group.vid == vid && memcmp(group.mac, mac, sizeof group.mac) == 0) return index;
  }
  return kNoGroup;
}

bool GroupBlock::is_at(int32_t index, uint32_t vid, const uint8_t *mac) const {
  const Group &group = groups_[index];
  return group.exists != 0 && group.vid == vid && memcmp(group.mac, mac, sizeof group.mac) == 0;
}

chip_l2_mcast_entry GroupBlock::entry(int32_t index) const {
  const Group &group = groups_[index];
  chip_l2_mcast_entry entry = {};
  entry.vid = group.vid;
  memcpy(entry.mac, group.mac, sizeof entry.mac);
  entry.portmask = masks_[group.mask];
  entry.fwdIndex = group.mask;
  return entry;
}

bool GroupBlock::is_free(uint32_t mask) const {
  for (int32_t index = next(kNoGroup); index != kNoGroup; index = next(index))
    if (groups_[index].mask == mask) return false;
  return true;
}

uint32_t GroupBlock::choose_mask(uint32_t wanted) const {
  if (wanted != 0 && is_free(wanted)) return wanted;
  uint32_t lowest = 1;
  while (!is_free(lowest)) ++lowest;
  return lowest;
}

int32_t GroupBlock::add(const chip_l2_mcast_entry &entry) {
  if (find(entry.vid, entry.mac) != kNoGroup) return VCHIP_E_L2_EXISTS;
  int32_t place = 0;
  while (place < kGroups && groups_[place].exists != 0) ++place;
  if (place == kGroups) return VCHIP_E_L2_FULL;
  Group &group = groups_[place];
  group.mask = choose_mask(entry.fwdIndex);
  group.vid = entry.vid;
  memcpy(group.mac, entry.mac, sizeof group.mac);
  masks_[group.mask] = entry.portmask;
  std::atomic_ref<uint32_t>(group.exists).store(1, std::memory_order_release);
  return 0;
}

int32_t GroupBlock::remove(uint32_t vid, const uint8_t *mac) {
  const int32_t index = find(vid, mac);
  if (index == kNoGroup) return VCHIP_E_L2_ENTRY;
  groups_[index].exists = 0;
  return 0;
}

}  // namespace vchip
