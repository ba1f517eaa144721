// SPDX-License-Identifier: MIT
// The access-control list: the first enabled rule that matches decides alone.
#include <type_traits>

#include "pipeline/steps.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kIpTypeNone = 0;
constexpr uint32_t kIpType4 = 2;
constexpr uint32_t kIpType6 = 3;
constexpr uint32_t kInterFrameGap = 20;  // preamble, delimiter and gap (IEEE 802.3)
constexpr uint32_t kPortBytes = 4;
constexpr const char *kSetAction = "rtk_acl_ruleAction_set";

constexpr uint32_t kOtherProtocols = 0x1000;  // a protocol's number comes on top

// Writes the fields of a frame in the machine's own byte order, as rules have
// them.
class KeyWriter {
 public:
  explicit KeyWriter(FrameFields &fields) : fields_(fields) {}

  template <uint32_t id>
  void number(uint32_t value) {
    constexpr uint32_t kBytes = chip_acl_field_bytes(id);
    static_assert(kBytes == 1 || kBytes == 2 || kBytes == 4);
    using Value = std::conditional_t<kBytes == 1, uint8_t,
                                     std::conditional_t<kBytes == 2, uint16_t, uint32_t>>;
    const auto own = static_cast<Value>(value);
    bytes<id>(reinterpret_cast<const uint8_t *>(&own));
  }
  template <uint32_t id>
  void bytes(const uint8_t *from) {
    constexpr size_t kPlace = place_of_field(id);
    constexpr size_t kStart = start_of_field(kPlace);
    memcpy(reinterpret_cast<uint8_t *>(fields_.words.data()) + kStart, from,
           chip_acl_field_bytes(id));
    fields_.present |= uint32_t{1} << kPlace;
  }

 private:
  FrameFields &fields_;
};

// As received: an outer tag that the port takes off counts too.
void write_tags(KeyWriter &key, const Way &way) {
  const Tag &inner = way.double_tag ? way.inner : way.tag;
  if (inner.there) {
    key.number<CHIP_ACL_FIELD_INNER_VLAN>(inner.vid);
    key.number<CHIP_ACL_FIELD_INNER_VLAN_ID>(inner.vid);
    key.number<CHIP_ACL_FIELD_INNER_PRIORITY>(inner.priority);
  }
  const Tag &outer = way.received;
  if (!way.double_tag || !outer.there) return;
  const uint32_t control =
      static_cast<uint32_t>(outer.priority) << 13 | (outer.drop_eligible ? 0x1000u : 0) | outer.vid;
  key.number<CHIP_ACL_FIELD_OUTER_VLAN>(control);
  key.number<CHIP_ACL_FIELD_OUTER_VLAN_ID>(outer.vid);
  key.number<CHIP_ACL_FIELD_OUTER_PRIORITY>(outer.priority);
}

void write_network(KeyWriter &key, const Way &way) {
  const Layers &layers = way.layers;
  const uint8_t *network = way.frame.bytes + layers.at;
  key.number<CHIP_ACL_FIELD_TRAFFIC_CLASS>(layers.traffic);
  if (layers.ip4) {
    key.number<CHIP_ACL_FIELD_SRC_IP>(word_at(network + 12));
    key.number<CHIP_ACL_FIELD_DST_IP>(word_at(network + 16));
  } else {
    key.bytes<CHIP_ACL_FIELD_SRC_IP6>(network + 8);
    key.bytes<CHIP_ACL_FIELD_DST_IP6>(network + 24);
  }
  if (!layers.is(kProtocolTcp, kPortBytes) && !layers.is(kProtocolUdp, kPortBytes)) return;
  const uint8_t *transport = way.frame.bytes + layers.transport_at;
  key.number<CHIP_ACL_FIELD_L4_SRC_PORT>(half_at(transport));
  key.number<CHIP_ACL_FIELD_L4_DST_PORT>(half_at(transport + 2));
}

uint32_t ip_type(const Layers &layers) {
  if (layers.ip4) return kIpType4;
  return layers.ip6 ? kIpType6 : kIpTypeNone;
}

// The classes of protocols: UDP, TCP, ICMP, IGMP. -1 for another.
int32_t class_of(uint32_t protocol) {
  switch (protocol) {
    case kProtocolUdp: return 0;
    case kProtocolTcp: return 1;
    case kProtocolIcmp: return 2;
    case kProtocolIgmp: return 3;
    default: return -1;
  }
}

// A class leaves the second byte 0.
void write_class(KeyWriter &key, const Way &way) {
  const int32_t number = way.layers.ip() ? class_of(way.layers.protocol) : -1;
  if (number < 0) return;
  const uint8_t bytes[2] = {static_cast<uint8_t>(number), 0};
  key.bytes<CHIP_ACL_FIELD_IP_PROTOCOL>(bytes);
}

