// SPDX-License-Identifier: MIT
// The optional functions of the platform: what they say is what the chip holds,
// and they say it of the right unit, port and index.
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/read.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>

#include "private_chip.h"

namespace {

using vchip_test::kUntouched;
class PlatformRead : public vchip_test::PrivateChip {};

// What a function writes; kUntouched if it writes nothing.
template <typename Function, typename... Arguments>
uint32_t said(Function *function, Arguments... arguments) {
  uint32_t word = kUntouched;
  EXPECT_EQ(function(arguments..., &word), 0);
  return word;
}

// A function that reads one word, with a right index and the first wrong one.
struct WordReader {
  const char *name;
  bool has_port;
  uint32_t beyond;
  std::function<int32_t(uint32_t unit, int32_t port, uint32_t index, uint32_t *word)> call;
};
constexpr uint32_t kNoIndex = 0;

const std::vector<WordReader> &word_readers() {
  static const std::vector<WordReader> readers = {
      {"trap_frame", false, 32,
       [](uint32_t unit, int32_t, uint32_t index, uint32_t *word) {
         return swctl_platform_trap_frame_get(unit, index, word);
       }},
      {"trap_port_frame", true, 32, swctl_platform_trap_port_frame_get},
      {"trap_group", false, 4,
       [](uint32_t unit, int32_t, uint32_t index, uint32_t *word) {
         return swctl_platform_trap_group_get(unit, index, word);
       }},
      {"trap_bypass", false, 8,
       [](uint32_t unit, int32_t, uint32_t index, uint32_t *word) {
         return swctl_platform_trap_bypass_get(unit, index, word);
       }},
      {"trunk_hash", false, 2,
       [](uint32_t unit, int32_t, uint32_t index, uint32_t *word) {
         return swctl_platform_trunk_hash_get(unit, index, word);
       }},
      {"qos_port_group", true, kNoIndex,
       [](uint32_t unit, int32_t port, uint32_t, uint32_t *word) {
         return swctl_platform_qos_port_group_get(unit, port, word);
       }},
      {"qos_tag", false, 8,
       [](uint32_t unit, int32_t, uint32_t index, uint32_t *word) {
         return swctl_platform_qos_tag_get(unit, index, word);
       }},
      {"ip_mcast_mode", false, kNoIndex,
       [](uint32_t unit, int32_t, uint32_t, uint32_t *word) {
         return swctl_platform_ip_mcast_mode_get(unit, word);
       }},
      {"ip6_mcast_mode", false, kNoIndex,
       [](uint32_t unit, int32_t, uint32_t, uint32_t *word) {
         return swctl_platform_ip6_mcast_mode_get(unit, word);
       }},
      {"acl_miss", true, kNoIndex,
       [](uint32_t unit, int32_t port, uint32_t, uint32_t *word) {
         return swctl_platform_acl_miss_get(unit, static_cast<uint32_t>(port), word);
       }},
      {"lookup_miss", true, 6, swctl_platform_lookup_miss_get},
      {"port_backpressure", true, kNoIndex,
       [](uint32_t unit, int32_t port, uint32_t, uint32_t *word) {
         return swctl_platform_port_backpressure_get(unit, port, word);
       }},
      {"port_filter", true, kNoIndex,
       [](uint32_t unit, int32_t port, uint32_t, uint32_t *word) {
         return swctl_platform_port_filter_get(unit, port, word);
       }},
      {"port_protection", true, kNoIndex,
       [](uint32_t unit, int32_t port, uint32_t, uint32_t *word) {
         return swctl_platform_port_protection_get(unit, port, word);
       }},
      {"outer_tpid", false, 4,
       [](uint32_t unit, int32_t, uint32_t index, uint32_t *word) {
         return swctl_platform_outer_tpid_get(unit, index, word);
       }},
  };
  return readers;
}

TEST_F(PlatformRead, RefusesWhatIsNotThereAndWritesNothing) {
  for (const WordReader &reader : word_readers()) {
    uint32_t word = kUntouched;
    EXPECT_EQ(reader.call(VCHIP_UNITS, 0, 0, &word), VCHIP_E_UNIT) << reader.name;
    EXPECT_EQ(reader.call(0, 0, 0, nullptr), VCHIP_E_NULL) << reader.name;
    if (reader.has_port) {
      EXPECT_EQ(reader.call(0, VCHIP_PORTS, 0, &word), VCHIP_E_PORT) << reader.name;
      EXPECT_EQ(reader.call(0, -1, 0, &word), VCHIP_E_PORT) << reader.name;
    }
    if (reader.beyond != kNoIndex) {
      EXPECT_EQ(reader.call(0, 0, reader.beyond, &word), VCHIP_E_INDEX) << reader.name;
    }
    EXPECT_EQ(word, kUntouched) << reader.name;
    EXPECT_EQ(reader.call(1, VCHIP_CPU_PORT, std::max(reader.beyond, 1u) - 1, &word), 0)
        << reader.name;
    EXPECT_NE(word, kUntouched) << reader.name;
  }
}

TEST_F(PlatformRead, ChangesNothing) {
  const std::string before = vchip::dump_json(-1);
  uint32_t word = 0;
  for (const WordReader &reader : word_readers()) reader.call(0, 0, 0, &word);
  swctl_platform_trunk trunk;
  swctl_platform_trunk_next(0, 0, &trunk);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

// Every table in the one shape that its reader has.
template <typename Record>
void expect_table_laws(int32_t (*next)(uint32_t, int32_t, Record *), uint32_t table) {
  Record record = {};
  record.index = 77;
  EXPECT_EQ(next(table, -1, &record), VCHIP_E_INDEX);
  EXPECT_EQ(record.index, 77);
  EXPECT_EQ(next(table, 0, nullptr), VCHIP_E_NULL);
  EXPECT_EQ(next(table, INT32_MAX, &record), 0) << "past the end";
  EXPECT_EQ(record.index, -1);
  record.index = 77;
  EXPECT_EQ(next(table, 0, &record), 0) << "an empty table";
  EXPECT_EQ(record.index, -1);
}

TEST_F(PlatformRead, EmptyTablesHaveNoFirstEntry) {
  expect_table_laws(swctl_platform_acl_rule_next, 1);
  expect_table_laws(swctl_platform_trunk_next, 1);
  expect_table_laws(swctl_platform_ip_mcast_next, 1);
  expect_table_laws(swctl_platform_ip6_mcast_next, 1);
  expect_table_laws(swctl_platform_vlan_egress_next, 1);
  expect_table_laws(swctl_platform_l2_next, 1);
  expect_table_laws(swctl_platform_l2_mcast_next, 1);
  for (const uint32_t entity : {12u, 13u, 21u, 24u, 32u, 33u})
    expect_table_laws(swctl_platform_entity_rule_next, entity);
  EXPECT_EQ(rtk_vlan_destroyAll(1, 0), 0);
  expect_table_laws(swctl_platform_vlan_next, 1);
  swctl_platform_trunk trunk;
  swctl_platform_vlan vlan;
  swctl_platform_ip_mcast ip;
  swctl_platform_ip6_mcast ip6;
  swctl_platform_vlan_egress egress;
  swctl_platform_entity_rule rule;
  swctl_platform_l2_address address;
  swctl_platform_l2_group group;
  EXPECT_EQ(swctl_platform_l2_next(VCHIP_UNITS, 0, &address), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_l2_mcast_next(VCHIP_UNITS, 0, &group), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_trunk_next(VCHIP_UNITS, 0, &trunk), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_vlan_next(VCHIP_UNITS, 0, &vlan), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_ip_mcast_next(VCHIP_UNITS, 0, &ip), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_ip6_mcast_next(VCHIP_UNITS, 0, &ip6), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_vlan_egress_next(VCHIP_UNITS, 0, &egress), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_entity_rule_next(14, 0, &rule), VCHIP_E_RULE_KIND);
}

TEST_F(PlatformRead, TrapsAreThoseOfTheChip) {
  ASSERT_EQ(rtk_trap_mgmtFrameAction_set(1, 31, 3), 0);
  ASSERT_EQ(rtk_trap_mgmtFrameAction_set(1, CHIP_TRAP_FRAME_IGMP, 2), 0);
  ASSERT_EQ(rtk_trap_portMgmtFrameAction_set(1, 28, CHIP_TRAP_FRAME_LLDP, 0), 0);
  ASSERT_EQ(rtk_trap_portMgmtFrameAction_set(1, 3, CHIP_TRAP_FRAME_BPDU, 2), 0);
  ASSERT_EQ(rtk_trap_rmaGroupAction_set(1, CHIP_TRAP_GROUP_LACP, 2), 0);
  ASSERT_EQ(rtk_trap_bypassStp_set(1, CHIP_TRAP_BYPASS_SLOW_PROTOCOLS, 1), 0);
  for (const uint32_t unit : {0u, 1u}) {
    const vchip::TrapView view = vchip::traps(unit);
    for (uint32_t type = 0; type < view.frame_action.size(); ++type)
      EXPECT_EQ(said(swctl_platform_trap_frame_get, unit, type), view.frame_action[type]);
    for (uint32_t group = 0; group < view.rma_group_action.size(); ++group)
      EXPECT_EQ(said(swctl_platform_trap_group_get, unit, group), view.rma_group_action[group]);
    for (uint32_t type = 0; type < view.passes_blocked_ports.size(); ++type)
      EXPECT_EQ(said(swctl_platform_trap_bypass_get, unit, type), view.passes_blocked_ports[type]);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      const std::vector<uint32_t> actions = vchip::port_traps(unit, port);
      for (uint32_t type = 0; type < actions.size(); ++type)
        EXPECT_EQ(said(swctl_platform_trap_port_frame_get, unit, port, type), actions[type]);
    }
  }
}

TEST_F(PlatformRead, TrunksAreThoseOfTheChip) {
  const uint32_t first = 0x3;
  const uint32_t last = 0x0800'0000;
  ASSERT_EQ(rtk_trunk_port_set(1, 4, &first), 0);
  ASSERT_EQ(rtk_trunk_port_set(1, 31, &last), 0);
  ASSERT_EQ(rtk_trunk_distributionAlgorithmParam_set(1, 1, 0x18), 0);
  swctl_platform_trunk trunk;
  ASSERT_EQ(swctl_platform_trunk_next(1, 0, &trunk), 0);
  EXPECT_EQ(trunk.index, 4);
  EXPECT_EQ(trunk.members, vchip::trunks(1).members.at(4));
  ASSERT_EQ(swctl_platform_trunk_next(1, 5, &trunk), 0);
  EXPECT_EQ(trunk.index, 31);
  EXPECT_EQ(trunk.members, last);
  ASSERT_EQ(swctl_platform_trunk_next(1, 32, &trunk), 0);
  EXPECT_EQ(trunk.index, -1);
  EXPECT_EQ(trunk.members, 0u) << "what does not apply is 0";
  for (const uint32_t unit : {0u, 1u})
    for (const uint32_t algorithm : {0u, 1u})
      EXPECT_EQ(said(swctl_platform_trunk_hash_get, unit, algorithm),
                vchip::trunks(unit).hash_fields.at(algorithm));
}

TEST_F(PlatformRead, VlansHaveTheInstanceOfTheChip) {
  ASSERT_EQ(rtk_stp_mstpInstance_create(1, 7), 0);
  for (const uint32_t vid : {20u, 4094u}) ASSERT_EQ(rtk_vlan_create(1, vid), 0);
  ASSERT_EQ(rtk_vlan_stg_set(1, 4094, 7), 0);
  swctl_platform_vlan vlan;
  int32_t from = 0;
  for (const vchip::VlanView &view : vchip::vlans(1)) {
    ASSERT_EQ(swctl_platform_vlan_next(1, from, &vlan), 0);
    EXPECT_EQ(vlan.index, static_cast<int32_t>(view.vid));
    EXPECT_EQ(vlan.instance, view.stg);
    from = vlan.index + 1;
  }
  ASSERT_EQ(from, 4095) << "the last one was seen";
  ASSERT_EQ(swctl_platform_vlan_next(1, from, &vlan), 0);
  EXPECT_EQ(vlan.index, -1);
}

// Place by place what a walk finds, which ends in a failure.
template <typename Record, typename Step>
void expect_as_walked(int32_t (*next)(uint32_t, int32_t, Record *), Step step, int32_t wanted) {
  decltype(Record::entry) entry = {};
  Record record = {};
  int32_t index = -1;
  int32_t from = 0;
  int32_t found = 0;
  for (; step(&index, &entry) == 0; ++found) {
    ASSERT_EQ(next(1, from, &record), 0);
    EXPECT_EQ(record.index, index);
    EXPECT_EQ(memcmp(&record.entry, &entry, sizeof entry), 0);
    from = index + 1;
  }
  EXPECT_EQ(found, wanted);
  ASSERT_EQ(next(1, from, &record), 0);
  EXPECT_EQ(record.index, -1) << "the end is no failure";
  ASSERT_EQ(next(0, 0, &record), 0);
  EXPECT_EQ(record.index, -1) << "the other unit";
}

TEST_F(PlatformRead, AddressesAndGroupsAreThoseOfAWalk) {
  for (uint8_t last = 1; last <= 3; ++last) {
    const chip_l2_ucast_entry entry = {1u + last, {2, 0, 0, 0, 0, last}, {}, 3, 0, 8, 0, 0, {}, 0};
    const chip_l2_mcast_entry group = {1, {1, 0, 0x5e, 0, 0, last}, 7, 0, {}};
    ASSERT_EQ(rtk_l2_addr_add(1, &entry), 0);
    ASSERT_EQ(rtk_l2_mcastAddr_add(1, &group), 0);
  }
  expect_as_walked(
      swctl_platform_l2_next,
      [](int32_t *index, chip_l2_ucast_entry *entry) {
        return rtk_l2_nextValidAddr_get(1, index, 1, entry);
      },
      3);
  expect_as_walked(
      swctl_platform_l2_mcast_next,
      [](int32_t *index, chip_l2_mcast_entry *entry) {
        return rtk_l2_nextValidMcastAddr_get(1, index, entry);
      },
      3);
}

TEST_F(PlatformRead, WhatIsOnlyWrittenOfPortsIsAsTheChipHasIt) {
  ASSERT_EQ(rtk_port_backpressureEnable_set(1, 3, 1), 0);
  ASSERT_EQ(rtk_vlan_portIgrFilter_set(1, 4, 1), 0);
  for (const uint32_t unit : {0u, 1u})
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      EXPECT_EQ(said(swctl_platform_port_backpressure_get, unit, port), unit == 1 && port == 3);
      EXPECT_EQ(said(swctl_platform_port_filter_get, unit, port), unit == 1 && port == 4);
    }
}

