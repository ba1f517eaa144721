// SPDX-License-Identifier: MIT
#include "mcast/mcast_ip_block.h"

#include <algorithm>
#include <atomic>
#include <cstring>

#include "common/sound.h"

namespace vchip {

bool same_key(const chip_ip_mcast_entry &one, const chip_ip_mcast_entry &other) {
  return one.vid == other.vid && one.address_a == other.address_a &&
         one.address_b == other.address_b;
}

bool same_key(const chip_ip6_mcast_entry &one, const chip_ip6_mcast_entry &other) {
  return one.vid == other.vid &&
         memcmp(&one.address_a, &other.address_a, sizeof one.address_a) == 0 &&
         memcmp(&one.address_b, &other.address_b, sizeof one.address_b) == 0;
}

namespace {

template <typename Place>
void set_used(Place &place, uint32_t used) {
  std::atomic_ref<uint32_t>(place.used).exchange(used);
}

template <typename Place, typename Entry>
void fill(Place &place, const Entry &entry) {
  set_used(place, 0);
  place.entry = entry;
  set_used(place, 1);
}

// Null if there is none.
template <typename Table, typename Entry>
auto *find(Table &table, const Entry &key) {
  for (auto &place : table)
    if (place.used != 0 && same_key(place.entry, key)) return &place;
  return static_cast<decltype(&table[0])>(nullptr);
}

template <typename Table>
auto *find_empty(Table &table) {
  for (auto &place : table)
    if (place.used == 0) return &place;
  return static_cast<decltype(&table[0])>(nullptr);
}

template <typename Table, typename Entry>
int32_t add_to(Table &table, const Entry &entry) {
  if (find(table, entry) != nullptr) return VCHIP_E_IP_MCAST_EXISTS;
  auto *place = find_empty(table);
  if (place == nullptr) return VCHIP_E_IP_MCAST_FULL;
  fill(*place, entry);
  return 0;
}

template <typename Table, typename Entry>
int32_t remove_from(Table &table, const Entry &key) {
  auto *place = find(table, key);
  if (place == nullptr) return VCHIP_E_IP_MCAST_ENTRY;
  set_used(*place, 0);
  return 0;
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void McastIpBlock::power_on() {
  for (MissActions &actions : miss_actions_) actions.fill(FrameAction::forward);
}

bool McastIpBlock::sound() const {
  const auto is_whole = [](const auto &place) {
    return place.used == 0 || (place.entry.vid < kVlanIds && is_ports(place.entry.ports));
  };
  return std::ranges::all_of(ip_, is_whole) && std::ranges::all_of(ip6_, is_whole) &&
         ip_mode_ <= kMaxMcastMode && ip6_mode_ <= kMaxMcastMode &&
         std::ranges::all_of(miss_actions_, are_known<kMissTypes>);
}

int32_t McastIpBlock::add(const chip_ip_mcast_entry &entry) {
  return add_to(ip_, entry);
}

int32_t McastIpBlock::set(const chip_ip_mcast_entry &entry) {
  auto *place = find(ip_, entry);
  if (place == nullptr) return VCHIP_E_IP_MCAST_ENTRY;
  fill(*place, entry);
  return 0;
}

int32_t McastIpBlock::remove(const chip_ip_mcast_entry &key) {
  return remove_from(ip_, key);
}

int32_t McastIpBlock::add(const chip_ip6_mcast_entry &entry) {
  return add_to(ip6_, entry);
}

int32_t McastIpBlock::remove(const chip_ip6_mcast_entry &key) {
  return remove_from(ip6_, key);
}

}  // namespace vchip
