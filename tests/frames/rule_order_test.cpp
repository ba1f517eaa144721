// SPDX-License-Identifier: MIT
// However many rules there are and whatever they look at: the one that decides is
// the one that a search from the first to the last finds.
#include <algorithm>
#include <random>

#include "rule_maker.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::Maker;
using frames::Rule;
using frames::station;

// What a frame has of the fields that rules ask for here; -1 for nothing.
struct Subject {
  int port;
  int vid;
  int priority;
  int type;
  int protocol;
  int to_port;
  uint32_t source_ip;

  bool is_ip() const { return type == 0x0800; }
  Bytes frame() const {
    Maker maker(kBroadcast, station(1));
    if (vid >= 0) maker.tag(static_cast<uint32_t>(vid), static_cast<uint32_t>(priority));
    maker.type(static_cast<uint32_t>(type));
    if (is_ip()) maker.ip4(static_cast<uint32_t>(protocol), source_ip, 9, 20);
    return maker.half(5).half(static_cast<uint32_t>(to_port)).bytes();
  }
};

// One condition of a rule: how it is written, and whether a frame meets it.
struct Condition {
  enum Kind { ports, vid, priority, type, protocol, protocol_class, to_port, source_ip, kinds };
  Kind kind;
  uint32_t value;
  uint32_t bits;

  void write(Rule &rule) const {
    switch (kind) {
      case ports: rule.from(value); break;
      case vid: rule.match(CHIP_ACL_FIELD_INNER_VLAN_ID, value, bits); break;
      case priority: rule.match(CHIP_ACL_FIELD_INNER_PRIORITY, value); break;
      case type: rule.match(CHIP_ACL_FIELD_ETHER_TYPE, value); break;
      case protocol: rule.match(CHIP_ACL_FIELD_IP_PROTOCOL, 0x1000 + value); break;
      case protocol_class: rule.match_class(static_cast<uint8_t>(value)); break;
      case to_port: rule.match(CHIP_ACL_FIELD_L4_DST_PORT, value); break;
      case source_ip: rule.match(CHIP_ACL_FIELD_SRC_IP, value, bits); break;
      case kinds: break;
    }
  }
  bool holds(const Subject &frame) const {
    const auto is = [](int have, uint32_t want) { return have == static_cast<int>(want); };
    const bool transport = frame.is_ip() && (frame.protocol == 6 || frame.protocol == 17);
    constexpr uint32_t kOfClass[] = {17, 6, 1, 2};
    switch (kind) {
      case ports: return (value >> frame.port & 1) != 0;
      case vid: return frame.vid >= 0 && ((static_cast<uint32_t>(frame.vid) ^ value) & bits) == 0;
      case priority: return frame.vid >= 0 && is(frame.priority, value);
      case type: return is(frame.type, value);
      case protocol: return frame.is_ip() && is(frame.protocol, value);
      case protocol_class: return frame.is_ip() && is(frame.protocol, kOfClass[value]);
      case to_port: return transport && is(frame.to_port, value);
      case source_ip: return frame.is_ip() && ((frame.source_ip ^ value) & bits) == 0;
      case kinds: break;
    }
    return false;
  }
};

struct Listed {
  uint32_t number;
  bool enabled;
  bool joined;
  std::vector<Condition> conditions;

  bool matches(const Subject &frame) const {
    return enabled && std::ranges::all_of(conditions, [&](const Condition &condition) {
             return condition.holds(frame);
           });
  }
};

class RuleOrder : public frames::Switch {
 protected:
  explicit RuleOrder() : random_(1) {}

