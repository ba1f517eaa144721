// SPDX-License-Identifier: MIT
// Rules of the access-control list and of the adapter, word by word.
#ifndef SWCTL_TESTS_FRAMES_RULE_MAKER_H
#define SWCTL_TESTS_FRAMES_RULE_MAKER_H

#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>

#include "switch.h"

namespace frames {

// A rule in the making; every step is a call that has to succeed.
class Rule {
 public:
  explicit Rule(int32_t number) : number_(number) {}

  // Fields of 1, 2 and 4 bytes are numbers in the machine's own byte order.
  Rule &match(uint32_t field, uint32_t value, uint32_t bits = UINT32_MAX) {
    switch (chip_acl_field_bytes(field)) {
      case 1: return write(field, static_cast<uint8_t>(value), static_cast<uint8_t>(bits));
      case 2: return write(field, static_cast<uint16_t>(value), static_cast<uint16_t>(bits));
      default: return write(field, value, bits);
    }
  }
  // Fields of bytes: addresses.
  Rule &match(uint32_t field, const Bytes &value, const Bytes &bits) {
    EXPECT_EQ(rtk_acl_ruleEntryField_write(0, 0, number_, field, value.data(), bits.data()), 0);
    return *this;
  }
  Rule &match(uint32_t field, const Bytes &value) {
    return match(field, value, Bytes(value.size(), 0xff));
  }
  // A protocol by its class.
  Rule &match_class(uint8_t number) {
    return match(CHIP_ACL_FIELD_IP_PROTOCOL, Bytes{number, 0}, Bytes{0xff, 0});
  }
  Rule &from(uint32_t ports) { return match(CHIP_ACL_FIELD_IN_PORTS, 0, ~ports); }

  Rule &set(uint32_t word, uint32_t value) {
    action_.word[word] = value;
    return *this;
  }
  Rule &drop() { return set(CHIP_ACL_WORD_VERDICT, CHIP_ACL_VERDICT_DROP); }
  Rule &permit() { return set(CHIP_ACL_WORD_VERDICT, CHIP_ACL_VERDICT_PERMIT); }
  Rule &forward(uint32_t kind, uint32_t to) {
    return set(CHIP_ACL_WORD_FORWARD, 1)
        .set(CHIP_ACL_WORD_FORWARD_KIND, kind)
        .set(CHIP_ACL_WORD_FORWARD_TO, to);
  }
  Rule &trap() { return forward(CHIP_ACL_FORWARD_TRAP, VCHIP_CPU_PORT); }
  Rule &redirect(uint32_t port) { return forward(CHIP_ACL_FORWARD_PORT, port); }
  Rule &mirror(uint32_t group) {
    return set(CHIP_ACL_WORD_MIRROR, 1).set(CHIP_ACL_WORD_MIRROR_SESSION, group);
  }
  Rule &count(uint32_t counter) {
    return set(CHIP_ACL_WORD_COUNT, 1).set(CHIP_ACL_WORD_COUNT_COUNTER, counter);
  }
  Rule &meter(uint32_t meter) {
    return set(CHIP_ACL_WORD_METER, 1).set(CHIP_ACL_WORD_METER_NUMBER, meter);
  }
  Rule &inner_vlan(uint32_t vid) {
    return set(CHIP_ACL_WORD_INNER_VLAN, 1).set(CHIP_ACL_WORD_INNER_VLAN_ID, vid);
  }
  Rule &outer_vlan(uint32_t vid) {
    return set(CHIP_ACL_WORD_OUTER_VLAN, 1).set(CHIP_ACL_WORD_OUTER_VLAN_ID, vid);
  }
  Rule &priority(uint32_t priority) {
    return set(CHIP_ACL_WORD_PRIORITY, 1).set(CHIP_ACL_WORD_PRIORITY_VALUE, priority);
  }
  Rule &queue(uint32_t queue) {
    return set(CHIP_ACL_WORD_QUEUE, 1).set(CHIP_ACL_WORD_QUEUE_NUMBER, queue);
  }
  Rule &remark(uint32_t kind, uint32_t value) {
    return set(CHIP_ACL_WORD_REMARK, 1)
        .set(CHIP_ACL_WORD_REMARK_KIND, kind)
        .set(CHIP_ACL_WORD_REMARK_VALUE, value);
  }
  Rule &join() {
    const chip_acl_operation operation = {{0, 1, 0}};
    EXPECT_EQ(rtk_acl_ruleOperation_set(0, 0, number_, &operation), 0);
    return *this;
  }
  void enable() {
    EXPECT_EQ(rtk_acl_ruleAction_set(0, 0, number_, &action_), 0);
    EXPECT_EQ(rtk_acl_ruleValidate_set(0, 0, number_, 1), 0);
  }
  void disable() { EXPECT_EQ(rtk_acl_ruleValidate_set(0, 0, number_, 0), 0); }

 private:
  template <typename Value>
  Rule &write(uint32_t field, Value value, Value bits) {
    EXPECT_EQ(rtk_acl_ruleEntryField_write(0, 0, number_, field,
                                           reinterpret_cast<const uint8_t *>(&value),
                                           reinterpret_cast<const uint8_t *>(&bits)),
              0);
    return *this;
  }

  int32_t number_;
  chip_acl_action action_ = {};
};

// A rule of the adapter in the making.
class BoardRule {
 public:
  BoardRule(uint32_t entity, uint32_t index) {
    rule_.entity = entity;
    rule_.index = index;
  }
  BoardRule &number(uint32_t kind, uint32_t value) { return qualify(kind, &value, sizeof value); }
  BoardRule &half(uint32_t kind, uint32_t value) {
    const auto own = static_cast<uint16_t>(value);
    return qualify(kind, &own, sizeof own);
  }
  BoardRule &bytes(uint32_t kind, const Bytes &value) {
    return qualify(kind, value.data(), value.size());
  }
  BoardRule &masked(uint32_t kind, uint32_t value, uint32_t bits) {
    EXPECT_EQ(adp_fp_add_entity_qualify(&rule_, kind, reinterpret_cast<const uint8_t *>(&value),
                                        sizeof value, reinterpret_cast<const uint8_t *>(&bits),
                                        sizeof bits),
              0);
    return *this;
  }
  // By interfaces, as the box numbers them.
  BoardRule &from(uint32_t interfaces) {
    user_pbmp_t ports = {};
    ports.word[0] = interfaces;
    return qualify(ADP_FP_QUALIFIER_INGRESS_PORTS, &ports, sizeof ports);
  }
  BoardRule &act(uint32_t kind, uint32_t value) {
    EXPECT_EQ(adp_fp_add_entity_action(&rule_, kind, &value, sizeof value, nullptr, 0), 0);
    return *this;
  }
  BoardRule &vlan(uint32_t vid) { return act(ADP_FP_ACTION_VLAN, vid); }
  BoardRule &priority(uint32_t priority) { return act(ADP_FP_ACTION_PRIORITY, priority); }
  void add() { EXPECT_EQ(adp_fp_add_entity_rule(rule_), 0); }
  void remove() {
    EXPECT_EQ(adp_fp_delete_entity_rule(rule_.entity, static_cast<int32_t>(rule_.index), 0), 0);
  }

 private:
  BoardRule &qualify(uint32_t kind, const void *value, size_t length) {
    EXPECT_EQ(adp_fp_add_entity_qualify(&rule_, kind, static_cast<const uint8_t *>(value),
                                        static_cast<uint32_t>(length), nullptr, 0),
              0);
    return *this;
  }

  adp_fp_entity_rule_t rule_ = {};
};

}  // namespace frames

#endif
