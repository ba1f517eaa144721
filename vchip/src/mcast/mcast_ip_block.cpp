// SPDX-License-Identifier: MIT
#include "mcast/mcast_ip_block.h"

#include <swctl-vchip/mcast_ip_view.h>

#include <arpa/inet.h>
#include <atomic>
#include <cstring>

#include "core/dump.h"
#include "core/ports_in.h"
#include "core/viewing.h"

namespace vchip {
namespace {

bool same_key(const chip_ip_mcast_entry &one, const chip_ip_mcast_entry &other) {
  return one.vid == other.vid && one.address_a == other.address_a &&
         one.address_b == other.address_b;
}

bool same_key(const chip_ip6_mcast_entry &one, const chip_ip6_mcast_entry &other) {
  return one.vid == other.vid &&
         memcmp(&one.address_a, &other.address_a, sizeof one.address_a) == 0 &&
         memcmp(&one.address_b, &other.address_b, sizeof one.address_b) == 0;
}

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

std::string text(int family, const void *address) {
  char buffer[INET6_ADDRSTRLEN] = {};
  inet_ntop(family, address, buffer, sizeof buffer);
  return buffer;
}

std::string text(uint32_t address) {
  const uint32_t bytes = htonl(address);
  return text(AF_INET, &bytes);
}

std::string text(const chip_ip6_address &address) {
  return text(AF_INET6, address.bytes);
}

template <typename Table>
std::vector<McastIpView> views(const Table &table) {
  std::vector<McastIpView> all;
  for (const auto &place : table) {
    if (place.used == 0) continue;
    all.push_back({place.entry.vid, text(place.entry.address_a), text(place.entry.address_b),
                   place.entry.ports});
  }
  return all;
}

void dump_entries(Dump &block, const char *name, const std::vector<McastIpView> &entries) {
  block.objects(name, entries.size(), [&](Dump &entry, size_t place) {
    const McastIpView &view = entries[place];
    entry.number("vid", view.vid);
    entry.text("source", view.source);
    entry.text("group", view.group);
    entry.numbers("ports", ports_in(view.ports));
  });
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void McastIpBlock::reset() {
  for (auto &place : ip_) set_used(place, 0);
  for (auto &place : ip6_) set_used(place, 0);
  ip_mode_ = 0;
  ip6_mode_ = 0;
  for (MissActions &actions : miss_actions_) actions.fill(0);
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

void McastIpBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    dump_entries(block, "ip", views(ip_));
    dump_entries(block, "ip6", views(ip6_));
    block.number("ip_mode", ip_mode_);
    block.number("ip6_mode", ip6_mode_);
    block.objects("ports", miss_actions_.size(), [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      entry.numbers("miss_action", {miss_actions_[port].begin(), miss_actions_[port].end()});
    });
  });
}

std::vector<McastIpView> ip_mcast_entries(uint32_t unit) {
  Viewing chip;
  return views(chip.unit(unit).mcast_ip.ip());
}

std::vector<McastIpView> ip6_mcast_entries(uint32_t unit) {
  Viewing chip;
  return views(chip.unit(unit).mcast_ip.ip6());
}

McastModeView mcast_modes(uint32_t unit) {
  Viewing chip;
  const McastIpBlock &block = chip.unit(unit).mcast_ip;
  McastModeView view = {block.ip_mode(), block.ip6_mode(), {}};
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    const auto &actions = block.miss_actions(port);
    view.miss_actions.push_back({actions.begin(), actions.end()});
  }
  return view;
}

}  // namespace vchip
