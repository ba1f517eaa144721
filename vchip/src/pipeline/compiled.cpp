// SPDX-License-Identifier: MIT
#include "pipeline/compiled.h"

#include <swctl-vchip/ability.h>

#include <bit>
#include <optional>

#include "pipeline/frame.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kDigestFactor = 0x9e3779b1;

uint32_t mixed(uint32_t hash, uint32_t word) {
  hash = (hash ^ word) * kDigestFactor;
  return hash ^ hash >> 15;
}

// 512 bit times: 51.2, 5.12 or 0.512 microseconds.
uint32_t quantum_of(uint32_t speed) {
  if (speed == VCHIP_SPEED_10) return 51200;
  return speed == VCHIP_SPEED_100 ? 5120 : 512;
}

void compile_link(Compiled &to, const PortBlock &ports, int32_t port) {
  const uint32_t bit = port_bit(port);
  const Link link = ports.link(port);
  if (ports.admin(port)) to.enabled |= bit;
  if (link.up) to.linked |= bit;
  if (link.up && ports.admin(port)) to.live |= bit;
  if (ports.loopback(port)) to.looped |= bit;
  if (link.up && link.speed >= VCHIP_SPEED_1000) to.gigabit |= bit;
  if (port != VCHIP_CPU_PORT && ports.pause(port).receive) to.obeys_pause |= bit;
  to.quantum[static_cast<size_t>(port)] = quantum_of(link.speed);
}

void compile_trunks(Compiled &to, const TrunkBlock &block) {
  to.trunk.fill(kTrunkless);
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    to.group[static_cast<size_t>(port)] = port_bit(port);
  for (uint32_t trunk = 0; trunk < kTrunkGroups; ++trunk) {
    const uint32_t members = block.members()[trunk];
    to.trunked |= members;
    for (uint32_t rest = members; rest != 0; rest &= rest - 1) {
      const auto port = static_cast<size_t>(std::countr_zero(rest));
      to.trunk[port] = static_cast<uint8_t>(trunk);
      to.group[port] = members;
    }
  }
}

void compile_instances(Compiled &to, const StpBlock &block) {
  for (uint32_t instance = 0; instance < kInstances; ++instance) {
    if (!block.exists(instance)) continue;
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      const uint32_t state = block.state(instance, port);
      if (state >= kStpLearning) to.learning[instance] |= port_bit(port);
      if (state == kStpForwarding) to.forwarding[instance] |= port_bit(port);
    }
    to.learning[instance] |= port_bit(VCHIP_CPU_PORT);
    to.forwarding[instance] |= port_bit(VCHIP_CPU_PORT);
  }
}

void compile_mirrors(Compiled &to, const MirrorBlock &block) {
  for (uint32_t group = 0; group < kMirrorGroups; ++group) {
    const chip_mirror_entry &entry = block.group(group);
    if (entry.enable == 0) continue;
    to.mirrored_in |= entry.ingress;
    to.mirrored_out |= entry.egress;
  }
}

uint8_t controlled_storms(const RateBlock &rate, int32_t port) {
  uint32_t types = 0;
  for (uint32_t type = 0; type < kStormTypes; ++type)
    if (rate.storm(port, type).controlled != 0) types |= 1u << type;
  return static_cast<uint8_t>(types);
}

// The heaviest of the sources that a frame has, of equals the first. Each has
// the port's defaults.
template <typename Weights>
uint8_t heaviest(const Weights &weights, uint32_t there) {
  const uint32_t has = there | 1u << kInnerPortSource | 1u << kOuterPortSource;
  uint32_t best = kPrioritySources;
  for (uint32_t source = 0; source < kPrioritySources; ++source)
    if ((has >> source & 1) != 0 && (best == kPrioritySources || weights[source] > weights[best]))
      best = source;
  return static_cast<uint8_t>(best);
}

template <typename Weights>
PrioritySources sources_of(const Weights &weights) {
  PrioritySources sources;
  for (uint32_t there = 0; there < sources.size(); ++there)
    sources[there] = heaviest(weights, there);
  return sources;
}

}  // namespace

void PlaceIndex::start(uint32_t places) {
  const uint32_t size = std::bit_ceil(places * 2 + 1);
  slots_.assign(size, 0);
  mask_ = size - 1;
}

void PlaceIndex::add(uint32_t hash, uint32_t place) {
  uint32_t slot = hash & mask_;
  while (slots_[slot] != 0) slot = (slot + 1) & mask_;
  slots_[slot] = static_cast<uint16_t>(place + 1);
}

uint32_t hash_of(uint32_t vid, uint64_t address) {
  return mixed(mixed(vid, static_cast<uint32_t>(address)), static_cast<uint32_t>(address >> 32));
}

