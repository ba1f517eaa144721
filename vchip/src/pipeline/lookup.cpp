// SPDX-License-Identifier: MIT
// Where the destination is, and how much of what is flooded may pass.
#include "pipeline/steps.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kMissIp4 = 0;
constexpr uint32_t kMissIp6 = 1;
constexpr uint32_t kMissUnicast = 2;
constexpr uint32_t kMissMulticast = 3;
constexpr uint32_t kMissBroadcast = 4;
constexpr const char *kMissNames[] = {"IPv4 multicast", "IPv6 multicast", "unknown unicast",
                                      "multicast", "broadcast"};

// IPv4 groups are at 01-00-5E-0 to -7, IPv6 groups at 33-33 (RFC 1112, RFC 2464).
bool is_ip4_group(const Way &way) {
  return way.layers.type == kTypeIp4 && way.destination >> 23 == 0x01005e000000 >> 23;
}
bool is_ip6_group(const Way &way) {
  return way.layers.type == kTypeIp6 && way.destination >> 32 == 0x3333;
}

uint32_t miss_type(const Way &way) {
  if (!is_group(way.destination)) return kMissUnicast;
  if (way.destination == kBroadcast) return kMissBroadcast;
  if (is_ip4_group(way)) return kMissIp4;
  return is_ip6_group(way) ? kMissIp6 : kMissMulticast;
}

void found(Way &way, uint32_t ports, const char *setting, const std::string &what) {
  way.known = true;
  way.targets = ports;
  if (way.told()) way.tell("lookup", "known", what + " is at " + ports_text(ports), setting);
}

// The frame has just been learned, or is about to be, by the port it came by.
bool is_own_source(const Way &way) {
  const Learn learn = way.effects.learn;
  const bool there = learn == Learn::add || learn == Learn::move || learn == Learn::refresh;
  return there && way.destination == way.source && way.vid == way.source_vid;
}

uint32_t place_of(const Way &way, const chip_l2_ucast_entry &entry) {
  if (entry.trunk == 0) return port_bit(entry.port);
  return way.unit.trunk.members()[static_cast<size_t>(entry.trunk)];
}

Verdict look_up_unicast(Way &way) {
  constexpr const char *kSetting = "rtk_l2_addr_add";
  if (is_own_source(way)) {
    found(way, port_bit(way.port), nullptr, address_text(way.destination));
    return Verdict::go_on;
  }
  const AddressTable &table = way.unit.l2.table();
  const int32_t index = table.find(way.vid, way.frame.bytes);
  if (index == kNoIndex) return Verdict::go_on;
  const chip_l2_ucast_entry &entry = table.entry(index);
  if ((entry.flags & kFilterDestinationFlag) != 0)
    return way.drop("lookup", Fate::lookup, kSetting, [&] {
      return "the entry of " + address_text(way.destination) + " drops what is sent to it";
    });
  way.known = true;
  way.targets = place_of(way, entry);
  if (way.told())
    way.tell("lookup", "known",
             address_text(way.destination) + " in " + vlan_text(way.vid) + " is at " +
                 ports_text(way.targets),
             is_static(entry) ? kSetting : nullptr);
  return Verdict::go_on;
}

void look_up_group(Way &way) {
  const GroupBlock &block = way.unit.group;
  const int32_t index = way.tables.groups.find(
      hash_of(way.vid, way.destination),
      [&](int32_t place) { return block.is_at(place, way.vid, way.frame.bytes); });
  if (index < 0) return;
  found(way, block.ports(index), "rtk_l2_mcastAddr_add", address_text(way.destination));
}

// By source and group, then by the group alone.
int32_t find_ip4(const Way &way, const uint8_t *group, const uint8_t *source) {
  const auto &table = way.unit.mcast_ip.ip();
  return way.tables.ip_groups.find(hash_of(way.vid, group, 4, source), [&](int32_t place) {
    const chip_ip_mcast_entry &entry = table[static_cast<size_t>(place)].entry;
    return entry.vid == way.vid && entry.address_b == word_at(group) &&
           entry.address_a == word_at(source);
  });
}

int32_t find_ip6(const Way &way, const uint8_t *group, const uint8_t *source) {
  const auto &table = way.unit.mcast_ip.ip6();
  return way.tables.ip6_groups.find(hash_of(way.vid, group, 16, source), [&](int32_t place) {
    const chip_ip6_mcast_entry &entry = table[static_cast<size_t>(place)].entry;
    return entry.vid == way.vid && memcmp(entry.address_b.bytes, group, 16) == 0 &&
           memcmp(entry.address_a.bytes, source, 16) == 0;
  });
}

constexpr uint8_t kAnySource[16] = {};

void look_up_ip4(Way &way) {
  if (!way.layers.ip4) return;
  const uint8_t *network = way.frame.bytes + way.layers.at;
  int32_t place = find_ip4(way, network + 16, network + 12);
  if (place < 0) place = find_ip4(way, network + 16, kAnySource);
  if (place < 0) return;
  found(way, way.unit.mcast_ip.ip()[static_cast<size_t>(place)].entry.ports,
        "rtk_l2_ipMcastAddr_add", "the IPv4 group");
}

