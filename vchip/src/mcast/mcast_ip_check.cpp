// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "mcast/mcast_ip_block.h"

namespace vchip {
namespace {

template <typename Table>
bool is_listed_before(const Table &table, size_t index) {
  for (size_t before = 0; before < index; ++before)
    if (table[before].used != 0 && same_key(table[before].entry, table[index].entry)) return true;
  return false;
}

void name_address(Findings &findings, const char *name, const uint32_t &address) {
  findings.any(name, address);
}
void name_address(Findings &findings, const char *name, const chip_ip6_address &address) {
  findings.any(name, address.bytes);
}

// What an entry that was removed had stays.
template <typename Table>
void check_table(Findings &findings, const char *name, const Table &table) {
  findings.each(name, table, [&](const auto &place, size_t index) {
    findings.flag("used", place.used);
    findings.in("vid", place.entry.vid, place.used != 0 ? kFirstVlan : 0, kLastVlan);
    name_address(findings, "address_a", place.entry.address_a);
    name_address(findings, "address_b", place.entry.address_b);
    findings.zero("zero", place.entry.zero);
    findings.zero("rest", place.entry.rest);
    findings.ports("ports", place.entry.ports);
    if (place.used == 0) return;
    findings.rule(is_group(place.entry.address_b), "address_b", "is no group");
    findings.rule(!is_group(place.entry.address_a), "address_a", "is a group");
    findings.rule(!is_listed_before(table, index), "", "is there twice");
  });
}

}  // namespace

void McastIpBlock::check(Findings &findings) const {
  check_table(findings, "ip", ip_);
  check_table(findings, "ip6", ip6_);
  findings.at_most("ip_mode", ip_mode_, kMaxMcastMode);
  findings.at_most("ip6_mode", ip6_mode_, kMaxMcastMode);
  findings.each("miss_actions", miss_actions_, [&](const MissActions &actions, size_t) {
    findings.each_at_most("types", actions, kLastFrameAction);
  });
}

}  // namespace vchip
