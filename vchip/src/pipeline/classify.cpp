// SPDX-License-Identifier: MIT
// Which VLAN a frame is in, which priority it has, and whether it may come in.
#include "pipeline/classify.h"

#include "common/board.h"
#include "pipeline/steps.h"
#include "pipeline/trap.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kReservedVid = 4095;
constexpr uint32_t kSnapBytes = 8;
constexpr uint32_t kSnapTypeAt = 6;

bool is_inner_type(const Way &way, uint32_t type) {
  const uint32_t entries = way.unit.tag.port(way.port).ingress_inner_tpids;
  for (uint32_t entry = 0; entry < kTpids; ++entry)
    if ((entries >> entry & 1) != 0 && way.unit.tag.inner()[entry] == type) return true;
  return false;
}

bool is_outer_type(const Way &way, uint32_t type) {
  return way.unit.tag.outer()[way.unit.tag.port(way.port).egress_outer_tpid] == type;
}

// Reads a tag at the place where the type is expected, and passes it. Inlined, so
// that a tag is written to the way once and not put together in memory first.
[[gnu::always_inline]] inline Tag take_tag(Way &way, uint32_t &type) {
  type = way.frame.type_at(way.type_at);
  const Tag tag = tag_at(way.frame, way.type_at);
  way.type_at += kTagBytes;
  return tag;
}

bool has_tag(const Way &way, bool (*is_type)(const Way &, uint32_t)) {
  return way.type_at + kTagBytes <= way.frame.length &&
         is_type(way, way.frame.type_at(way.type_at));
}

bool matches(const uint8_t *bytes, const RuleQualifier &qualifier) {
  for (uint32_t i = 0; i < qualifier.length; ++i) {
    const uint32_t mask = qualifier.masked != 0 ? qualifier.mask[i] : 0xffu;
    if (((bytes[i] ^ qualifier.value[i]) & mask) != 0) return false;
  }
  return true;
}

bool half_matches(uint32_t value, const RuleQualifier &qualifier) {
  const auto half = static_cast<uint16_t>(value);
  uint8_t bytes[sizeof half];
  memcpy(bytes, &half, sizeof half);
  return matches(bytes, qualifier);
}

bool source_ip_matches(const Way &way, const RuleQualifier &qualifier) {
  if (!way.layers.ip4) return false;
  const uint32_t source = word_at(way.frame.bytes + way.layers.at + 12);
  uint8_t bytes[sizeof source];
  memcpy(bytes, &source, sizeof source);
  return matches(bytes, qualifier);
}

bool port_matches(const Way &way, const RuleQualifier &qualifier) {
  user_pbmp_t ports;
  memcpy(&ports, qualifier.value, sizeof ports);
  const int32_t interface = interface_of(way.port);
  return interface >= 0 && (ports.word[interface / 32] >> interface % 32 & 1) != 0;
}

// The rules of the adapter know the inner tag alone.
const Tag &inner_tag(const Way &way) {
  return way.double_tag ? way.inner : way.tag;
}

bool tag_state_matches(const Way &way, const RuleQualifier &qualifier) {
  const Tag &tag = inner_tag(way);
  const bool tagged = tag.there && tag.vid != 0;
  return half_matches(tagged ? ADP_FP_TAG_STATE_TAGGED : ADP_FP_TAG_STATE_UNTAGGED, qualifier);
}

uint32_t encapsulation_code(const Way &way) {
  if (way.layers.encapsulation == Encapsulation::snap) return ADP_FP_ENCAPSULATION_SNAP;
  return way.layers.encapsulation == Encapsulation::llc ? ADP_FP_ENCAPSULATION_LLC
                                                        : ADP_FP_ENCAPSULATION_ETHERNET;
}

// The EtherType, after SNAP too; of other LLC frames DSAP and SSAP. 0 if cut off.
uint32_t protocol_of(const Way &way) {
  const uint8_t *bytes = way.frame.bytes + way.layers.at;
  switch (way.layers.encapsulation) {
    case Encapsulation::ethernet: return way.layers.type;
    case Encapsulation::llc: return way.frame.type_at(way.layers.at);
    case Encapsulation::snap: break;
  }
  const bool whole = way.layers.at + kSnapBytes <= way.frame.length;
  const bool plain = whole && bytes[3] == 0 && bytes[4] == 0 && bytes[5] == 0;
  return plain ? half_at(bytes + kSnapTypeAt) : 0;
}

bool word_matches(uint32_t value, const RuleQualifier &qualifier) {
  uint8_t bytes[sizeof value];
  memcpy(bytes, &value, sizeof value);
  return matches(bytes, qualifier);
}

