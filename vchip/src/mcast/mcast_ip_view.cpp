// SPDX-License-Identifier: MIT
#include <swctl-vchip/mcast_ip_view.h>

#include "chip/viewing.h"
#include "common/address_text.h"

namespace vchip {
namespace {

McastIpView view_of(const chip_ip_mcast_entry &entry) {
  return {entry.vid, ip4_text(entry.address_a), ip4_text(entry.address_b), entry.ports};
}

McastIpView view_of(const chip_ip6_mcast_entry &entry) {
  return {entry.vid, ip6_text(entry.address_a.bytes), ip6_text(entry.address_b.bytes), entry.ports};
}

template <typename Table>
std::vector<McastIpView> views(const Table &table) {
  std::vector<McastIpView> all;
  for (const auto &place : table)
    if (place.used != 0) all.push_back(view_of(place.entry));
  return all;
}

}  // namespace

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
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    view.miss_actions.push_back(numbers_of(block.miss_actions(port)));
  return view;
}

}  // namespace vchip
