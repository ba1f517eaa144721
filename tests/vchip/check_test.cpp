// SPDX-License-Identifier: MIT
// A value that no call could have left is found in every block, and no other.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include "child.h"
#include "unit/state.h"

namespace {

using vchip::Fault;
using vchip_test::Outcome;
using vchip_test::read_file;
using vchip_test::run;
using vchip_test::write_file;

class Check : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
  }
  std::vector<Fault> faults_with(const std::string &bytes) {
    vchip_test::write_sparse_file(image_, bytes);
    return vchip::image_faults(image_);
  }
};

// Where a block lies in an image: name, begin, size.
struct Place {
  std::string name;
  size_t begin, size;
};
std::vector<Place> places() {
  std::vector<Place> found;
  static const vchip::State state = {};
  const auto *start = reinterpret_cast<const char *>(&state);
  const auto add = [&](const char *name, const auto &block) {
    const auto *begin = reinterpret_cast<const char *>(&block);
    found.push_back({name, static_cast<size_t>(begin - start), sizeof block});
  };
  add("platform", state.platform);
  add("rules", state.rules);
  vchip::each_block(state.units[1], add);
  return found;
}

// Blocks in which everything is possible: counters, and a clock that the other
// unit's has to agree with.
const std::set<std::string> kAnything = {"acl_count", "counter", "queue"};

// Settings in every block that has some, by calls.
int use_everything() {
  const uint32_t ports = 0x70;
  chip_l2_ucast_entry address = {};
  address.vid = 5;
  address.mac[0] = 2;
  chip_l2_mcast_entry group = {};
  group.mac[0] = 1;
  chip_acl_action action = {{1, 4, 3}};
  const uint8_t field[16] = {3}, mask[16] = {0xff};
  const vchip_partner_t partner = {1, 0xf6000000u};
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_MAC_VLAN;
  uint32_t vlan = 7;
  int32_t fault = adp_fp_add_entity_action(&rule, 123, &vlan, sizeof vlan, nullptr, 0);
  fault |= adp_fp_add_entity_rule(rule);
  fault |= rtk_l2_addr_add(1, &address) | rtk_l2_mcastAddr_add(1, &group);
  fault |= rtk_acl_ruleAction_set(1, 0, 4, &action) | rtk_acl_ruleValidate_set(1, 0, 4, 1);
  fault |= rtk_acl_ruleEntryField_write(1, 0, 4, 0, field, mask);
  fault |= rtk_vlan_create(1, 7) | rtk_vlan_port_set(1, 7, &ports, &ports);
  fault |= rtk_stp_mstpInstance_create(1, 3) | rtk_vlan_stg_set(1, 7, 3);
  fault |= rtk_trunk_port_set(1, 4, &ports) | vchip_cable_plug(1, 3, &partner);
  fault |= vchip_acl_count(1, 3, 4, 5) | vchip_counter_add(1, 3, 4, 5);
  fault |= rtk_rate_igrBandwidthCtrlRate_set(1, 3, 5) | vchip_pair_set(1, 3, 1, 1, 100);
  fault |= rtk_vlan_destroy(1, 1) | rtk_l2_addr_del(1, 5, address.mac);
  const vchip_station_t station = {5, {2, 0, 0, 0, 0, 1}, 0};
  fault |= vchip_station_learn(1, 6, &station) | vchip_time_pass(1, 3);
  return fault;
}

TEST_F(Check, AChipThatWasUsedHasNoFault) {
  ASSERT_EQ(run(image(), use_everything).status, 0);
  for (const Fault &fault : vchip::image_faults(image_))
    ADD_FAILURE() << fault.unit << ' ' << fault.block << '.' << fault.word << ": " << fault.text;
  const Outcome inside = run(image(), [] { return vchip::chip_faults().empty() ? 0 : 1; });
  EXPECT_EQ(inside.status, 0);
}

// All ones are impossible somewhere in every block, but where all is possible.
TEST_F(Check, AnImpossibleValueIsFoundBlockByBlock) {
  const std::string good = read_file(image_);
  ASSERT_EQ(places().size(), 29u);
  for (const Place &place : places()) {
    std::string bytes = good;
    std::fill_n(bytes.begin() + static_cast<long>(place.begin), place.size, '\xff');
    const std::vector<Fault> faults = faults_with(bytes);
    const bool board = place.name == "platform" || place.name == "rules";
    const auto own =
        static_cast<size_t>(std::count_if(faults.begin(), faults.end(), [&](const Fault &fault) {
          return fault.block == place.name && fault.unit == (board ? -1 : 1);
        }));
    if (kAnything.contains(place.name)) {
      EXPECT_TRUE(faults.empty()) << place.name;
    } else {
      EXPECT_GT(own, 0u) << place.name;
    }
  }
}