bool qualifies(const Way &way, const RuleQualifier &qualifier) {
  switch (qualifier.kind) {
    case ADP_FP_QUALIFIER_SOURCE_MAC: return matches(way.frame.bytes + kMacBytes, qualifier);
    case ADP_FP_QUALIFIER_SOURCE_IP4: return source_ip_matches(way, qualifier);
    case ADP_FP_QUALIFIER_INGRESS_PORTS: return port_matches(way, qualifier);
    case ADP_FP_QUALIFIER_TAG_STATE: return tag_state_matches(way, qualifier);
    case ADP_FP_QUALIFIER_RECEIVED_VLAN:
      return inner_tag(way).there && half_matches(inner_tag(way).vid, qualifier);
    case ADP_FP_QUALIFIER_ETHERTYPE: return half_matches(protocol_of(way), qualifier);
    case ADP_FP_QUALIFIER_ENCAPSULATION: return word_matches(encapsulation_code(way), qualifier);
    default: return false;
  }
}

bool rule_matches(const Way &way, const RuleArea &rule) {
  for (uint32_t place = 0; place < rule.qualifiers; ++place)
    if (!qualifies(way, rule.qualifier[place])) return false;
  return true;
}

uint32_t action_of(const RuleArea &rule, uint32_t kind) {
  for (uint32_t place = 0; place < rule.actions; ++place)
    if (rule.action[place].kind == kind) return rule.action[place].value;
  return kUnset;
}

const char *kind_name(uint32_t place) {
  for (const EntityKind &kind : kEntityKinds)
    if (place >= kind.first && place < kind.first + kind.limit) return kind.name;
  return "";
}
uint32_t kind_index(uint32_t place) {
  for (const EntityKind &kind : kEntityKinds)
    if (place >= kind.first && place < kind.first + kind.limit) return place - kind.first;
  return place;
}

// The first of these rules that matches; -1 if none does.
int32_t first_match(const Way &way, const std::vector<uint16_t> &places) {
  for (const uint16_t place : places)
    if (rule_matches(way, way.rules.area(place))) return place;
  return -1;
}

void tell_rule(const Way &way, int32_t place, uint32_t vid) {
  if (!way.told()) return;
  const auto number = static_cast<uint32_t>(place);
  way.tell("vlan", "assign",
           std::string("rule ") + number_text(kind_index(number)) + " of " + kind_name(number) +
               (vid == kUnset ? " matches" : " assigns " + vlan_text(vid)),
           "adp_fp_add_entity_rule");
}

// An ordinary port's VLAN is the inner one; in double-tag mode it is the outer
// one, and the inner one only writes the tag inside.
void apply_classifier(Way &way, int32_t place) {
  const RuleArea &rule = way.rules.area(static_cast<uint32_t>(place));
  const uint32_t vid = action_of(rule, ADP_FP_ACTION_VLAN);
  const uint32_t priority = action_of(rule, ADP_FP_ACTION_PRIORITY);
  tell_rule(way, place, vid);
  if (priority != kUnset) way.assigned_priority = priority;
  if (vid == kUnset) return;
  if (way.double_tag) {
    way.edit.inner_vid = vid;
    way.edit.inner_priority = priority;
  } else {
    way.vid = vid;
    way.edit.priority = priority;
  }
}

void apply_double_tag(Way &way, int32_t place) {
  const RuleArea &rule = way.rules.area(static_cast<uint32_t>(place));
  const uint32_t vid = action_of(rule, ADP_FP_ACTION_OUTER_VLAN);
  tell_rule(way, place, vid);
  if (vid == kUnset) return;
  way.vid = vid;
  way.edit.priority = action_of(rule, ADP_FP_ACTION_OUTER_PRIORITY);
}

// What rules, tag and port say, in this order.
void classify(Way &way) {
  way.vid = kUnset;
  if (const int32_t place = first_match(way, way.tables.classifiers); place >= 0)
    apply_classifier(way, place);
  if (way.double_tag) {
    if (const int32_t place = first_match(way, way.tables.double_tags); place >= 0)
      apply_double_tag(way, place);
  }
  if (way.vid != kUnset) return;
  if (way.tag.there && way.tag.vid != 0) {
    way.vid = way.tag.vid;
    if (way.told()) way.tell("vlan", "tagged", vlan_text(way.vid) + " by its tag", nullptr);
    return;
  }
  way.vid = way.double_tag ? way.unit.tag.port(way.port).outer_pvid : way.unit.vlan.pvid(way.port);
  if (way.told())
    way.tell("vlan", "default", vlan_text(way.vid) + " by the default of " + port_text(way.port),
             way.double_tag ? "rtk_vlan_portOuterPvid_set" : "rtk_vlan_portPvid_set");
}