void look_up_ip6(Way &way) {
  if (!way.layers.ip6) return;
  const uint8_t *network = way.frame.bytes + way.layers.at;
  int32_t place = find_ip6(way, network + 24, network + 8);
  if (place < 0) place = find_ip6(way, network + 24, kAnySource);
  if (place < 0) return;
  found(way, way.unit.mcast_ip.ip6()[static_cast<size_t>(place)].entry.ports,
        "rtk_l2_ip6McastAddr_add", "the IPv6 group");
}

void look_up_multicast(Way &way, uint32_t type) {
  if (type == kMissIp4 && way.unit.mcast_ip.ip_mode() != 0) return look_up_ip4(way);
  if (type == kMissIp6 && way.unit.mcast_ip.ip6_mode() != 0) return look_up_ip6(way);
  look_up_group(way);
}

Verdict flood(Way &way, uint32_t type) {
  constexpr const char *kSetting = "rtk_l2_lookupMissFloodPortMask_set_with_idx";
  way.targets = way.unit.forward_mask.mask(way.unit.flood.miss_index()[type]).ports;
  if (way.told())
    way.tell("lookup", "flood",
             std::string(kMissNames[type]) + " goes to " + ports_text(way.targets) +
                 " as far as they are in " + vlan_text(way.vid),
             kSetting);
  return Verdict::go_on;
}

// The miss actions of IP multicast alone have a meaning.
Verdict missed(Way &way, uint32_t type) {
  constexpr const char *kSetting = "rtk_l2_portLookupMissAction_set";
  const FrameAction action =
      type <= kMissIp6 ? way.unit.mcast_ip.miss_actions(way.port)[type] : FrameAction::forward;
  const auto why = [&] {
    return std::string("an unknown group of ") + kMissNames[type] + ", to be " +
           action_text(action);
  };
  if (action == FrameAction::drop) return way.drop("lookup", Fate::lookup, kSetting, why);
  if (action == FrameAction::to_cpu)
    return way.to_cpu("lookup", VCHIP_TO_CPU_LOOKUP_MISS, kSetting, why);
  if (action == FrameAction::copy) {
    way.copy_to_cpu(VCHIP_TO_CPU_LOOKUP_MISS);
    if (way.told()) way.tell("lookup", "copy", why(), kSetting);
  }
  return flood(way, type);
}

// Types of storm control.
constexpr uint32_t kStormUnicast = 0;
constexpr uint32_t kStormMulticast = 1;
constexpr uint32_t kStormBroadcast = 2;
constexpr uint32_t kStormAllMulticast = 3;
constexpr uint32_t kStormFlooded = 4;
constexpr const char *kStormNames[kStormTypes] = {"unknown unicast", "unknown multicast",
                                                  "broadcast", "multicast", "flooded frames"};

uint32_t storm_types(const Way &way) {
  uint32_t types = way.known ? 0 : 1u << kStormFlooded;
  switch (cast_of(way.destination)) {
    case Cast::unicast: return way.known ? types : types | 1u << kStormUnicast;
    case Cast::broadcast: return types | 1u << kStormBroadcast;
    case Cast::multicast: break;
  }
  if (!way.known) types |= 1u << kStormMulticast;
  return types | 1u << kStormAllMulticast;
}

}  // namespace

Verdict lookup_step(Way &way) {
  if (way.redirected) return Verdict::go_on;
  const uint32_t type = miss_type(way);
  if (type == kMissUnicast) {
    if (look_up_unicast(way) == Verdict::end) return Verdict::end;
  } else {
    look_up_multicast(way, type);
  }
  return way.known ? Verdict::go_on : missed(way, type);
}

Verdict storm_step(Way &way) {
  if (way.redirected || way.from_cpu) return Verdict::go_on;
  const RateBlock &rate = way.unit.rate;
  const uint32_t controlled = way.tables.storms[static_cast<size_t>(way.port)];
  if (controlled == 0) return Verdict::go_on;
  const uint32_t types = controlled & storm_types(way);
  for (uint32_t type = 0; type < kStormTypes; ++type) {
    const Storm &storm = rate.storm(way.port, type);
    if ((types >> type & 1) == 0) continue;
    const uint64_t tokens = rate.storm_tokens(way.frame.wire());
    const bool exceeded = storm.bucket.level_at(rate.storm_fill(way.port, type), way.now) < tokens;
    const auto why = [&] {
      return "storm type " + number_text(type) + ", " + kStormNames[type] +
             (exceeded ? ": over the rate" : ": within the rate");
    };
    if (!exceeded) {
      way.effects.charged_storms |= 1u << type;
      if (way.told()) way.tell("storm", "pass", why(), "rtk_rate_stormControlRate_set");
      continue;
    }
    way.effects.exceeded_storms |= 1u << type;
    return way.drop("storm", Fate::storm, "rtk_rate_stormControlRate_set", why);
  }
  return Verdict::go_on;
}

}  // namespace vchip