TEST_F(PlatformRead, ProtectionAndOuterTpidsAreThoseOfTheChip) {
  ASSERT_EQ(rtk_sec_portAttackPreventEnable_set(1, 3, 1), 0);
  ASSERT_EQ(rtk_vlan_outerTpidEntry_set(1, 2, 0x9200), 0);
  for (const uint32_t unit : {0u, 1u}) {
    for (int32_t port = 0; port + 1 < VCHIP_PORTS; ++port)
      EXPECT_EQ(said(swctl_platform_port_protection_get, unit, port), unit == 1 && port == 3);
    for (uint32_t index = 0; index < 4; ++index)
      EXPECT_EQ(said(swctl_platform_outer_tpid_get, unit, index),
                unit == 1 && index == 2 ? 0x9200u : 0x88a8u);
  }
}

TEST_F(PlatformRead, MissesOfRulesAreThoseOfTheChip) {
  ASSERT_EQ(rtk_acl_lookupMissAct_set(1, 28, 1), 0);
  ASSERT_EQ(rtk_acl_lookupMissAct_set(0, 3, 1), 0);
  for (const uint32_t unit : {0u, 1u})
    for (uint32_t port = 0; port < VCHIP_PORTS; ++port)
      EXPECT_EQ(said(swctl_platform_acl_miss_get, unit, port),
                vchip::acl_form(unit).misses.at(port));
}

