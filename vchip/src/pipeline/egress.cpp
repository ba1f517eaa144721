// SPDX-License-Identifier: MIT
// Which ports a frame leaves by.
#include <bit>

#include "pipeline/steps.h"
#include "pipeline/trunk_hash.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr const char *kNoLink = "rtk_port_adminEnable_set";

// Of each trunk one member, by the frame's hash.
uint32_t choose_members(const Way &way, uint32_t ports) {
  uint32_t chosen = ports & ~way.tables.trunked;
  uint32_t rest = ports & way.tables.trunked;
  const uint32_t hash = rest == 0 ? 0 : trunk_hash(way);
  while (rest != 0) {
    const auto first = static_cast<size_t>(std::countr_zero(rest));
    const uint32_t members = rest & way.tables.group[first];
    chosen |= nth_port(members, hash % static_cast<uint32_t>(std::popcount(members)));
    rest &= ~members;
  }
  return chosen;
}

void tell_lost(const Way &way, uint32_t lost, const char *what, const char *setting) {
  if (lost != 0) way.tell("egress", "without", ports_text(lost) + what, setting);
}

// Tells the ports that a setting takes away.
inline uint32_t keep(const Way &way, uint32_t ports, uint32_t allowed, const char *what,
                     const char *setting) {
  if (way.told()) tell_lost(way, ports & ~allowed, what, setting);
  return ports & allowed;
}

uint32_t switched_ports(const Way &way) {
  const Compiled &tables = way.tables;
  const auto port = static_cast<size_t>(way.port);
  uint32_t ports = keep(way, tables.expand(way.targets), ~tables.group[port],
                        ": where the frame came from", nullptr);
  const bool exists = way.vid < kVlanIds && way.unit.vlan.exists(way.vid);
  const uint32_t members = exists ? tables.expand(way.unit.vlan.vlan(way.vid).member) : 0;
  ports = keep(way, ports, members, ": not in the VLAN", "rtk_vlan_port_set");
  ports = keep(way, ports, tables.may_reach[port], ": isolated from the port it came by",
               "rtk_port_isolation_set");
  const uint32_t instance = exists ? way.unit.vlan.vlan(way.vid).stg : kCommonInstance;
  ports = keep(way, ports, tables.forwarding[instance], ": not forwarding in the instance",
               "rtk_stp_mstpState_set");
  ports = keep(way, ports, tables.live, ": disabled or without a link", kNoLink);
  return choose_members(way, ports);
}

// The ports of a rule are taken one by one, trunks or not.
uint32_t redirected_ports(const Way &way) {
  return keep(way, way.redirect & kAllPorts, way.tables.live, ": disabled or without a link",
              kNoLink);
}

}  // namespace

Verdict egress_step(Way &way) {
  way.egress = way.redirected ? redirected_ports(way) : switched_ports(way);
  if (way.egress == 0)
    return way.drop("egress", Fate::egress, nullptr,
                    [] { return std::string("no port is left to send it to"); });
  return way.end("egress", "forward", Fate::forwarded, nullptr,
                 [&] { return "leaves by " + ports_text(way.egress); });
}

}  // namespace vchip