  uint32_t below(uint32_t end) { return static_cast<uint32_t>(random_() % end); }
  template <size_t size>
  uint32_t any_of(const uint32_t (&values)[size]) {
    return values[below(size)];
  }
  Subject any_frame() {
    return {static_cast<int>(1 + below(4)),
            below(2) == 0 ? -1 : static_cast<int>(1 + below(4)),
            static_cast<int>(below(3)),
            static_cast<int>(any_of(kTypes)),
            static_cast<int>(any_of(kProtocols)),
            static_cast<int>(80 + below(3)),
            0x0a000000 | below(4)};
  }
  Condition any_condition(Condition::Kind kind) {
    switch (kind) {
      case Condition::ports: return {kind, below(32), 0};
      case Condition::vid: return {kind, 1 + below(4), below(2) == 0 ? 0xfffu : 0x3u};
      case Condition::priority: return {kind, below(3), 0};
      case Condition::type: return {kind, any_of(kTypes), 0};
      case Condition::protocol: return {kind, any_of(kProtocols), 0};
      case Condition::protocol_class: return {kind, below(4), 0};
      case Condition::to_port: return {kind, 80 + below(3), 0};
      default: return {kind, 0x0a000000 | below(4), below(2) == 0 ? 0xffffffffu : 0xfffffffeu};
    }
  }
  // Up to three conditions; one about the protocol at most, for they share a field.
  Listed any_rule(uint32_t number) {
    Listed rule = {number, below(8) != 0, below(6) == 0, {}};
    std::vector<uint32_t> taken;
    for (uint32_t more = below(3); more < 3; ++more) {
      const auto kind = static_cast<Condition::Kind>(below(Condition::kinds));
      const uint32_t field = kind == Condition::protocol_class ? Condition::protocol : kind;
      if (std::ranges::find(taken, field) != taken.end()) continue;
      taken.push_back(field);
      rule.conditions.push_back(any_condition(kind));
    }
    return rule;
  }
  static void write(const Listed &listed) {
    Rule rule(static_cast<int32_t>(listed.number));
    for (const Condition &condition : listed.conditions) condition.write(rule);
    if (listed.joined) rule.join();
    rule.permit().count(listed.number).enable();
    if (!listed.enabled) rule.disable();
  }
  // Rules without a gap between their numbers, so that a joined one has a second.
  static int decides(const std::vector<Listed> &rules, const Subject &frame) {
    for (size_t first = 0; first < rules.size(); ++first) {
      if (first > 0 && rules[first - 1].joined) continue;
      size_t place = first;
      while (rules[place].matches(frame) && rules[place].joined) ++place;
      if (rules[place].matches(frame)) return static_cast<int>(rules[first].number);
    }
    return -1;
  }
  // The rule that counted a frame.
  static int counted(const std::vector<Listed> &rules) {
    int found = -1;
    for (const Listed &rule : rules) {
      uint32_t packets[2] = {};
      EXPECT_EQ(rtk_acl_statPktCnt_get(0, rule.number, packets), 0);
      if (packets[1] == 0) continue;
      EXPECT_EQ(found, -1) << "it decides alone";
      found = static_cast<int>(rule.number);
      EXPECT_EQ(rtk_acl_statPktCnt_clear(0, rule.number), 0);
    }
    return found;
  }

  static constexpr uint32_t kTypes[] = {0x0800, 0x0800, 0x88b5, 0x88b6};
  static constexpr uint32_t kProtocols[] = {1, 2, 6, 17, 47};
  std::mt19937 random_;
};

TEST_F(RuleOrder, IsThatOfASearchFromTheFirst) {
  size_t decided = 0;
  for (uint32_t round = 0; round < 12; ++round) {
    SetUp();
    ASSERT_EQ(rtk_trap_mgmtFrameAction_set(0, 5, 0), 0);
    for (uint32_t vid = 2; vid < 5; ++vid) make_vlan(vid, frames::mask({1, 2, 3, 4}));
    std::vector<Listed> rules;
    for (uint32_t number = 0; number < 40 + round; ++number)
      rules.push_back(any_rule(100 * round + number));
    rules.back().joined = false;
    // In any order: its place counts, not when it was written.
    std::vector<Listed> shuffled = rules;
    std::ranges::shuffle(shuffled, random_);
    for (const Listed &rule : shuffled) write(rule);
    for (int each = 0; each < 120; ++each) {
      const Subject frame = any_frame();
      arrive(frame.port, frame.frame());
      left();
      const int wanted = decides(rules, frame);
      ASSERT_EQ(counted(rules), wanted) << "round " << round << " frame " << each;
      decided += wanted >= 0 ? 1 : 0;
    }
  }
  EXPECT_GT(decided, 500u);
}

}  // namespace