TEST_F(PlatformRead, PrioritiesAreThoseOfTheChip) {
  const uint32_t weights[] = {3, 2, 7, 1, 0};
  ASSERT_EQ(rtk_qos_priSelGroup_set(1, 2, weights), 0);
  ASSERT_EQ(rtk_qos_portPriSelGroup_set(1, 26, 2), 0);
  ASSERT_EQ(rtk_qos_1pPriRemap_set(1, 7, 5), 0);
  for (const uint32_t unit : {0u, 1u}) {
    const vchip::QosView view = vchip::qos(unit);
    for (uint32_t group = 0; group < view.group_weights.size(); ++group) {
      std::vector<uint32_t> read(SWCTL_PLATFORM_QOS_WEIGHTS);
      EXPECT_EQ(swctl_platform_qos_group_get(unit, group, read.data()), 0);
      EXPECT_EQ(read, view.group_weights[group]);
    }
    for (uint32_t priority = 0; priority < view.inner_internal.size(); ++priority)
      EXPECT_EQ(said(swctl_platform_qos_tag_get, unit, priority), view.inner_internal[priority]);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      EXPECT_EQ(said(swctl_platform_qos_port_group_get, unit, port),
                vchip::qos_port(unit, port).group);
  }
  uint32_t untouched[SWCTL_PLATFORM_QOS_WEIGHTS] = {kUntouched};
  EXPECT_EQ(swctl_platform_qos_group_get(VCHIP_UNITS, 0, untouched), VCHIP_E_UNIT);
  EXPECT_EQ(swctl_platform_qos_group_get(0, 4, untouched), VCHIP_E_INDEX);
  EXPECT_EQ(swctl_platform_qos_group_get(0, 0, nullptr), VCHIP_E_NULL);
  EXPECT_EQ(untouched[0], kUntouched);
}