constexpr const char *kSourceNames[kPrioritySources] = {"the DSCP", "the inner tag",
                                                        "the outer tag", "the port's inner default",
                                                        "the port's outer default"};

uint32_t priority_source(const Way &way) {
  const bool outer = way.double_tag && way.tag.there;
  const uint32_t there = (way.layers.ip() ? 1u << kDscpSource : 0) |
                         (inner_tag(way).there ? 1u << kInnerTagSource : 0) |
                         (outer ? 1u << kOuterTagSource : 0);
  return way.tables.priority_source[static_cast<size_t>(way.port)][there];
}

uint32_t priority_by(const Way &way, uint32_t source) {
  const QosMaps &maps = way.unit.qos.maps();
  const QosPort &port = way.unit.qos.port(way.port);
  switch (source) {
    case kDscpSource: return maps.dscp[way.layers.traffic >> 2];
    case kInnerTagSource: return maps.inner[inner_tag(way).priority];
    case kOuterTagSource: return maps.outer[way.tag.drop_eligible ? 1 : 0][way.tag.priority];
    case kInnerPortSource: return port.inner_priority;
    default: return port.outer_priority;
  }
}

void prioritise(Way &way) {
  if (way.assigned_priority != kUnset) {
    way.priority = way.assigned_priority;
    if (way.told())
      way.tell("vlan", "priority",
               "internal priority " + number_text(way.priority) + " by the rule",
               "adp_fp_add_entity_action");
    return;
  }
  const uint32_t source = priority_source(way);
  way.priority = priority_by(way, source);
  if (way.told())
    way.tell("vlan", "priority",
             "internal priority " + number_text(way.priority) + " by " + kSourceNames[source],
             "rtk_qos_priSelGroup_set");
}

}  // namespace

// What is read is kept in a tag of its own until it is whole: a tag that is
// copied out of the way as it was just written, member by member, makes the
// processor wait.
void read_tags(Way &way) {
  way.double_tag = way.unit.tag.port(way.port).double_tag != 0;
  Tag first = {};
  if (!way.double_tag) {
    if (has_tag(way, is_inner_type)) first = take_tag(way, way.tag_type);
    way.received = first;
    way.tag = first;
  } else {
    if (has_tag(way, is_outer_type)) first = take_tag(way, way.tag_type);
    way.received = first;
    if (has_tag(way, is_inner_type)) way.inner = take_tag(way, way.inner_type);
    // A port that does not keep the outer tag takes it off and looks at it no more.
    way.outer_removed = first.there && way.unit.tag.port(way.port).ingress_keep.outer == 0;
    if (!way.outer_removed) way.tag = first;
  }
  way.layers = layers_of(way.frame, way.type_at);
}

Verdict vlan_step(Way &way) {
  way.assigned_priority = kUnset;
  if (way.tag.there && way.tag.vid == kReservedVid) {
    way.vid = kReservedVid;
    prioritise(way);
    if (ends_at_trap(way)) return Verdict::go_on;
    return way.drop("vlan", Fate::vlan, nullptr, [] { return std::string("VLAN ID 4095"); });
  }
  classify(way);
  prioritise(way);
  return Verdict::go_on;
}

Verdict filter_step(Way &way) {
  const bool exists = way.vid < kVlanIds && way.unit.vlan.exists(way.vid);
  if (!exists) {
    if (ends_at_trap(way)) return Verdict::go_on;
    return way.drop("filter", Fate::filter, "rtk_vlan_create",
                    [&] { return "there is no " + vlan_text(way.vid); });
  }
  if (way.unit.tag.port(way.port).ingress_filter == 0) return Verdict::go_on;
  const uint32_t members = way.tables.expand(way.unit.vlan.vlan(way.vid).member);
  const auto why = [&](const char *what) {
    return port_text(way.port) + what + vlan_text(way.vid);
  };
  if ((members & port_bit(way.port)) != 0)
    return way.pass("filter", "rtk_vlan_portIgrFilter_set",
                    [&] { return why(" is a member of "); });
  if (ends_at_trap(way)) return Verdict::go_on;
  return way.drop("filter", Fate::filter, "rtk_vlan_portIgrFilter_set",
                  [&] { return why(" is no member of "); });
}

}  // namespace vchip
