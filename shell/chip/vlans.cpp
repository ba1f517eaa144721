// SPDX-License-Identifier: MIT
#include "chip/vlans.h"

#include <swctl/platform/adapter.h>
#include <swctl/port.h>
#include <swctl/vlan.h>

#include <algorithm>

#include "chip/call.h"
#include "chip/lead.h"
#include "chip/limits.h"
#include "chip/ports.h"
#include "fault.h"
#include "number_list.h"

namespace swsh {
namespace {

constexpr uint32_t kWordBits = 32;

void add_to(user_pbmp_t &map, int64_t port) {
  const auto bit = static_cast<uint32_t>(port);
  map.word[bit / kWordBits] |= 1u << (bit % kWordBits);
}

// The interfaces of the chip ports in the first word, rising.
std::vector<int64_t> interfaces_in(uint32_t mask) {
  std::vector<int64_t> interfaces;
  for (int32_t port = 0; port < static_cast<int32_t>(kWordBits); ++port) {
    if ((mask >> port & 1u) == 0) continue;
    const int32_t interface = adp_phy_2_intf_id(port);
    if (interface >= 0) interfaces.push_back(interface);
  }
  std::sort(interfaces.begin(), interfaces.end());
  return interfaces;
}

}  // namespace

std::optional<Vlan> read_vlan(const Context &context, int64_t vid) {
  user_pbmp_t member;
  user_pbmp_t untagged;
  const auto id = static_cast<uint32_t>(vid);
  if (user_vlan_port_get(kLead, context.unit, id, &member, &untagged) != 0) return std::nullopt;
  const uint32_t untag = member.word[0] & untagged.word[0];
  return Vlan{vid, interfaces_in(member.word[0] & ~untag), interfaces_in(untag)};
}

std::vector<Vlan> read_vlans(const Context &context) {
  ask(SWSH_CALL(user_vlan_default_get), context, kLead, context.unit);
  std::vector<Vlan> all;
  for (int64_t each = kFirstVlan; each <= kLastVlan; ++each) {
    if (std::optional<Vlan> vlan = read_vlan(context, each)) all.push_back(std::move(*vlan));
  }
  return all;
}

std::vector<Vlan> vlans_of(const Context &context, const std::vector<int64_t> &vids) {
  std::vector<Vlan> all;
  std::vector<int64_t> absent;
  for (const int64_t vid : vids) {
    std::optional<Vlan> vlan = read_vlan(context, vid);
    if (vlan) {
      all.push_back(std::move(*vlan));
    } else {
      absent.push_back(vid);
    }
  }
  if (absent.empty()) return all;
  const std::string list = number_list_text(absent);
  throw CommandError(wrong_usage("there is no VLAN " + list, list));
}

int64_t read_pvid(const Context &context, int64_t interface) {
  return read_port(context, port_of(interface), SWSH_CALL(user_port_untagged_vlan_get));
}

std::vector<VlanRange> ranges_of(const std::vector<int64_t> &vids) {
  std::vector<VlanRange> ranges;
  for (const int64_t each : vids) {
    const auto vid = static_cast<uint32_t>(each);
    if (ranges.empty() || ranges.back().last + 1 != vid) ranges.push_back({vid, vid});
    ranges.back().last = vid;
  }
  return ranges;
}

user_pbmp_t interface_bitmap(const std::vector<int64_t> &interfaces) {
  user_pbmp_t map = {};
  for (const Port &port : ports_of(interfaces)) add_to(map, port.interface);
  return map;
}

user_pbmp_t chip_bitmap(const std::vector<int64_t> &interfaces) {
  user_pbmp_t map = {};
  for (const Port &port : ports_of(interfaces)) add_to(map, port.chip);
  return map;
}

}  // namespace swsh