TEST_F(PlatformRead, MulticastEntriesAreThoseThatWereAdded) {
  const chip_ip_mcast_entry gone = {9, 0, 0xE8010204, 0, 1, {}};
  const chip_ip_mcast_entry four = {10, 0, 0xE8010203, 0xC0000201, 0x1000'0003, {}};
  const chip_ip6_mcast_entry six = {20, {{0xff, 0x3e, 1, 2}}, {{0x20, 1, 3}}, 0, 5, {}};
  ASSERT_EQ(rtk_l2_ipMcastAddr_add(1, &gone), 0);
  ASSERT_EQ(rtk_l2_ipMcastAddr_add(1, &four), 0);
  ASSERT_EQ(rtk_l2_ipMcastAddr_del(1, gone.address_a, gone.address_b, 9), 0);
  ASSERT_EQ(rtk_l2_ip6McastAddr_add(1, &six), 0);
  swctl_platform_ip_mcast ip;
  ASSERT_EQ(swctl_platform_ip_mcast_next(1, 0, &ip), 0);
  EXPECT_EQ(ip.index, 1) << "the place of the first one is free again";
  EXPECT_EQ(ip.entry.vid, 10);
  EXPECT_EQ(ip.entry.address_b, four.address_b);
  EXPECT_EQ(ip.entry.address_a, four.address_a);
  EXPECT_EQ(ip.entry.ports, vchip::ip_mcast_entries(1).at(0).ports);
  ASSERT_EQ(swctl_platform_ip_mcast_next(1, 2, &ip), 0);
  EXPECT_EQ(ip.index, -1);
  EXPECT_EQ(ip.entry.vid, 0) << "what does not apply is 0";
  swctl_platform_ip6_mcast ip6;
  ASSERT_EQ(swctl_platform_ip6_mcast_next(1, 0, &ip6), 0);
  EXPECT_EQ(ip6.index, 0);
  EXPECT_EQ(ip6.entry.vid, 20);
  EXPECT_EQ(ip6.entry.ports, 5u);
  EXPECT_THAT(ip6.entry.address_b.bytes, testing::ElementsAreArray(six.address_b.bytes));
  EXPECT_THAT(ip6.entry.address_a.bytes, testing::ElementsAreArray(six.address_a.bytes));
  ASSERT_EQ(swctl_platform_ip6_mcast_next(0, 0, &ip6), 0);
  EXPECT_EQ(ip6.index, -1) << "the other unit";
}

TEST_F(PlatformRead, MulticastModesAreThoseOfTheChip) {
  ASSERT_EQ(rtk_l2_ipmcMode_set(1, 1), 0);
  ASSERT_EQ(rtk_l2_ip6mcMode_set(0, 1), 0);
  ASSERT_EQ(rtk_l2_portLookupMissAction_set(1, 28, 5, 3), 0);
  ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, 2, CHIP_LOOKUP_IP6_MCAST, 1), 0);
  for (const uint32_t unit : {0u, 1u}) {
    const vchip::McastModeView view = vchip::mcast_modes(unit);
    EXPECT_EQ(said(swctl_platform_ip_mcast_mode_get, unit), view.ip_mode);
    EXPECT_EQ(said(swctl_platform_ip6_mcast_mode_get, unit), view.ip6_mode);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      for (uint32_t type = 0; type < 6; ++type)
        EXPECT_EQ(said(swctl_platform_lookup_miss_get, unit, port, type),
                  view.miss_actions.at(static_cast<size_t>(port)).at(type));
  }
}

