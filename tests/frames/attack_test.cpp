// SPDX-License-Identifier: MIT
// Attack types, one by one: what is of a type, what just is not, and that no
// other type drops it.
#include <swctl/platform/sdk.h>

#include "switch.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

constexpr uint32_t kFrom = 0x0a000001;
constexpr uint32_t kTo = 0x0a000002;
constexpr uint32_t kMore = 0x2000;  // fragments follow

// TCP with flags and ports, in the bytes of a header.
Maker &tcp(Maker &maker, uint32_t flags, uint32_t from = 2000, uint32_t to = 3000) {
  return maker.half(from).half(to).word(1).word(0).byte(0x50).byte(flags).half(1000).word(0);
}
Bytes tcp4(uint32_t flags, uint32_t from = 2000, uint32_t to = 3000) {
  Maker maker(kBroadcast, station(1));
  maker.type(0x0800).ip4(6, kFrom, kTo, 20);
  return tcp(maker, flags, from, to).bytes();
}
Maker ip6(uint32_t next, uint32_t payload, uint32_t from = 1, uint32_t to = 2,
          uint32_t first = 0xfe) {
  Maker maker(kBroadcast, station(1));
  maker.type(0x86dd).word(0x60000000).half(payload).byte(next).byte(64);
  for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 0 ? first : at == 15 ? from : 0);
  for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 0 ? 0xfe : at == 15 ? to : 0);
  return maker;
}
Bytes tcp6(uint32_t flags, uint32_t from = 2000, uint32_t to = 3000) {
  Maker maker = ip6(6, 20);
  return tcp(maker, flags, from, to).bytes();
}
Bytes ip4(uint32_t protocol, uint32_t payload, uint32_t fragment = 0, uint32_t from = kFrom,
          uint32_t to = kTo) {
  Maker maker(kBroadcast, station(1));
  maker.type(0x0800).ip4(protocol, from, to, payload, 0, fragment);
  return maker.fill(34 + payload, 0x55).bytes();
}
// The same, of which most was cut off.
Bytes ip4_cut(uint32_t protocol, uint32_t payload, uint32_t fragment) {
  Bytes frame = ip4(protocol, payload, fragment);
  frame.resize(60);
  return frame;
}
Bytes echo(uint32_t data, uint32_t type = 8, uint32_t to = kTo) {
  Maker maker(kBroadcast, station(1));
  maker.type(0x0800).ip4(1, kFrom, to, 8 + data).byte(type);
  return maker.fill(34 + 8 + data).bytes();
}
Bytes udp(uint32_t length, uint32_t fragment = 0, uint32_t from = 2000, uint32_t to = 3000) {
  Maker maker(kBroadcast, station(1));
  maker.type(0x0800).ip4(17, kFrom, kTo, 28, 0, fragment);
  return maker.half(from).half(to).half(length).half(0).fill(62).bytes();
}
Bytes udp6(uint32_t length, uint32_t from = 2000, uint32_t to = 3000) {
  Maker maker = ip6(17, 28);
  return maker.half(from).half(to).half(length).half(0).fill(82).bytes();
}
Bytes arp(uint64_t sender) {
  Maker maker(kBroadcast, station(1));
  maker.type(0x0806).word(0x00010800).half(0x0604).half(1);
  maker.half(static_cast<uint32_t>(sender >> 32)).word(static_cast<uint32_t>(sender));
  return maker.word(kFrom).bytes();
}

struct AttackCase {
  const char *name;
  uint32_t type;
  bool is_one;
  Bytes frame;
};

