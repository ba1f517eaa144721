// SPDX-License-Identifier: MIT
// How rules read in the picture of the chip.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <gmock/gmock.h>
#include <map>

#include "os/json.h"
#include "private_chip.h"

namespace {

using json = os::Json;
using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<uint8_t>;

class AclText : public vchip_test::PrivateChip {
 protected:
  template <typename T>
  static std::string number_text(uint32_t field, T data, T mask) {
    uint8_t data_bytes[sizeof data];
    uint8_t mask_bytes[sizeof mask];
    memcpy(data_bytes, &data, sizeof data);
    memcpy(mask_bytes, &mask, sizeof mask);
    return bytes_text(field, data_bytes, mask_bytes);
  }
  static std::string bytes_text(uint32_t field, const uint8_t *data, const uint8_t *mask) {
    EXPECT_EQ(vchip_reset(), 0);
    EXPECT_EQ(rtk_acl_ruleEntryField_write(0, 0, 7, field, data, mask), 0);
    return vchip::acl_rule(0, 7).match.at(0).text;
  }
  static std::vector<std::string> actions(const std::map<size_t, uint32_t> &words) {
    chip_acl_action action = {};
    for (const auto &[word, value] : words) action.word[word] = value;
    EXPECT_EQ(rtk_acl_ruleAction_set(0, 0, 7, &action), 0);
    return vchip::acl_rule(0, 7).actions;
  }
};

TEST_F(AclText, Numbers) {
  EXPECT_EQ(number_text<uint16_t>(12, 10, 0xFFF), "outer vlan 10 mask 0xfff");
  EXPECT_EQ(number_text<uint16_t>(19, 10, 0xFFFF), "outer vlan id 10");
  EXPECT_EQ(number_text<uint16_t>(22, 0, 0), "inner vlan id 0 mask 0x0");
  EXPECT_EQ(number_text<uint16_t>(15, 0x88CC, 0xFFFF), "ethertype 0x88cc");
  EXPECT_EQ(number_text<uint16_t>(52, 65535, 0xFF00), "source port 65535 mask 0xff00");
  EXPECT_EQ(number_text<uint8_t>(11, 35, 0xFF), "inner vlan 35");
  EXPECT_EQ(number_text<uint8_t>(46, 0xB8, 0xFC), "traffic class 0xb8 mask 0xfc");
}

TEST_F(AclText, Addresses) {
  EXPECT_EQ(number_text<uint32_t>(42, 0x0A0000FE, 0xFFFFFF00),
            "source ip 10.0.0.254 mask 255.255.255.0");
  const Bytes mac = {0, 0xA, 0xBC, 3, 4, 5};
  EXPECT_EQ(bytes_text(8, mac.data(), Bytes(6, 0xFF).data()), "source mac 00:0a:bc:03:04:05");
}

TEST_F(AclText, PortsAreThoseTheMaskLeavesOut) {
  EXPECT_EQ(number_text<uint32_t>(6, 0, ~0x1Eu), "in ports 1-4");
  EXPECT_EQ(number_text<uint32_t>(6, 0, ~0x1000000Bu), "in ports 0-1,3,28");
  EXPECT_EQ(number_text<uint32_t>(6, 0, 0), "in ports 0-28");
  EXPECT_EQ(number_text<uint32_t>(6, 0, ~0u), "in ports none");
  EXPECT_EQ(number_text<uint32_t>(6, 0, ~0xE0000000u), "in ports none") << "no such ports";
  EXPECT_EQ(number_text<uint32_t>(6, 2, 0xF), "in ports 0x2 mask 0xf");
}

TEST_F(AclText, Protocols) {
  const uint8_t class_mask[] = {0xFF, 0};
  const char *const kNames[] = {"udp", "tcp", "icmp", "igmp", "class 4"};
  for (uint8_t code = 0; code < 5; ++code) {
    const uint8_t data[] = {code, 0xFF};
    EXPECT_EQ(bytes_text(41, data, class_mask), std::string("ip protocol ") + kNames[code]);
  }
  EXPECT_EQ(number_text<uint16_t>(41, 0x1059, 0xFFFF), "ip protocol 89");
  EXPECT_EQ(number_text<uint16_t>(41, 0x1000, 0xFFFF), "ip protocol 0");
  EXPECT_EQ(number_text<uint16_t>(41, 0x123, 0xFFFF), "ip protocol 0x123 mask 0xffff");
}

TEST_F(AclText, Actions) {
  EXPECT_THAT(actions({}), IsEmpty());
  EXPECT_THAT(actions({{25, 1}}), ElementsAre("drop"));
  EXPECT_THAT(actions({{25, 2}}), ElementsAre("permit"));
  EXPECT_THAT(actions({{0, 1}, {1, 2}, {2, 28}}), ElementsAre("trap"));
  EXPECT_THAT(actions({{0, 1}, {1, 2}, {2, 28}, {5, 1}}), ElementsAre("trap w5=1"));
  EXPECT_THAT(actions({{0, 1}, {1, 2}, {2, 3}}), ElementsAre("trap to port 3"));
  EXPECT_THAT(actions({{0, 1}, {1, 4}, {2, 3}, {4, 1}, {6, 1}}),
              ElementsAre("redirect to port 3 w4=1 w6=1"));
  EXPECT_THAT(actions({{0, 1}, {1, 5}, {2, 9}}), ElementsAre("redirect to ports 9"));
  EXPECT_THAT(actions({{0, 1}, {1, 6}, {2, 9}}), ElementsAre("redirect to group 9"));
  EXPECT_THAT(actions({{0, 1}}), ElementsAre("forward to nothing"));
  EXPECT_THAT(actions({{0, 1}, {1, 9}, {2, 8}}), ElementsAre("forward kind 9 to 8"));
  EXPECT_THAT(actions({{7, 1}, {9, 2}}), ElementsAre("mirror to session 2"));
  EXPECT_THAT(actions({{7, 1}, {8, 1}, {9, 2}}), ElementsAre("mirror to session 2 w8=1"));
  EXPECT_THAT(actions({{10, 1}, {12, 5}}), ElementsAre("count on counter 5"));
  EXPECT_THAT(actions({{13, 1}, {14, 3}}), ElementsAre("meter 3"));
  EXPECT_THAT(actions({{15, 1}, {18, 10}}), ElementsAre("outer vlan 10"));
  EXPECT_THAT(actions({{19, 1}, {20, 4}, {22, 10}}), ElementsAre("inner vlan 10 w20=4"));
  EXPECT_THAT(actions({{23, 1}, {24, 7}}), ElementsAre("priority 7"));
  EXPECT_THAT(actions({{29, 1}, {30, 2}, {31, 46}}), ElementsAre("remark kind 2 value 46"));
  EXPECT_THAT(actions({{35, 1}, {36, 0}}), ElementsAre("queue 0"));
}

TEST_F(AclText, ActionsTogetherInTheOrderOfTheirWords) {
  EXPECT_THAT(actions({{13, 1}, {14, 3}, {25, 1}, {0, 1}, {1, 2}, {2, 28}}),
              ElementsAre("trap", "meter 3", "drop"));
}

TEST_F(AclText, WordsWithoutAMeaningAreShownAsTheyAre) {
  EXPECT_THAT(actions({{42, 9}}), ElementsAre("word 42 is 9"));
  EXPECT_THAT(actions({{25, 3}}), ElementsAre("word 25 is 3"));
  EXPECT_THAT(actions({{0, 2}, {2, 5}}), ElementsAre("word 0 is 2", "word 2 is 5"));
  EXPECT_THAT(actions({{14, 3}}), ElementsAre("word 14 is 3"));
  EXPECT_THAT(actions({{26, 1}, {28, 1}}), ElementsAre("word 26 is 1", "word 28 is 1"));
}

TEST_F(AclText, TheDumpTellsTheRule) {
  const uint16_t vlan = 10;
  const uint16_t vlan_mask = 0xFFF;
  const uint32_t none = 0;
  const uint32_t others = ~0x1Eu;
  uint8_t data[4];
  uint8_t mask[4];
  memcpy(data, &vlan, 2);
  memcpy(mask, &vlan_mask, 2);
  ASSERT_EQ(rtk_acl_ruleEntryField_write(1, 0, 7, 12, data, mask), 0);
  memcpy(data, &none, 4);
  memcpy(mask, &others, 4);
  ASSERT_EQ(rtk_acl_ruleEntryField_write(1, 0, 7, 6, data, mask), 0);
  chip_acl_action action = {};
  action.word[25] = action.word[13] = 1;
  action.word[14] = 3;
  ASSERT_EQ(rtk_acl_ruleAction_set(1, 0, 7, &action), 0);
  ASSERT_EQ(rtk_acl_ruleValidate_set(1, 0, 7, 1), 0);
  const json block = os::parse_json(vchip::dump_json(-1, {1, "acl"}))["units"][1]["acl"];
  ASSERT_EQ(block["rules"].size(), 1u);
  const json rule = block["rules"][0];
  EXPECT_EQ(rule["rule"], 7);
  EXPECT_EQ(rule["valid"], true);
  EXPECT_EQ(rule["joined"], false);
  EXPECT_EQ(rule["text"], "match in ports 1-4, outer vlan 10 mask 0xfff; meter 3; drop");
  EXPECT_EQ(rule["match"][1]["field"], 12);
  EXPECT_EQ(rule["match"][1]["text"], "outer vlan 10 mask 0xfff");
  EXPECT_EQ(rule["match"][1]["data"].size(), 2u);
  EXPECT_EQ(rule["actions"], os::parse_json(R"(["meter 3", "drop"])"));
  EXPECT_EQ(rule["action_words"], os::parse_json(R"([{"word": 13, "value": 1},
    {"word": 14, "value": 3}, {"word": 25, "value": 1}])"));
}

TEST_F(AclText, TheDumpTellsTheForm) {
  const uint32_t codes[12] = {1, 2, 11};
  ASSERT_EQ(rtk_acl_template_set(0, 5, codes), 0);
  ASSERT_EQ(rtk_acl_templateSelector_set(0, 8, 4, 3, 0), 0);
  ASSERT_EQ(rtk_acl_lookupMissAct_set(0, 3, 1), 0);
  ASSERT_EQ(rtk_acl_ruleValidate_set(0, 0, 9, 1), 0);
  const json block = os::parse_json(vchip::dump_json(-1, {0, "acl"}))["units"][0]["acl"];
  EXPECT_EQ(block["templates"][5]["field_types"],
            os::parse_json("[1, 2, 11, 0, 0, 0, 0, 0, 0, 0, 0, 0]"));
  EXPECT_EQ(block["selectors"][8], os::parse_json(R"({"selector": 8, "templates": [4, 3, 0]})"));
  EXPECT_EQ(block["drops_what_no_rule_matches"], os::parse_json("[3]"));
  EXPECT_EQ(block["rules"][0]["text"], "match all");
}

}  // namespace
