// SPDX-License-Identifier: MIT
// Rules of the adapter: what is asked of it, in which order, and what it holds.
#include <swctl/vlan_rules.h>

#include <cstring>

#include "support/library_test.h"
#include "vlan/bitmap.h"

namespace {

using swctl_test::bitmap;
using swctl_test::chip_answers;
using vchip::RuleActionView;
using vchip::RuleQualifierView;
using vchip::RuleView;

using Bytes = std::vector<uint8_t>;

// A value as this machine lays it out.
template <typename T>
Bytes bytes_of(const T &value) {
  Bytes bytes(sizeof value);
  memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

const user_pbmp_t kPorts = bitmap({1, 31, 32, 40, 255});
const uint8_t kMac[6] = {0x02, 0x11, 0x22, 0x33, 0x44, 0x55};
const uint8_t kMask[6] = {0xFF, 0xFF, 0xFF, 0, 0, 0xF0};

RuleQualifierView ports_qualifier() {
  return {13, bytes_of(kPorts), Bytes(32, 0xFF)};
}
RuleQualifierView half_qualifier(uint32_t number, uint16_t value) {
  return {number, bytes_of(value), {0xFF, 0xFF}};
}
RuleQualifierView mac_qualifier() {
  return {6, {kMac, kMac + 6}, {kMask, kMask + 6}};
}

// A kind of rule as a caller sees it: one add with values that differ from
// each other, one delete.
struct Kind {
  const char *name;
  int32_t (*add)(int32_t index);
  int32_t (*remove)(uint32_t lead, uint32_t unit, int32_t index);
  uint32_t entity;
  int32_t limit;
  uint32_t offset;
  std::vector<RuleActionView> actions;
  std::vector<RuleQualifierView> qualifiers;
};

const std::vector<Kind> &kinds() {
  static const std::vector<Kind> all = {
      {"translation",
       [](int32_t index) {
         return user_vlan_translate_add(9, 8, index, 7, &kPorts, 0x5000A, 0x50014);
       },
       user_vlan_translate_delete,
       33,
       30,
       0,
       {{123, 20}},
       {ports_qualifier(), half_qualifier(21, 0), half_qualifier(22, 10)}},
      {"double tagging",
       [](int32_t index) {
         return user_vlan_dtag_add(9, 8, index, 7, &kPorts, 0x5000A, 0x50014, 5);
       },
       user_vlan_dtag_delete,
       32,
       30,
       0,
       {{130, 20}, {134, 5}},
       {ports_qualifier(), half_qualifier(21, 0), half_qualifier(22, 10)}},
      {"MAC-based",
       [](int32_t index) {
         return user_vlan_mac_add(9, 8, index, kMac, kMask, 0x50014, 5, &kPorts);
       },
       user_vlan_mac_delete,
       21,
       30,
       0,
       {{123, 20}, {124, 5}},
       {ports_qualifier(), mac_qualifier(), half_qualifier(21, 1)}},
      {"IPv4 subnet",
       [](int32_t index) {
         return user_vlan_ip4_add(9, 8, index, 0xC0000200, 0xFFFFFF00, 0x50014, 5, &kPorts);
       },
       user_vlan_ip4_delete,
       13,
       20,
       0,
       {{123, 20}, {124, 5}},
       {ports_qualifier(),
        {9, bytes_of(uint32_t{0xC0000200}), bytes_of(uint32_t{0xFFFFFF00})},
        half_qualifier(21, 1)}},
      {"voice",
       [](int32_t index) {
         return user_vlan_voice_oui_mac_add(9, 8, index, kMac, kMask, 0x50014, 5, &kPorts);
       },
       user_vlan_voice_oui_mac_delete,
       24,
       15,
       15,
       {{123, 20}, {124, 5}},
       {ports_qualifier(), mac_qualifier()}},
      {"protocol",
       [](int32_t index) {
         return user_port_protocol_vlan_add(9, 8, index, 7, &kPorts, 4, 0x50806, 0x50014, 5);
       },
       user_port_protocol_vlan_delete,
       12,
       20,
       0,
       {{123, 20}, {124, 5}},
       {ports_qualifier(),
        {89, bytes_of(uint32_t{3}), {}},
        half_qualifier(29, 0x0806),
        half_qualifier(21, 1)}},
  };
  return all;
}

class VlanRules : public swctl_test::LibraryTest, public testing::WithParamInterface<size_t> {
 protected:
  const Kind &kind() const { return kinds()[GetParam()]; }
  RuleView rule_at(uint32_t index) const {
    return {kind().entity, index + kind().offset, kind().actions, kind().qualifiers};
  }
};

TEST_P(VlanRules, ReachTheAdapterWithEveryPart) {
  EXPECT_EQ(kind().add(3), 0);
  EXPECT_EQ(vchip::rules(), (std::vector<RuleView>{rule_at(3)}));
}

TEST_P(VlanRules, AreMadeInOrderActionsFirst) {
  kind().add(3);
  const auto calls = swprobe::take();
  const size_t actions = kind().actions.size();
  ASSERT_EQ(calls.size(), actions + kind().qualifiers.size() + 1);
  for (size_t place = 0; place + 1 < calls.size(); ++place) {
    const bool action = place < actions;
    const auto number =
        action ? kind().actions[place].number : kind().qualifiers[place - actions].number;
    EXPECT_EQ(calls[place].name, action ? "adp_fp_add_entity_action" : "adp_fp_add_entity_qualify");
    EXPECT_EQ(calls[place].in("kind"), number);
    EXPECT_EQ(calls[place].result, 0) << calls[place].line();
  }
  EXPECT_EQ(calls.back().name, "adp_fp_add_entity_rule");
}

TEST_P(VlanRules, StartFromAClearedRecord) {
  kind().add(3);
  const auto calls = swprobe::take();
  for (const swprobe::Call &call : calls) {
    EXPECT_EQ(call.in("rule.entity"), kind().entity);
    EXPECT_EQ(call.in("rule.index"), 3 + kind().offset);
    for (const char *zero : {"rule.reserved1", "rule.unset", "rule.reserved2"})
      EXPECT_EQ(call.in(zero), 0) << call.line();
  }
}

TEST_P(VlanRules, PassLengthsAndNoSecondValue) {
  kind().add(3);
  for (const swprobe::Call &call : swprobe::take()) {
    if (call.name == "adp_fp_add_entity_action") {
      EXPECT_EQ(call.in("value_length"), 4);
      EXPECT_EQ(call.in("second_length"), 0);
      EXPECT_TRUE(call.arguments[call.arguments.size() - 2].null) << call.line();
    }
  }
}

TEST_P(VlanRules, HaveALimitOfIndexes) {
  const int32_t last = kind().limit - 1;
  EXPECT_EQ(kind().add(last), 0);
  EXPECT_EQ(vchip::rules(), (std::vector<RuleView>{rule_at(static_cast<uint32_t>(last))}));
  swprobe::forget();
  for (const int32_t index : {kind().limit, kind().limit + 1, INT32_MAX}) {
    EXPECT_EQ(kind().add(index), -1) << index;
    EXPECT_NO_CALLS();
  }
}

TEST_P(VlanRules, HandANegativeIndexOn) {
  for (const int32_t index : {-1, -100, INT32_MIN}) {
    swprobe::forget();
    EXPECT_EQ(kind().add(index), 0);
    const swprobe::Call call = swprobe::take().back();
    EXPECT_EQ(call.name, "adp_fp_add_entity_rule");
    EXPECT_EQ(static_cast<uint32_t>(call.in("rule.index")),
              static_cast<uint32_t>(index) + kind().offset);
  }
}

TEST_P(VlanRules, AnswerZeroWhateverTheAdapterSays) {
  EXPECT_EQ(kind().add(3), 0);
  EXPECT_EQ(kind().add(3), 0);  // the second is refused
  EXPECT_EQ(vchip::rules().size(), 1u);
  for (const char *call : {"adp_fp_add_entity_action", "adp_fp_add_entity_qualify",
                           "adp_fp_add_entity_rule", "adp_fp_delete_entity_rule"}) {
    for (const int32_t result : {-7, 7}) {
      swprobe::clear_plan();
      chip_answers(call, result);
      swprobe::forget();
      EXPECT_EQ(kind().add(4), 0) << call;
      EXPECT_EQ(swprobe::take().size(), kind().actions.size() + kind().qualifiers.size() + 1);
      EXPECT_EQ(kind().remove(0, 0, 4), 0) << call;
    }
  }
}

TEST_P(VlanRules, AreDeletedByIndexWithoutALimit) {
  ASSERT_EQ(kind().add(3), 0);
  swprobe::forget();
  EXPECT_EQ(kind().remove(9, 8, 3), 0);
  EXPECT_CALLS("adp_fp_delete_entity_rule(entity=" + std::to_string(kind().entity) +
               ", index=" + std::to_string(3 + kind().offset) + ", option=0) = 0");
  EXPECT_TRUE(vchip::rules().empty());
  for (const int32_t index : {3, kind().limit, -1, 1000}) {
    EXPECT_EQ(kind().remove(0, 0, index), 0) << index;
    EXPECT_EQ(swprobe::take().at(0).in("index"), index + static_cast<int32_t>(kind().offset));
  }
}

TEST_P(VlanRules, PrintNothing) {
  const auto all = [&] {
    kind().add(3);
    kind().add(100);
    kind().remove(0, 0, 100);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

INSTANTIATE_TEST_SUITE_P(Kinds, VlanRules, testing::Range(size_t{0}, size_t{6}));

using RuleCases = swctl_test::LibraryTest;

TEST_F(RuleCases, PriorityZeroIsNoActionButForVoice) {
  EXPECT_EQ(user_vlan_dtag_add(0, 0, 1, 0, &kPorts, 10, 20, 0), 0);
  EXPECT_EQ(user_vlan_mac_add(0, 0, 1, kMac, kMask, 20, 0, &kPorts), 0);
  EXPECT_EQ(user_vlan_ip4_add(0, 0, 1, 1, 1, 20, 0, &kPorts), 0);
  EXPECT_EQ(user_port_protocol_vlan_add(0, 0, 1, 0, &kPorts, 1, 0x800, 20, 0), 0);
  for (const RuleView &rule : vchip::rules()) EXPECT_EQ(rule.actions.size(), 1u) << rule.entity;
  EXPECT_EQ(vchip::rules().size(), 4u);
  EXPECT_EQ(user_vlan_voice_oui_mac_add(0, 0, 1, kMac, kMask, 20, 0, &kPorts), 0);
  for (const RuleView &rule : vchip::rules()) {
    if (rule.entity != 24) continue;
    EXPECT_EQ(rule.actions, (std::vector<RuleActionView>{{123, 20}, {124, 0}}));
  }
}

TEST_F(RuleCases, PriorityIsAWholeWord) {
  user_vlan_mac_add(0, 0, 1, kMac, kMask, 20, 0x10000, &kPorts);
  EXPECT_EQ(swprobe::take().at(1).in("value"), 0x10000);
}

uint32_t encapsulation_of(const RuleView &rule) {
  uint32_t code = 0;
  for (const RuleQualifierView &each : rule.qualifiers)
    if (each.number == 89) memcpy(&code, each.value.data(), sizeof code);
  return code;
}

TEST_F(RuleCases, EncapsulationsAreTranslated) {
  const struct {
    uint32_t given;
    uint32_t code;
  } cases[] = {{USER_ENCAPSULATION_ETHERNET, 1}, {2, 2}, {4, 3}};
  for (const auto &test : cases) {
    ASSERT_EQ(vchip_reset(), 0);
    EXPECT_EQ(user_port_protocol_vlan_add(0, 0, 0, 0, &kPorts, test.given, 0x800, 20, 0), 0);
    EXPECT_EQ(encapsulation_of(vchip::rules().at(0)), test.code);
  }
}

TEST_F(RuleCases, OtherEncapsulationsAreRefusedBehindThePorts) {
  for (const uint32_t encapsulation : {0u, 3u, 5u, 8u, 0x10001u, 0xFFFFFFFFu}) {
    swprobe::forget();
    EXPECT_EQ(user_port_protocol_vlan_add(0, 0, 0, 0, &kPorts, encapsulation, 0x800, 20, 5), -1);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].in("kind"), 123);
    EXPECT_EQ(calls[1].in("kind"), 124);
    EXPECT_EQ(calls[2].in("kind"), 13);
  }
  EXPECT_TRUE(vchip::rules().empty());
}

TEST_F(RuleCases, InterfaceZeroMakesAProtocolRuleForAllPorts) {
  const user_pbmp_t ports = bitmap({0, 5});
  EXPECT_EQ(user_port_protocol_vlan_add(0, 0, 0, 0, &ports, 1, 0x800, 20, 0), 0);
  std::vector<uint32_t> numbers;
  const RuleView rule = vchip::rules().at(0);
  for (const RuleQualifierView &each : rule.qualifiers) numbers.push_back(each.number);
  EXPECT_EQ(numbers, (std::vector<uint32_t>{89, 29, 21}));
}

TEST_F(RuleCases, InterfaceThirtyTwoIsNotInterfaceZero) {
  const user_pbmp_t ports = bitmap({32});
  EXPECT_EQ(user_port_protocol_vlan_add(0, 0, 0, 0, &ports, 1, 0x800, 20, 0), 0);
  EXPECT_EQ(vchip::rules().at(0).qualifiers.at(0),
            (RuleQualifierView{13, bytes_of(ports), Bytes(32, 0xFF)}));
}

TEST_F(RuleCases, VoiceRulesLieBehindFifteenOthers) {
  EXPECT_EQ(user_vlan_voice_oui_mac_add(0, 0, 3, kMac, kMask, 20, 0, &kPorts), 0);
  EXPECT_EQ(vchip::rules().at(0).index, 18u);
  EXPECT_EQ(user_vlan_voice_oui_mac_delete(0, 0, 3), 0);
  EXPECT_TRUE(vchip::rules().empty());
}

TEST_F(RuleCases, SixteenBitValuesLieAsTheMachineWritesThem) {
  EXPECT_EQ(user_vlan_translate_add(0, 0, 0, 0, &kPorts, 0x0102, 20), 0);
  const Bytes value = vchip::rules().at(0).qualifiers.at(2).value;
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  EXPECT_EQ(value, (Bytes{1, 2}));
#else
  EXPECT_EQ(value, (Bytes{2, 1}));
#endif
}

TEST_F(RuleCases, ACallersRecordsAreOnlyRead) {
  user_pbmp_t ports = kPorts;
  uint8_t mac[6];
  memcpy(mac, kMac, sizeof mac);
  EXPECT_EQ(user_vlan_mac_add(0, 0, 0, mac, kMask, 20, 5, &ports), 0);
  EXPECT_EQ(memcmp(mac, kMac, sizeof mac), 0);
  EXPECT_EQ(memcmp(&ports, &kPorts, sizeof ports), 0);
}

}  // namespace