// The fields by class are written where a rule asks for them.
MatchKey key_of(const Way &way) {
  MatchKey key;
  key.by_number = {};
  key.in_port = port_bit(way.port);
  KeyWriter writer(key.by_number);
  writer.number<CHIP_ACL_FIELD_IN_PORTS>(key.in_port);
  writer.bytes<CHIP_ACL_FIELD_DST_MAC>(way.frame.bytes);
  writer.bytes<CHIP_ACL_FIELD_SRC_MAC>(way.frame.bytes + kMacBytes);
  writer.number<CHIP_ACL_FIELD_FRAME_TYPE>(static_cast<uint32_t>(way.layers.encapsulation));
  writer.number<CHIP_ACL_FIELD_IP_TYPE>(ip_type(way.layers));
  if (way.layers.type != 0) writer.number<CHIP_ACL_FIELD_ETHER_TYPE>(way.layers.type);
  write_tags(writer, way);
  if (way.tables.rules.asks_for_class()) {
    key.by_class = key.by_number;
    KeyWriter by_class(key.by_class);
    if (way.layers.ip()) write_network(by_class, way);
    write_class(by_class, way);
  }
  if (!way.layers.ip()) return key;
  write_network(writer, way);
  writer.number<CHIP_ACL_FIELD_IP_PROTOCOL>(kOtherProtocols + way.layers.protocol);
  return key;
}

// What a rule says, in words that may hold anything.
class Actions {
 public:
  explicit Actions(const chip_acl_action &action) : word_(action.word) {}

  bool mirrors(uint32_t &group) const {
    return value(CHIP_ACL_WORD_MIRROR, CHIP_ACL_WORD_MIRROR_SESSION, kMirrorGroups, group);
  }
  bool counts(uint32_t &counter) const {
    return value(CHIP_ACL_WORD_COUNT, CHIP_ACL_WORD_COUNT_COUNTER, VCHIP_ACL_COUNTERS, counter);
  }
  bool meters(uint32_t &meter) const {
    return value(CHIP_ACL_WORD_METER, CHIP_ACL_WORD_METER_NUMBER, VCHIP_METERS, meter);
  }
  bool outer_vlan(uint32_t &vid) const {
    return value(CHIP_ACL_WORD_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN_ID, kVlanIds, vid);
  }
  bool inner_vlan(uint32_t &vid) const {
    return value(CHIP_ACL_WORD_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN_ID, kVlanIds, vid);
  }
  bool priority(uint32_t &priority) const {
    return value(CHIP_ACL_WORD_PRIORITY, CHIP_ACL_WORD_PRIORITY_VALUE, kPriorities, priority);
  }
  bool queue(uint32_t &queue) const {
    return value(CHIP_ACL_WORD_QUEUE, CHIP_ACL_WORD_QUEUE_NUMBER, kQueues, queue);
  }
  bool remarks(uint32_t &kind, uint32_t &to) const {
    const uint32_t own = word_[CHIP_ACL_WORD_REMARK_KIND];
    const uint32_t end = own == CHIP_ACL_REMARK_DSCP ? kCodePoints : kPriorities;
    if (own > CHIP_ACL_REMARK_DSCP) return false;
    if (!value(CHIP_ACL_WORD_REMARK, CHIP_ACL_WORD_REMARK_VALUE, end, to)) return false;
    kind = own;
    return true;
  }
  bool drops() const { return word_[CHIP_ACL_WORD_VERDICT] == CHIP_ACL_VERDICT_DROP; }
  bool goes() const { return word_[CHIP_ACL_WORD_FORWARD] == 1; }
  uint32_t kind() const { return word_[CHIP_ACL_WORD_FORWARD_KIND]; }
  uint32_t subject() const { return word_[CHIP_ACL_WORD_FORWARD_TO]; }

 private:
  // A word of a group that counts, if it is below the end of its range.
  bool value(size_t enable, size_t at, uint32_t end, uint32_t &to) const {
    if (word_[enable] != 1 || word_[at] >= end) return false;
    to = word_[at];
    return true;
  }
  const uint32_t *word_;
};

std::string rule_text(const Way &way) {
  return "rule " + number_text(way.rule);
}

void tell_action(const Way &way, const char *decision, const std::string &what) {
  if (way.told()) way.tell("rule", decision, rule_text(way) + ' ' + what, kSetAction);
}

void mirror(Way &way, const Actions &actions) {
  uint32_t group = 0;
  if (!actions.mirrors(group)) return;
  const chip_mirror_entry &entry = way.unit.mirror.group(group);
  if (entry.enable == 0 || entry.field15 == 0) return;
  way.mirror_groups |= 1u << group;
  if (way.told())
    tell_action(way, "copy", "mirrors to " + port_text(static_cast<int32_t>(entry.mirroring_port)));
}

void count(Way &way, const Actions &actions) {
  if (!actions.counts(way.effects.rule_counter)) return;
  if (way.told())
    tell_action(way, "count", "counts on counter " + number_text(way.effects.rule_counter));
}