const std::vector<AttackCase> &attack_cases() {
  static const std::vector<AttackCase> cases = {
      {"SameIp4", 0, true, ip4(17, 20, 0, kFrom, kFrom)},
      {"SameIp6", 0, true, ip6(59, 0, 7, 7).bytes()},
      {"OtherIp6", 0, false, ip6(59, 0, 7, 8).bytes()},
      {"SameMac", 1, true, plain(station(1), station(1))},
      {"OtherMac", 1, false, plain(station(2), station(1))},
      {"SynFin", 2, true, tcp4(0x03)},
      {"SynFinAck", 2, true, tcp4(0x13)},
      {"SynFin6", 2, true, tcp6(0x03)},
      {"Syn", 2, false, tcp4(0x02)},
      {"NoFlags", 3, true, tcp4(0)},
      {"NoFlags6", 3, true, tcp6(0)},
      {"Ack", 3, false, tcp4(0x10)},
      {"Xmas", 4, true, tcp4(0x29)},
      {"Xmas6", 4, true, tcp6(0x29)},
      {"NoUrgent", 4, false, tcp4(0x09)},
      {"LowPort", 5, true, tcp4(0x02, 1023)},
      {"LowPort6", 5, true, tcp6(0x02, 1023)},
      {"LowPortAck", 5, false, tcp4(0x12, 1023)},
      {"HighPort", 5, false, tcp4(0x02, 1024)},
      {"SamePortsTcp", 6, true, tcp4(0x10, 2000, 2000)},
      {"SamePortsUdp", 6, true, udp(28, 0, 2000, 2000)},
      {"SamePortsUdp6", 6, true, udp6(28, 2000, 2000)},
      {"OtherPorts", 6, false, udp(28, 0, 2000, 2001)},
      {"IcmpFirst", 7, true, ip4(1, 24, kMore)},
      {"IcmpLater", 7, true, ip4(1, 24, 3)},
      {"IcmpWhole", 7, false, ip4(1, 24)},
      {"Death", 8, true, ip4_cut(17, 16, 8191)},
      {"JustNoDeath", 8, false, ip4_cut(17, 7, 8191)},
      {"TinyTcp", 9, true, ip4(6, 19, kMore)},
      {"WholeTcpHeader", 9, false,
       [] {
         Maker maker(kBroadcast, station(1));
         maker.type(0x0800).ip4(6, kFrom, kTo, 20, 0, kMore);
         return tcp(maker, 0x10).bytes();
       }()},
      {"TinyLater", 9, false, ip4(6, 19, 5)},
      {"TcpAtOne", 10, true, ip4(6, 24, 1)},
      {"TcpAtTwo", 10, false, ip4(6, 24, 2)},
      {"UdpAtOne", 10, false, ip4(17, 24, 1)},
      {"FromMulticast", 11, true, ip4(17, 20, 0, 0xe0000001)},
      {"FromBroadcast", 11, true, ip4(17, 20, 0, 0xffffffff)},
      {"FromMulticast6", 11, true, ip6(59, 0, 1, 2, 0xff).bytes()},
      {"FromUnicast6", 11, false, ip6(59, 0).bytes()},
      {"LargeEcho", 12, true, echo(513)},
      {"Echo", 12, false, echo(512)},
      {"LargeReply", 12, false, echo(513, 0)},
      {"EchoToMulticast", 13, true, echo(20, 8, 0xe0000001)},
      {"EchoToBroadcast", 13, true, echo(20, 8, 0xffffffff)},
      {"EchoToOne", 13, false, echo(20)},
      {"LongUdp", 14, true, udp(29)},
      {"LongUdp6", 14, true, udp6(29)},
      {"FittingUdp", 14, false, udp(28)},
      {"LongUdpFragment", 14, false, udp(29, kMore)},
      {"ForeignArp", 15, true, arp(station(2))},
      {"OwnArp", 15, false, arp(station(1))},
  };
  return cases;
}

class Attack : public frames::Switch, public testing::WithParamInterface<AttackCase> {
 protected:
  void SetUp() override {
    Switch::SetUp();
    ASSERT_EQ(rtk_sec_portAttackPreventEnable_set(0, 1, 1), 0);
  }
  static void drop(uint32_t type, uint32_t action) {
    ASSERT_EQ(rtk_sec_attackPreventAction_set(0, type, action), 0);
  }
};

// A tag in front changes nothing.
Bytes with_tag(const Bytes &frame) {
  Bytes all(frame.begin(), frame.begin() + 12);
  const Bytes tag = {0x81, 0, 0, 1};
  all.insert(all.end(), tag.begin(), tag.end());
  all.insert(all.end(), frame.begin() + 12, frame.end());
  return all;
}

TEST_P(Attack, IsDroppedByItsTypeAlone) {
  const AttackCase &attack = GetParam();
  for (const Bytes &frame : {attack.frame, with_tag(attack.frame)}) {
    ASSERT_EQ(vchip_drops_clear(0, 1), 0);
    drop(attack.type, 1);
    arrive(1, frame);
    EXPECT_EQ(drops(1).attack, attack.is_one ? 1u : 0u);
    EXPECT_EQ(is_known(station(1)), !attack.is_one) << "an attack is not learned";
    drop(attack.type, 0);
    arrive(1, frame);
    EXPECT_EQ(drops(1).attack, attack.is_one ? 1u : 0u) << "its action is to forward";
    drop(attack.type, 1);
    arrive(2, frame);
    EXPECT_EQ(drops(2).attack, 0u) << "a port that is not protected";
    ASSERT_EQ(rtk_l2_addr_del(0, 1, Bytes{2, 0, 0, 0, 0, 1}.data()), 0);
  }
}

TEST_P(Attack, WhatIsAlmostOneIsOfNoType) {
  const AttackCase &attack = GetParam();
  if (attack.is_one) return;
  for (uint32_t type = 0; type < 16; ++type) drop(type, 1);
  arrive(1, attack.frame);
  EXPECT_EQ(drops(1).attack, 0u);
}

INSTANTIATE_TEST_SUITE_P(Types, Attack, testing::ValuesIn(attack_cases()),
                         [](const auto &each) { return std::string(each.param.name); });

}  // namespace