TEST_F(PlatformRead, ConversionEntriesAreThoseThatAreValid) {
  chip_vlan_egress_entry entry = {};
  entry.valid = 1;
  entry.vid = 10;
  entry.ignore_second_key = 1;
  entry.port = 24;
  entry.new_vid = 20;
  entry.field14 = 5;
  ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(1, 511, &entry), 0);
  entry.valid = 0;
  ASSERT_EQ(rtk_vlan_egrVlanCnvtEntry_set(1, 3, &entry), 0);
  swctl_platform_vlan_egress egress;
  ASSERT_EQ(swctl_platform_vlan_egress_next(1, 0, &egress), 0);
  EXPECT_EQ(egress.index, 511);
  EXPECT_EQ(egress.entry.valid, 1u);
  EXPECT_EQ(egress.entry.vid, 10u);
  EXPECT_EQ(egress.entry.ignore_second_key, 1);
  EXPECT_EQ(egress.entry.port, 24u);
  EXPECT_EQ(egress.entry.new_vid, 20u);
  EXPECT_EQ(egress.entry.field14, 5u);
}

adp_fp_entity_rule_t rule_of(uint32_t entity, uint32_t index) {
  adp_fp_entity_rule_t rule = {};
  rule.entity = entity;
  rule.index = index;
  return rule;
}