// Word by word: whatever sound() refuses, and what a call refuses, is named.
TEST_F(Check, AnImpossibleWordIsNamed) {
  const std::string good = read_file(image_);
  struct Case {
    const char *block;
    size_t offset;  // in the block
    uint32_t value;
    const char *word, *text;
  };
  for (const Case &each : std::initializer_list<Case>{
           {"switch_wide", 0, 2, "tag_counts", "2, expected 0 to 1"},
           {"switch_wide", 4, 63, "max_length[0]", "63, expected 64 to 16383"},
           {"defaults", 4, 2, "priority_source", "2, expected 0 to 1"},
           {"attack", 0, 1u << 28, "protected_ports", "0x10000000, expected no bits but 0xfffffff"},
           {"flood", 12, 1u << 29, "isolation[3]", "0x20000000, expected ports 0 to 28"},
           {"vlan", 16 * 77 + 12, 16, "vlans[77].stg", "16, expected 0 to 15"},
           {"vlan", 0, 1, "vlans[0].exists", "1, expected 0"},
           {"port", 12 * 4 * 28, 2, "ports[28].admin", "2, expected 0 to 1"},
           {"port", 12 * 4 * 3 + 44, 1, "ports[3].cable", "is neither a partner nor none"},
           {"stp", 0, 0, "instances[0].exists", "0, expected 1"},
           {"trunk", 0, 1u << 28, "members[0]", "0x10000000, expected no bits but 0xfffffff"},
           {"mirror", 4, 29, "groups[0].mirroring_port", "29, expected 0 to 28"},
       }) {
    std::string bytes = good;
    for (const Place &place : places())
      if (place.name == each.block)
        vchip_test::set_word(bytes, place.begin + each.offset, each.value);
    bool named = false;
    for (const Fault &fault : faults_with(bytes))
      named |= fault.unit == 1 && fault.block == each.block && fault.word == each.word &&
               fault.text == each.text;
    EXPECT_TRUE(named) << each.block << ' ' << each.word;
  }
}

TEST_F(Check, WhatBlocksSayTogether) {
  ASSERT_EQ(run(image(), use_everything).status, 0);
  std::string bytes = read_file(image_);
  for (const Place &place : places()) {
    // VLAN 7 obeys instance 3, which is no more; port 6 has learned one address.
    if (place.name == "stp") vchip_test::set_word(bytes, place.begin + 3 * 4 * 30, 0);
    if (place.name == "time") bytes[place.begin + 2] = 1;
  }
  std::set<std::string> words;
  for (const Fault &fault : faults_with(bytes)) words.insert(fault.block + "." + fault.word);
  EXPECT_EQ(words, (std::set<std::string>{"vlan.vlans[7].stg", "time.clock"}));
}

TEST_F(Check, CountsThatDoNotAddUp) {
  ASSERT_EQ(run(image(), use_everything).status, 0);
  std::string bytes = read_file(image_);
  for (const Place &place : places())
    if (place.name == "drops") bytes[place.begin + 7] = 1;  // received, on either machine
  const std::vector<Fault> faults = faults_with(bytes);
  ASSERT_EQ(faults.size(), 1u);
  EXPECT_EQ(faults[0].word, "ports[0].received");
}

// What every process does with a chip: it must neither crash nor hang.
int use_damaged(bool dump) {
  if (vchip_open() != nullptr) return 0;
  use_everything();
  if (dump) vchip::dump_json(-1);
  int32_t index = -1;
  chip_l2_ucast_entry entry = {};
  while (rtk_l2_nextValidAddr_get(1, &index, 1, &entry) == 0) {
  }
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) vchip::port(1, port);
  vchip_time_pass(1, 1000000);
  return vchip_reset();
}

// Up to four words of one block get other values. Answers which block it is.
std::string corrupt(std::string &bytes, uint32_t round) {
  static const std::vector<Place> all = places();
  std::mt19937 random(4711 + round);
  const Place &place = all[random() % all.size()];
  for (auto word = random() % 4; word < 4; ++word)
    vchip_test::set_word(bytes, place.begin + random() % (place.size / 4) * 4,
                         static_cast<uint32_t>(random() >> random() % 32));
  return place.name;
}

constexpr uint32_t kRoundsOfAProcess = 20;

// Some rounds in one process, which says what it is at and what it has found.
int use_corrupted(const std::string &path, const std::string &good, uint32_t first) {
  std::string bytes;
  for (uint32_t round = first; round < first + kRoundsOfAProcess; ++round) {
    bytes = good;
    printf("%u %s ", round, corrupt(bytes, round).c_str());
    fflush(stdout);
    vchip_close();
    vchip_test::write_sparse_file(path, bytes);
    puts(vchip::image_faults(path).empty() ? "passed" : "found");
    // A dump takes longer than all the rest.
    if (const int status = use_damaged(round % 100 == 0)) return status;
  }
  return 0;
}

TEST_F(Check, RandomCorruptions) {
  const uint32_t wanted = vchip_test::soaking() ? 1000 : 200;
  ASSERT_EQ(run(image(), use_everything).status, 0);
  const std::string good = read_file(image_);
  size_t rounds = 0, found = 0;
  for (uint32_t first = 0; first < wanted; first += kRoundsOfAProcess) {
    const Outcome outcome = run(image(), [&] { return use_corrupted(image_, good, first); });
    ASSERT_EQ(outcome.status, 0) << outcome.output;
    std::istringstream lines(outcome.output);
    for (std::string line; std::getline(lines, line); ++rounds) found += line.ends_with("found");
  }
  EXPECT_EQ(rounds, wanted);
  EXPECT_GT(found, wanted / 5);
  RecordProperty("found", static_cast<int>(found));
}

}  // namespace
