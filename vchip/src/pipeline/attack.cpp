// SPDX-License-Identifier: MIT
// Frames that no honest sender makes.
#include "pipeline/steps.h"
#include "pipeline/words.h"
#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kFin = 0x01;
constexpr uint32_t kSyn = 0x02;
constexpr uint32_t kPush = 0x08;
constexpr uint32_t kAck = 0x10;
constexpr uint32_t kUrgent = 0x20;
constexpr uint32_t kAllFlags = 0x3f;
constexpr uint32_t kXmas = kFin | kUrgent | kPush;
constexpr uint32_t kFlagsAt = 13;
constexpr uint32_t kTcpBytes = 20;
constexpr uint32_t kUdpBytes = 8;
constexpr uint32_t kPortPairBytes = 4;
constexpr uint32_t kIcmpBytes = 8;
constexpr uint32_t kEchoRequest = 8;
constexpr uint32_t kMaxEchoData = 512;
constexpr uint32_t kFirstFreePort = 1024;
constexpr uint32_t kMaxPacket = 65535;
constexpr uint32_t kIp6HeaderBytes = 40;

// A frame that is looked at for attacks.
struct Suspect {
  const Way &way;
  const Layers &layers;
  const uint8_t *network;
  const uint8_t *transport;

  bool tcp_flags() const { return layers.is(kProtocolTcp, kFlagsAt + 1); }
  uint32_t flags() const { return transport[kFlagsAt] & kAllFlags; }
  bool ports() const {
    return layers.is(kProtocolTcp, kPortPairBytes) || layers.is(kProtocolUdp, kPortPairBytes);
  }
  // After the header of the network, as that says.
  uint32_t payload() const {
    if (layers.ip4) {
      const uint32_t header = (network[0] & 0xfu) * 4;
      const uint32_t total = half_at(network + 2);
      return total > header ? total - header : 0;
    }
    const uint32_t extensions = layers.transport_at - layers.at - kIp6HeaderBytes;
    const uint32_t length = half_at(network + 4);
    return length > extensions ? length - extensions : 0;
  }
  bool icmp() const { return layers.ip4 && layers.protocol == kProtocolIcmp; }
  bool echo() const { return icmp() && layers.has_transport(1) && transport[0] == kEchoRequest; }
  bool tcp4() const { return layers.ip4 && layers.protocol == kProtocolTcp; }
};

bool is_group_or_broadcast(uint32_t address) {
  return address >> 28 == 0xe || address == UINT32_MAX;
}

bool same_addresses(const Suspect &s) {
  if (s.layers.ip4) return word_at(s.network + 12) == word_at(s.network + 16);
  return s.layers.ip6 && memcmp(s.network + 8, s.network + 24, 16) == 0;
}
bool source_is_destination(const Suspect &s) {
  return s.way.source == s.way.destination;
}
bool syn_and_fin(const Suspect &s) {
  return s.tcp_flags() && (s.flags() & (kSyn | kFin)) == (kSyn | kFin);
}
bool no_flags(const Suspect &s) {
  return s.tcp_flags() && s.flags() == 0;
}
bool xmas(const Suspect &s) {
  return s.tcp_flags() && (s.flags() & kXmas) == kXmas;
}
bool syn_from_low_port(const Suspect &s) {
  return s.tcp_flags() && (s.flags() & (kSyn | kAck)) == kSyn &&
         half_at(s.transport) < kFirstFreePort;
}
bool same_ports(const Suspect &s) {
  return s.ports() && half_at(s.transport) == half_at(s.transport + 2);
}
bool icmp_fragment(const Suspect &s) {
  return s.icmp() && s.layers.fragment;
}
bool packet_of_death(const Suspect &s) {
  return s.layers.ip4 && s.layers.fragment && s.layers.fragment_offset + s.payload() > kMaxPacket;
}
bool tiny_fragment(const Suspect &s) {
  return s.tcp4() && s.layers.fragment && !s.layers.later_fragment && s.payload() < kTcpBytes;
}
bool fragment_at_one(const Suspect &s) {
  return s.tcp4() && s.layers.fragment_offset == 8;
}
bool group_source(const Suspect &s) {
  if (s.layers.ip4) return is_group_or_broadcast(word_at(s.network + 12));
  return s.layers.ip6 && s.network[8] == 0xff;
}
bool large_echo(const Suspect &s) {
  return s.echo() && s.payload() > kIcmpBytes + kMaxEchoData;
}
bool echo_to_all(const Suspect &s) {
  return s.echo() && is_group_or_broadcast(word_at(s.network + 16));
}
bool long_udp(const Suspect &s) {
  return s.layers.is(kProtocolUdp, kUdpBytes) && !s.layers.fragment &&
         half_at(s.transport + 4) > s.payload();
}
bool foreign_arp(const Suspect &s) {
  constexpr uint32_t kSenderAt = 8;
  return s.layers.type == kTypeArp && s.layers.at + kSenderAt + kMacBytes <= s.way.frame.length &&
         address_at(s.network + kSenderAt) != s.way.source;
}

struct Attack {
  bool (*is_it)(const Suspect &);
  const char *name;
};
constexpr Attack kAttacks[kAttackTypes] = {
    {same_addresses, "source and destination IP are equal"},
    {source_is_destination, "source and destination MAC are equal"},
    {syn_and_fin, "TCP with SYN and FIN"},
    {no_flags, "TCP without a flag"},
    {xmas, "TCP with FIN, URG and PSH"},
    {syn_from_low_port, "a TCP SYN from a port below 1024"},
    {same_ports, "source and destination port are equal"},
    {icmp_fragment, "a fragment of ICMP"},
    {packet_of_death, "a fragment beyond 65,535 bytes"},
    {tiny_fragment, "a first fragment with less than a TCP header"},
    {fragment_at_one, "a TCP fragment at offset 1"},
    {group_source, "its source IP is multicast or broadcast"},
    {large_echo, "an ICMP echo request with over 512 bytes"},
    {echo_to_all, "an ICMP echo request to multicast or broadcast"},
    {long_udp, "a UDP length beyond the packet"},
    {foreign_arp, "ARP for another sender than its source"},
};

}  // namespace

Verdict attack_step(Way &way) {
  const AttackBlock &block = way.unit.attack;
  if ((block.protected_ports() & port_bit(way.port)) == 0) return Verdict::go_on;
  const Suspect suspect = {way, way.layers, way.frame.bytes + way.layers.at,
                           way.frame.bytes + way.layers.transport_at};
  for (uint32_t type = 0; type < kAttackTypes; ++type) {
    if (block.actions()[type] == 0 || !kAttacks[type].is_it(suspect)) continue;
    return way.drop("attack", Fate::attack, "rtk_sec_attackPreventAction_set", [&] {
      return "attack type " + number_text(type) + ": " + kAttacks[type].name;
    });
  }
  return way.pass("attack", "rtk_sec_portAttackPreventEnable_set", [] {
    return std::string("protected, and none of the attacks that are dropped");
  });
}

}  // namespace vchip