// False: the frame is over the rate.
bool meter(Way &way, const Actions &actions) {
  uint32_t meter = 0;
  if (!actions.meters(meter)) return true;
  const MeterBlock &block = way.unit.meter;
  if (block.entry(meter).enable == 0) return true;
  const uint32_t gap = way.unit.defaults.meters_count_gap() ? kInterFrameGap : 0;
  const uint64_t tokens = (way.frame.wire() + gap) * kTokensPerByte;
  const uint64_t held = block.bucket(meter).level_at(block.fill(meter), way.now);
  if (way.told())
    tell_action(way, held < tokens ? "exceeds" : "meter",
                "meters on " + number_text(meter) + ": " + number_text(tokens / kTokensPerByte) +
                    " bytes, " + number_text(held / kTokensPerByte) + " in its bucket");
  if (held < tokens) return false;
  way.effects.meter = meter;
  way.effects.meter_tokens = tokens;
  return true;
}

// In double-tag mode the outer VLAN is the frame's; an ordinary port has none.
void assign_vlan(Way &way, const Actions &actions) {
  uint32_t vid = 0;
  uint32_t priority = kUnset;
  actions.priority(priority);
  const bool inner = actions.inner_vlan(vid);
  if (inner && way.double_tag) {
    way.edit.inner_vid = vid;
    way.edit.inner_priority = priority;
  }
  const bool own = way.double_tag ? actions.outer_vlan(vid) : inner;
  if (!own) return;
  way.vid = vid;
  way.edit.priority = priority;
  if (way.told()) tell_action(way, "assign", "assigns " + vlan_text(vid));
}

void prioritise(Way &way, const Actions &actions) {
  if (actions.priority(way.priority) && way.told())
    tell_action(way, "priority", "sets internal priority " + number_text(way.priority));
  if (actions.queue(way.queue) && way.told())
    tell_action(way, "queue", "sets queue " + number_text(way.queue));
  if (actions.remarks(way.edit.remark, way.edit.remark_value) && way.told())
    tell_action(way, "remark",
                "remarks kind " + number_text(way.edit.remark) + " to " +
                    number_text(way.edit.remark_value));
}

void redirect(Way &way, uint32_t ports) {
  way.redirected = true;
  way.redirect = ports;
  if (way.told()) tell_action(way, "redirect", "redirects to " + ports_text(ports));
}

Verdict send(Way &way, const Actions &actions) {
  if (!actions.goes()) return Verdict::go_on;
  const uint32_t subject = actions.subject();
  const bool port = subject < VCHIP_PORTS;
  switch (actions.kind()) {
    case CHIP_ACL_FORWARD_TRAP:
      if (subject == VCHIP_CPU_PORT)
        return way.to_cpu("rule", VCHIP_TO_CPU_RULE, kSetAction,
                          [&] { return rule_text(way) + " traps it"; });
      [[fallthrough]];
    case CHIP_ACL_FORWARD_PORT:
      if (port) redirect(way, port_bit(static_cast<int32_t>(subject)));
      break;
    case CHIP_ACL_FORWARD_MASK:
      if (subject < kPortMasks) redirect(way, way.unit.forward_mask.mask(subject).ports);
      break;
    case CHIP_ACL_FORWARD_GROUP:
      if (subject < kPortMasks) redirect(way, way.unit.group.ports_of_mask(subject));
      break;
    default: break;
  }
  return Verdict::go_on;
}

Verdict obey(Way &way) {
  const Actions actions(way.unit.acl.action(way.rule));
  mirror(way, actions);
  count(way, actions);
  if (!meter(way, actions))
    return way.drop("rule", Fate::rule, "rtk_acl_meterEntry_set",
                    [&] { return rule_text(way) + ": over the rate of its meter"; });
  if (actions.drops())
    return way.drop("rule", Fate::rule, kSetAction, [&] { return rule_text(way) + " drops it"; });
  assign_vlan(way, actions);
  prioritise(way, actions);
  const Verdict verdict = send(way, actions);
  if (verdict == Verdict::go_on && way.told())
    way.tell("rule", "pass", rule_text(way) + " matches", "rtk_acl_ruleValidate_set");
  return verdict;
}

Verdict miss(Way &way) {
  constexpr const char *kSetting = "rtk_acl_lookupMissAct_set";
  if (way.unit.acl.miss(static_cast<uint32_t>(way.port)) != CHIP_ACL_MISS_DROP)
    return way.tables.rules.empty()
               ? Verdict::go_on
               : way.pass("rule", kSetting, [] { return std::string("no rule matches"); });
  return way.drop("rule", Fate::rule, kSetting, [&] {
    return "no rule matches, and " + port_text(way.port) + " drops such frames";
  });
}

}  // namespace

Verdict rule_step(Way &way) {
  if (way.from_cpu) return Verdict::go_on;
  if (way.tables.rules.empty()) return miss(way);
  const int32_t rule = way.tables.rules.find(way.unit.acl, key_of(way));
  if (rule < 0) return miss(way);
  way.rule = static_cast<uint32_t>(rule);
  return obey(way);
}

}  // namespace vchip
