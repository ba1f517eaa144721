// SPDX-License-Identifier: MIT
// Where a destination is, and where frames to unknown ones go.
#include <swctl/platform/sdk.h>

#include "switch.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::Left;
using frames::Maker;
using frames::mask;
using frames::plain;
using frames::station;

// Ports 1 to 7 are in VLAN 1.
class Lookup : public frames::Switch {
 protected:
  static constexpr uint32_t kMembers = mask({1, 2, 3, 4, 5, 6, 7});
  static constexpr uint32_t kOthers = mask({2, 3, 4, 5, 6, 7});
  static constexpr uint32_t kGroup4 = 0xe1010203;
  static constexpr uint64_t kMac4 = 0x01005e010203;
  static constexpr uint64_t kMac6 = 0x333300010203;
  static constexpr uint64_t kOther = 0x010000000001;
  static constexpr uint32_t kSource = 0x0a000001;
  static constexpr uint32_t kForwardIt = 0;
  static constexpr uint32_t kDropIt = 1;
  static constexpr uint32_t kToCpu = 2;
  static constexpr uint32_t kCopyIt = 3;

  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, kMembers, kMembers);
  }
  static Bytes ip4(uint32_t group = kGroup4, uint32_t source = kSource, uint64_t to = kMac4) {
    return Maker(to, station(1)).type(0x0800).ip4(17, source, group, 20).bytes();
  }
  static Bytes ip6(uint32_t group = 9, uint32_t source = 1) {
    Maker maker(kMac6, station(1));
    maker.type(0x86dd).word(0x60000000).half(0).byte(59).byte(1);
    for (const auto &[first, last] : {std::pair{0xfeu, source}, std::pair{0xffu, group}})
      for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 0 ? first : at == 15 ? last : 0);
    return maker.bytes();
  }
  static Bytes to(uint64_t address) { return plain(address, station(1)); }
  static void add4(uint32_t source, uint32_t ports, uint16_t vid = 1) {
    chip_ip_mcast_entry entry = {};
    entry.vid = vid;
    entry.address_a = source;
    entry.address_b = kGroup4;
    entry.ports = ports;
    ASSERT_EQ(rtk_l2_ipMcastAddr_add(0, &entry), 0);
  }
  static void add6(uint8_t source, uint32_t ports) {
    chip_ip6_mcast_entry entry = {};
    entry.vid = 1;
    entry.address_b.bytes[0] = 0xff;
    entry.address_b.bytes[15] = 9;
    if (source != 0) entry.address_a.bytes[0] = 0xfe;
    entry.address_a.bytes[15] = source;
    entry.ports = ports;
    ASSERT_EQ(rtk_l2_ip6McastAddr_add(0, &entry), 0);
  }
  static void modes(uint32_t mode) {
    ASSERT_EQ(rtk_l2_ipmcMode_set(0, mode), 0);
    ASSERT_EQ(rtk_l2_ip6mcMode_set(0, mode), 0);
  }
  static void flood_to(uint32_t type, uint32_t index, uint32_t ports) {
    ASSERT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, type, index, &ports), 0);
    ASSERT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, type, index), 0);
  }
};

TEST_F(Lookup, KnownUnicastGoesToItsPort) {
  bind(station(5), 5);
  EXPECT_EQ(out(1, to(station(5))), mask({5}));
  EXPECT_EQ(out(1, to(station(6))), kOthers);
  EXPECT_EQ(out(5, plain(station(5), station(9))), 0u) << "its own port";
  EXPECT_EQ(drops(5).egress, 1u);
  make_vlan(20, kMembers);
  EXPECT_EQ(out(1, Maker(station(5), station(1)).tag(20).type(0x88b5).bytes()), kOthers)
      << "known in another VLAN";
}

TEST_F(Lookup, AnEntryMayDropWhatIsSentToIt) {
  bind(station(5), 5, 8 | 4);
  EXPECT_EQ(out(1, to(station(5))), 0u);
  EXPECT_EQ(drops(1).lookup, 1u);
  EXPECT_TRUE(is_known(station(1)));
  EXPECT_EQ(out(5, plain(kBroadcast, station(5))), kMembers & ~mask({5})) << "what it sends passes";
}

TEST_F(Lookup, AGroupIsOfAnAddressInAVlan) {
  join(kOther, mask({1, 3, 9}));
  EXPECT_EQ(out(1, to(kOther)), mask({3})) << "members of the VLAN, not where it came from";
  EXPECT_EQ(out(1, to(kOther + 1)), kOthers);
  make_vlan(20, kMembers);
  EXPECT_EQ(out(1, Maker(kOther, station(1)).tag(20).type(0x88b5).bytes()), kOthers);
  join(kBroadcast, mask({4}));
  EXPECT_EQ(out(1, to(kBroadcast)), mask({4}));
}

TEST_F(Lookup, EachTypeOfMissHasItsMask) {
  for (uint32_t type = 0; type < 6; ++type)
    flood_to(type, type + 1, mask({1, 2 + static_cast<int>(type), 9}));
  for (const uint32_t mode : {0u, 1u}) {
    modes(mode);
    EXPECT_EQ(out(1, ip4()), mask({2}));
    EXPECT_EQ(out(1, ip6()), mask({3}));
    EXPECT_EQ(out(1, to(station(9))), mask({4}));
    EXPECT_EQ(out(1, to(kOther)), mask({5}));
    EXPECT_EQ(out(1, to(kBroadcast)), mask({6}));
  }
  flood_to(2, 3, mask({9}));
  EXPECT_EQ(out(1, to(station(9))), 0u) << "in the mask and in the VLAN";
  EXPECT_EQ(drops(1).egress, 1u);
}