TEST_F(PlatformRead, RulesOfTheAdapterAreThoseThatWereHandedOver) {
  const uint8_t mac[] = {2, 0, 0x5e, 0, 0, 1};
  const uint8_t mask[] = {0xff, 0xff, 0xff, 0, 0, 0};
  const uint32_t vlan = 20;
  const uint32_t encapsulation = 3;
  adp_fp_entity_rule_t rule = rule_of(ADP_FP_ENTITY_VOICE_VLAN, 18);
  ASSERT_EQ(adp_fp_add_entity_action(&rule, ADP_FP_ACTION_VLAN, &vlan, 4, nullptr, 0), 0);
  ASSERT_EQ(adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_SOURCE_MAC, mac, 6, mask, 6), 0);
  ASSERT_EQ(
      adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_ENCAPSULATION,
                                reinterpret_cast<const uint8_t *>(&encapsulation), 4, nullptr, 0),
      0);
  ASSERT_EQ(adp_fp_add_entity_rule(rule), 0);
  const vchip::RuleView view = vchip::rules().at(0);
  swctl_platform_entity_rule read;
  ASSERT_EQ(swctl_platform_entity_rule_next(ADP_FP_ENTITY_VOICE_VLAN, 15, &read), 0);
  EXPECT_EQ(read.index, 18);
  ASSERT_EQ(read.actions, 1u);
  EXPECT_EQ((vchip::RuleActionView{read.action[0].kind, read.action[0].value}), view.actions[0]);
  ASSERT_EQ(read.qualifiers, view.qualifiers.size());
  for (uint32_t place = 0; place < read.qualifiers; ++place) {
    const swctl_platform_rule_qualifier &each = read.qualifier[place];
    const uint32_t masked = each.masked != 0 ? each.length : 0;
    EXPECT_EQ(
        (vchip::RuleQualifierView{
            each.kind, {each.value, each.value + each.length}, {each.mask, each.mask + masked}}),
        view.qualifiers[place]);
  }
  ASSERT_EQ(swctl_platform_entity_rule_next(ADP_FP_ENTITY_VOICE_VLAN, 19, &read), 0);
  EXPECT_EQ(read.index, -1);
  ASSERT_EQ(swctl_platform_entity_rule_next(ADP_FP_ENTITY_MAC_VLAN, 0, &read), 0);
  EXPECT_EQ(read.index, -1) << "another kind";
}

TEST_F(PlatformRead, EntitiesEndWhereTheirRulesEnd) {
  const adp_fp_entity_rule_t last = rule_of(ADP_FP_ENTITY_PROTOCOL_VLAN, 19);
  const adp_fp_entity_rule_t next = rule_of(ADP_FP_ENTITY_IP4_VLAN, 0);
  ASSERT_EQ(adp_fp_add_entity_rule(next), 0);
  swctl_platform_entity_rule read;
  ASSERT_EQ(swctl_platform_entity_rule_next(ADP_FP_ENTITY_PROTOCOL_VLAN, 0, &read), 0);
  EXPECT_EQ(read.index, -1) << "the neighbour's first rule is not found";
  ASSERT_EQ(adp_fp_add_entity_rule(last), 0);
  ASSERT_EQ(swctl_platform_entity_rule_next(ADP_FP_ENTITY_PROTOCOL_VLAN, 0, &read), 0);
  EXPECT_EQ(read.index, 19);
}

}  // namespace