uint32_t hash_of(uint32_t vid, const uint8_t *group, uint32_t group_bytes, const uint8_t *source) {
  uint32_t hash = vid;
  for (uint32_t at = 0; at < group_bytes; at += 4) {
    hash = mixed(hash, word_at(group + at));
    hash = mixed(hash, source == nullptr ? 0 : word_at(source + at));
  }
  return hash;
}

uint32_t Compiled::expand_trunks(uint32_t ports) const {
  uint32_t all = ports;
  for (uint32_t rest = ports & trunked; rest != 0; rest &= rest - 1)
    all |= group[static_cast<size_t>(std::countr_zero(rest))];
  return all;
}

size_t Compiled::bytes() const {
  return sizeof *this +
         (conversions.capacity() + classifiers.capacity() + double_tags.capacity()) * 2 +
         groups.bytes() + ip_groups.bytes() + ip6_groups.bytes() + rules.bytes();
}

void compile_ports(Compiled &to, const Unit &unit) {
  to.live = to.enabled = to.linked = to.looped = to.gigabit = to.obeys_pause = 0;
  to.trunked = to.mirrored_in = to.mirrored_out = 0;
  to.forwarding = {};
  to.learning = {};
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) compile_link(to, unit.port, port);
  compile_trunks(to, unit.trunk);
  compile_instances(to, unit.stp);
  compile_mirrors(to, unit.mirror);
  // Many ports share the weights of few groups.
  std::array<std::optional<PrioritySources>, kPriorityGroups> done;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    const auto place = static_cast<size_t>(port);
    to.may_reach[place] = to.expand(unit.flood.isolation(port));
    to.storms[place] = controlled_storms(unit.rate, port);
    const uint32_t group = unit.qos.port(port).group;
    if (!done[group]) done[group] = sources_of(unit.qos.maps().groups[group]);
    to.priority_source[place] = *done[group];
  }
}

void compile_groups(Compiled &to, const Unit &unit) {
  to.groups.start(kGroups);
  for (int32_t index = unit.group.next(-1); index >= 0; index = unit.group.next(index)) {
    const chip_l2_mcast_entry entry = unit.group.entry(index);
    to.groups.add(hash_of(entry.vid, address_at(entry.mac)), static_cast<uint32_t>(index));
  }
  to.ip_groups.start(kIpMcastEntries);
  to.ip6_groups.start(kIp6McastEntries);
  for (uint32_t place = 0; place < kIpMcastEntries; ++place) {
    const auto &own = unit.mcast_ip.ip()[place];
    if (own.used == 0) continue;
    uint8_t group[4];
    uint8_t source[4];
    put_word(group, own.entry.address_b);
    put_word(source, own.entry.address_a);
    to.ip_groups.add(hash_of(own.entry.vid, group, sizeof group, source), place);
  }
  for (uint32_t place = 0; place < kIp6McastEntries; ++place) {
    const auto &own = unit.mcast_ip.ip6()[place];
    if (own.used == 0) continue;
    to.ip6_groups.add(hash_of(own.entry.vid, own.entry.address_b.bytes,
                              sizeof own.entry.address_b.bytes, own.entry.address_a.bytes),
                      place);
  }
}

void compile_conversions(Compiled &to, const Unit &unit) {
  to.conversions.clear();
  to.converted = 0;
  for (uint32_t index = 0; index < kEgressEntries; ++index) {
    const chip_vlan_egress_entry &entry = unit.conversion.egress(index);
    if (entry.valid == 0) continue;
    to.conversions.push_back(static_cast<uint16_t>(index));
    if (entry.ignore_port != 0)
      to.converted |= kAllPorts;
    else if (entry.port < VCHIP_PORTS)
      to.converted |= port_bit(static_cast<int32_t>(entry.port));
  }
  to.conversions.shrink_to_fit();
}

// Kind by kind; in a kind by index.
void compile_classifiers(Compiled &to, const RuleBlock &rules) {
  constexpr uint32_t kOrder[] = {ADP_FP_ENTITY_TRANSLATION, ADP_FP_ENTITY_VOICE_VLAN,
                                 ADP_FP_ENTITY_MAC_VLAN, ADP_FP_ENTITY_IP4_VLAN,
                                 ADP_FP_ENTITY_PROTOCOL_VLAN};
  const auto add = [&](std::vector<uint16_t> &list, uint32_t entity) {
    const EntityKind &kind = *entity_kind(entity);
    for (uint32_t place = kind.first; place < kind.first + kind.limit; ++place)
      if (rules.has(place)) list.push_back(static_cast<uint16_t>(place));
  };
  to.classifiers.clear();
  to.double_tags.clear();
  for (const uint32_t entity : kOrder) add(to.classifiers, entity);
  add(to.double_tags, ADP_FP_ENTITY_DOUBLE_TAG);
}

}  // namespace vchip