TEST_F(Lookup, IpMulticastIsByTypeAndPrefix) {
  for (uint32_t type = 0; type < 5; ++type)
    flood_to(type, type + 1, mask({2 + static_cast<int>(type)}));
  EXPECT_EQ(out(1, to(kMac4)), mask({5})) << "another EtherType";
  EXPECT_EQ(out(1, ip4(kGroup4, kSource, 0x01005e7fffff)), mask({2}));
  EXPECT_EQ(out(1, ip4(kGroup4, kSource, 0x01005e800000)), mask({5})) << "another prefix";
  EXPECT_EQ(out(1, to(kMac6)), mask({5}));
  EXPECT_EQ(out(1, ip4(kGroup4, kSource, kMac6)), mask({5}));
  EXPECT_EQ(out(1, ip4(kGroup4, kSource, kBroadcast)), mask({6}));
}

TEST_F(Lookup, ByAddressesFirstWithTheSource) {
  modes(1);
  add4(0, mask({3}));
  add4(kSource, mask({4}));
  EXPECT_EQ(out(1, ip4()), mask({4}));
  EXPECT_EQ(out(1, ip4(kGroup4, kSource + 1)), mask({3})) << "then any source";
  EXPECT_EQ(out(1, ip4(kGroup4 + 1)), kOthers) << "then a miss";
  add6(0, mask({5}));
  add6(1, mask({6}));
  EXPECT_EQ(out(1, ip6()), mask({6}));
  EXPECT_EQ(out(1, ip6(9, 2)), mask({5}));
  EXPECT_EQ(out(1, ip6(8)), kOthers);
  make_vlan(20, kMembers);
  const Bytes tagged =
      Maker(kMac4, station(1)).tag(20).type(0x0800).ip4(17, kSource, kGroup4, 20).bytes();
  EXPECT_EQ(out(1, tagged), kOthers) << "known in another VLAN";
}

TEST_F(Lookup, ByMacTheGroupAlone) {
  modes(0);
  add4(0, mask({3}));
  add6(0, mask({3}));
  EXPECT_EQ(out(1, ip4()), kOthers);
  EXPECT_EQ(out(1, ip6()), kOthers);
  join(kMac4, mask({4}));
  join(kMac6, mask({5}));
  EXPECT_EQ(out(1, ip4()), mask({4}));
  EXPECT_EQ(out(1, ip6()), mask({5}));
  modes(1);
  EXPECT_EQ(out(1, ip4(kGroup4 + 1)), kOthers) << "by addresses no layer-2 group counts";
  EXPECT_EQ(out(1, to(kMac4)), mask({4})) << "of IP multicast alone";
}

TEST_F(Lookup, MissesOfIpMulticastHaveActions) {
  for (const uint32_t mode : {0u, 1u}) {
    modes(mode);
    for (const uint32_t type : {0u, 1u}) {
      const auto act = [&](uint32_t action) {
        ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, 1, type, action), 0);
      };
      const Bytes frame = type == 0 ? ip4() : ip6();
      ASSERT_EQ(vchip_drops_clear(0, 1), 0);
      act(kDropIt);
      EXPECT_EQ(out(1, frame), 0u);
      EXPECT_EQ(drops(1).lookup, 1u);
      act(kToCpu);
      arrive(1, frame);
      const Left sent = only(kCpu);
      EXPECT_EQ(sent.reason, uint32_t{VCHIP_TO_CPU_LOOKUP_MISS});
      EXPECT_EQ(sent.bytes, frame);
      EXPECT_EQ(left(), 0u);
      EXPECT_EQ(drops(1).taken, 1u);
      act(kCopyIt);
      EXPECT_EQ(out(1, frame), kOthers | mask({kCpu}));
      act(kForwardIt);
      EXPECT_EQ(out(1, frame), kOthers);
      act(kDropIt);
      EXPECT_EQ(out(2, frame), kMembers & ~mask({2})) << "another port";
      EXPECT_EQ(out(1, to(kOther)), kOthers) << "another type";
      act(kForwardIt);
    }
  }
}

TEST_F(Lookup, MissesOfTheProcessorHaveThoseOfItsPort) {
  set_vlan(1, kMembers | mask({kCpu}), kMembers | mask({kCpu}));
  ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, 1, 0, kDropIt), 0);
  EXPECT_EQ(out(kCpu, ip4()), kMembers);
  ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, kCpu, 0, kDropIt), 0);
  EXPECT_EQ(out(kCpu, ip4()), 0u);
  EXPECT_EQ(drops(kCpu).lookup, 1u);
}

TEST_F(Lookup, TheOtherMissActionsHaveNoEffect) {
  for (uint32_t type = 2; type < 6; ++type)
    ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, 1, type, kDropIt), 0);
  for (const uint64_t address : {station(9), kOther, kBroadcast})
    EXPECT_EQ(out(1, to(address)), kOthers);
}

TEST_F(Lookup, AKnownGroupMissesNothing) {
  ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, 1, 0, kDropIt), 0);
  join(kMac4, mask({4}));
  EXPECT_EQ(out(1, ip4()), mask({4}));
}

}  // namespace
