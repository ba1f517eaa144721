// SPDX-License-Identifier: MIT
// What the tables take that frames are looked up in: of a chip that is full, and
// whose rules have each a mask of their own.
#include "pipeline/compiled.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>

#include "unit/state.h"

namespace {

constexpr size_t kMostBytes = 64 * 1024;

// Every field of every rule, each under another mask.
void fill_rules(vchip::AclBlock &block) {
  uint8_t data[vchip::kMatchBytes] = {};
  uint8_t mask[vchip::kMatchBytes];
  memset(mask, 0xff, sizeof mask);
  for (uint32_t rule = 0; rule < VCHIP_ACL_RULES; ++rule) {
    memcpy(mask, &rule, sizeof rule);
    for (size_t place = 0; place < vchip::kAclFields.size(); ++place)
      block.write_field(rule, place, data, mask);
    block.set_valid(rule, true);
  }
}

void fill_groups(vchip::Unit &unit) {
  for (uint16_t group = 0; group < vchip::kGroups; ++group) {
    chip_l2_mcast_entry entry = {};
    entry.vid = group;
    EXPECT_EQ(unit.group.add(entry), 0);
  }
  for (uint16_t group = 0; group < vchip::kIpMcastEntries; ++group) {
    chip_ip_mcast_entry entry = {};
    entry.vid = group;
    entry.address_b = 0xe0000000;
    EXPECT_EQ(unit.mcast_ip.add(entry), 0);
  }
  for (uint16_t group = 0; group < vchip::kIp6McastEntries; ++group) {
    chip_ip6_mcast_entry entry = {};
    entry.vid = group;
    entry.address_b.bytes[0] = 0xff;
    EXPECT_EQ(unit.mcast_ip.add(entry), 0);
  }
}

void fill_conversions(vchip::Unit &unit) {
  for (uint32_t index = 0; index < vchip::kEgressEntries; ++index) {
    chip_vlan_egress_entry entry = {};
    entry.valid = 1;
    entry.ignore_port = 1;
    unit.conversion.set_egress(index, entry);
  }
}

void fill_classifiers(vchip::RuleBlock &rules) {
  for (uint32_t place = 0; place < vchip::kRules; ++place) rules.add(place, {});
}

TEST(Compiled, TablesOfAFullChipTakeLittle) {
  const auto state = std::make_unique<vchip::State>();
  vchip::Unit &unit = state->units[0];
  fill_rules(unit.acl);
  fill_groups(unit);
  fill_conversions(unit);
  fill_classifiers(state->rules);
  vchip::Compiled tables;
  compile_ports(tables, unit);
  compile_groups(tables, unit);
  compile_conversions(tables, unit);
  compile_classifiers(tables, state->rules);
  const size_t without_rules = tables.bytes();
  tables.rules.compile(unit.acl);
  RecordProperty("bytes", static_cast<int>(tables.bytes()));
  EXPECT_LE(tables.bytes(), kMostBytes);
  // A place for each at least: else there is less in the tables than was meant.
  EXPECT_GE(tables.bytes() - without_rules, size_t{VCHIP_ACL_RULES} * 16);
  EXPECT_EQ(tables.conversions.size(), vchip::kEgressEntries);
}

}  // namespace
