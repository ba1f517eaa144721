// SPDX-License-Identifier: MIT
// Frames that are meant for the processor: each kind with each action, from
// forwarding and blocked ports.
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

constexpr uint32_t kForwardIt = 0;
constexpr uint32_t kDropIt = 1;
constexpr uint32_t kToCpu = 2;
constexpr uint32_t kCopyIt = 3;

struct TrapKind {
  const char *name;
  uint64_t to;
  uint32_t type;     // EtherType, or a length
  uint32_t payload;  // first two bytes after it
  int32_t (*set)(uint32_t action);
  uint32_t reason;
  bool past_state;
  bool past_filter;
};

int32_t set_bpdu(uint32_t action) {
  return rtk_trap_portMgmtFrameAction_set(0, 1, 19, action);
}
int32_t set_lldp(uint32_t action) {
  return rtk_trap_portMgmtFrameAction_set(0, 1, 21, action);
}
template <uint32_t group>
int32_t set_group(uint32_t action) {
  return rtk_trap_rmaGroupAction_set(0, group, action);
}

constexpr uint64_t kReserved = 0x0180c2000000;

const TrapKind kTrapKinds[] = {
    {"Bpdu", kReserved, 38, 0x4242, set_bpdu, VCHIP_TO_CPU_BPDU, true, true},
    {"ProviderBpdu", kReserved + 8, 38, 0x4242, set_bpdu, VCHIP_TO_CPU_BPDU, true, true},
    {"Lldp", kReserved + 0xe, 0x88cc, 0x0207, set_lldp, VCHIP_TO_CPU_LLDP, true, true},
    {"LldpToNonTpmr", kReserved + 3, 0x88cc, 0x0207, set_lldp, VCHIP_TO_CPU_LLDP, true, true},
    {"LldpToBridges", kReserved, 0x88cc, 0x0207, set_lldp, VCHIP_TO_CPU_LLDP, true, true},
    {"Eapol", kReserved + 3, 0x888e, 0x0100, set_group<2>, VCHIP_TO_CPU_EAPOL, true, true},
    {"Lacp", kReserved + 2, 0x8809, 0x0101, set_group<1>, VCHIP_TO_CPU_LACP, false, true},
    {"Marker", kReserved + 2, 0x8809, 0x0201, set_group<1>, VCHIP_TO_CPU_LACP, false, true},
    {"Oam", kReserved + 2, 0x8809, 0x0301, set_group<0>, VCHIP_TO_CPU_OAM, false, true},
    {"AnotherSlowProtocol", kReserved + 2, 0x8809, 0x0a01, set_group<2>, VCHIP_TO_CPU_RESERVED,
     false, true},
    {"Reserved02", kReserved + 2, 0x88b5, 0, set_group<2>, VCHIP_TO_CPU_RESERVED, false, false},
    {"Reserved03", kReserved + 3, 0x88b5, 0, set_group<2>, VCHIP_TO_CPU_RESERVED, false, false},
    {"Reserved0e", kReserved + 0xe, 0x88b5, 0, set_group<2>, VCHIP_TO_CPU_RESERVED, false, false},
    {"Reserved0f", kReserved + 0xf, 0x88b5, 0, set_group<2>, VCHIP_TO_CPU_RESERVED, false, false},
    {"Garp20", kReserved + 0x20, 38, 0x4242, set_group<3>, VCHIP_TO_CPU_RESERVED, false, false},
    {"Garp2f", kReserved + 0x2f, 38, 0x4242, set_group<3>, VCHIP_TO_CPU_RESERVED, false, false},
};

class ReservedTrap : public frames::Switch, public testing::WithParamInterface<TrapKind> {
 protected:
  // VLAN 1 has ports 1 to 3, and not the processor.
  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, mask({1, 2, 3}), mask({1, 2, 3}));
    // Whatever the others would do, it is not done to this kind.
    for (uint32_t group = 0; group < 4; ++group)
      ASSERT_EQ(rtk_trap_rmaGroupAction_set(0, group, kDropIt), 0);
  }
  static Bytes frame() {
    return Maker(GetParam().to, station(1)).type(GetParam().type).half(GetParam().payload).bytes();
  }
  static void act(uint32_t action) { ASSERT_EQ(GetParam().set(action), 0); }
  static void block(uint32_t state) { ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 1, state), 0); }
};

TEST_P(ReservedTrap, IsForwardedAsAnyMulticast) {
  act(kForwardIt);
  EXPECT_EQ(out(1, frame()), mask({2, 3}));
  EXPECT_TRUE(is_known(station(1)));
  join(GetParam().to, mask({3}));
  EXPECT_EQ(out(1, frame()), mask({3})) << "to its group if there is one";
}

TEST_P(ReservedTrap, IsDropped) {
  act(kDropIt);
  EXPECT_EQ(out(1, frame()), 0u);
  EXPECT_EQ(drops(1).trap, 1u);
  EXPECT_FALSE(is_known(station(1)));
}

TEST_P(ReservedTrap, GoesToTheProcessorAlone) {
  act(kToCpu);
  arrive(1, frame());
  const Left sent = only(kCpu);
  EXPECT_EQ(sent.bytes, frame());
  EXPECT_EQ(sent.reason, GetParam().reason);
  EXPECT_EQ(sent.port_in, 1);
  EXPECT_EQ(left(), 0u);
  EXPECT_EQ(drops(1).taken, 1u);
  EXPECT_FALSE(is_known(station(1)));
}

TEST_P(ReservedTrap, IsCopied) {
  act(kCopyIt);
  arrive(1, frame());
  const Left sent = only(kCpu);
  EXPECT_EQ(sent.reason, GetParam().reason);
  EXPECT_EQ(left(), mask({2, 3}));
  EXPECT_EQ(drops(1).taken, 0u) << "a copy is not taken";
  EXPECT_EQ(drops(1).forwarded, 1u);
  EXPECT_TRUE(is_known(station(1)));
}

TEST_P(ReservedTrap, FromABlockedPort) {
  for (const uint32_t state : {0u, 1u, 2u}) {
    ASSERT_EQ(vchip_drops_clear(0, 1), 0);
    block(state);
    act(kToCpu);
    EXPECT_EQ(out(1, frame()), GetParam().past_state ? mask({kCpu}) : 0u);
    act(kCopyIt);
    EXPECT_EQ(out(1, frame()), GetParam().past_state ? mask({kCpu}) : 0u);
    act(kForwardIt);
    EXPECT_EQ(out(1, frame()), 0u) << "nothing is forwarded from one";
    EXPECT_EQ(drops(1).state, GetParam().past_state ? 2u : 3u);
    EXPECT_EQ(is_known(station(1)), state == 2) << "a learning port learns";
  }
}

TEST_P(ReservedTrap, FromAPortThatIsNoMember) {
  set_vlan(1, mask({2, 3}), mask({2, 3}));
  ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, 1, 1), 0);
  const bool past = GetParam().past_filter;
  act(kToCpu);
  EXPECT_EQ(out(1, frame()), past ? mask({kCpu}) : 0u);
  act(kDropIt);
  EXPECT_EQ(out(1, frame()), 0u);
  EXPECT_EQ(drops(1).trap, past ? 1u : 0u);
  for (const uint32_t action : {kForwardIt, kCopyIt}) {
    act(action);
    EXPECT_EQ(out(1, frame()), 0u) << "the filter holds";
  }
  EXPECT_EQ(drops(1).filter, past ? 2u : 4u);
}

TEST_P(ReservedTrap, InAVlanThatDoesNotExist) {
  ASSERT_EQ(rtk_vlan_destroy(0, 1), 0);
  act(kToCpu);
  EXPECT_EQ(out(1, frame()), GetParam().past_filter ? mask({kCpu}) : 0u);
}

TEST_P(ReservedTrap, IsNoneOfTheProcessors) {
  set_vlan(1, mask({1, 2, 3, kCpu}), mask({1, 2, 3, kCpu}));
  act(kToCpu);
  EXPECT_EQ(out(kCpu, frame()), mask({1, 2, 3}));
}

INSTANTIATE_TEST_SUITE_P(Kinds, ReservedTrap, testing::ValuesIn(kTrapKinds),
                         [](const auto &each) { return std::string(each.param.name); });

class Traps : public frames::Switch {
 protected:
  void SetUp() override {
    Switch::SetUp();
    set_vlan(1, mask({1, 2, 3}), mask({1, 2, 3}));
  }
  static void group(uint32_t number, uint32_t action) {
    ASSERT_EQ(rtk_trap_rmaGroupAction_set(0, number, action), 0);
  }
  static void type(uint32_t number, uint32_t action) {
    ASSERT_EQ(rtk_trap_mgmtFrameAction_set(0, number, action), 0);
  }
  static void state(uint32_t state) { ASSERT_EQ(rtk_stp_mstpState_set(0, 0, 1, state), 0); }
  static Bytes slow(uint32_t subtype) {
    return Maker(kReserved + 2, station(1)).type(0x8809).byte(subtype).bytes();
  }
  static Bytes igmp(uint32_t tags = 0) {
    Maker maker(0x01005e000016, station(1));
    if (tags != 0) maker.tag(1, 3);
    return maker.type(0x0800).ip4(2, 0x0a000001, 0xe0000016, 16).bytes();
  }
  // With a hop-by-hop header in front, as MLD has it.
  static Bytes mld(uint32_t message, bool hop_by_hop = true) {
    Maker maker(0x333300000016, station(1));
    maker.type(0x86dd).word(0x60000000).half(hop_by_hop ? 16 : 8).byte(hop_by_hop ? 0 : 58).byte(1);
    for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 15 ? 1 : 0xfe);
    for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 0 ? 0xff : at);
    if (hop_by_hop) maker.byte(58).byte(0).half(0x0502).word(0);
    return maker.byte(message).byte(0).half(0).word(0).bytes();
  }
};

TEST_F(Traps, TenAndBeyondAreOrdinary) {
  for (uint32_t number = 0; number < 4; ++number) group(number, kDropIt);
  for (const uint32_t offset : {0x10u, 0x1fu, 0x30u, 0xffu})
    EXPECT_EQ(out(1, plain(kReserved + offset, station(1))), mask({2, 3})) << offset;
  EXPECT_EQ(out(1, plain(0x0180c2010002, station(1))), mask({2, 3}));
}

TEST_F(Traps, SlowProtocolsPassABlockedPortByBypass6Alone) {
  group(0, kToCpu);
  group(1, kToCpu);
  group(2, kToCpu);
  state(1);
  for (uint32_t bypass = 0; bypass < 8; ++bypass) {
    ASSERT_EQ(rtk_trap_bypassStp_set(0, bypass, 1), 0);
    for (const uint32_t subtype : {1u, 2u, 3u})
      EXPECT_EQ(out(1, slow(subtype)), bypass == 6 ? mask({kCpu}) : 0u) << bypass;
    EXPECT_EQ(out(1, slow(10)), 0u) << "no subtype of group 0 or 1";
    ASSERT_EQ(rtk_trap_bypassStp_set(0, bypass, 0), 0);
  }
}

TEST_F(Traps, ABpduIsOneTaggedToo) {
  ASSERT_EQ(set_bpdu(kToCpu), 0);
  const Bytes tagged = Maker(kReserved, station(1)).tag(7, 6).half(38).half(0x4242).bytes();
  EXPECT_EQ(through(1, tagged, kCpu), tagged) << "as received, whatever its VLAN";
  const Bytes last = Maker(kReserved, station(1)).tag(4095).half(38).half(0x4242).bytes();
  EXPECT_EQ(out(1, last), mask({kCpu}));
  ASSERT_EQ(set_bpdu(kCopyIt), 0);
  EXPECT_EQ(out(1, last), 0u);
  EXPECT_EQ(drops(1).vlan, 1u);
}

TEST_F(Traps, TheOthersAreSuchUntaggedOnly) {
  group(0, kToCpu);
  group(1, kToCpu);
  group(2, kForwardIt);
  ASSERT_EQ(set_lldp(kToCpu), 0);
  const auto tagged = [](uint32_t offset, uint32_t type) {
    return Maker(kReserved + offset, station(1)).tag(1).type(type).byte(1).bytes();
  };
  EXPECT_EQ(out(1, tagged(0xe, 0x88cc)), mask({2, 3}));
  EXPECT_EQ(out(1, tagged(2, 0x8809)), mask({2, 3}));
  group(2, kToCpu);
  state(1);
  EXPECT_EQ(out(1, tagged(3, 0x888e)), 0u) << "a reserved address, after the state";
}

TEST_F(Traps, LldpDecidesInsteadOfItsAddress) {
  group(2, kDropIt);
  ASSERT_EQ(set_bpdu(kDropIt), 0);
  ASSERT_EQ(set_lldp(kForwardIt), 0);
  for (const uint32_t offset : {0u, 3u, 0xeu})
    EXPECT_EQ(out(1, Maker(kReserved + offset, station(1)).type(0x88cc).bytes()), mask({2, 3}));
  EXPECT_EQ(out(1, Maker(kReserved + 5, station(1)).type(0x88cc).bytes()), 0u)
      << "at none of its addresses";
}

TEST_F(Traps, BpduAndLldpAreSetByPort) {
  ASSERT_EQ(set_bpdu(kToCpu), 0);
  const Bytes frame = Maker(kReserved, station(1)).half(38).bytes();
  EXPECT_EQ(out(1, frame), mask({kCpu}));
  EXPECT_EQ(out(2, frame), 0u) << "dropped after power-on";
}

TEST_F(Traps, IgmpWithEachAction) {
  type(5, kForwardIt);
  EXPECT_EQ(out(1, igmp()), mask({2, 3}));
  type(5, kDropIt);
  EXPECT_EQ(out(1, igmp()), 0u);
  EXPECT_EQ(drops(1).trap, 1u);
  type(5, kToCpu);
  arrive(1, igmp(1));
  const Left sent = only(kCpu);
  EXPECT_EQ(sent.bytes, igmp(1)) << "as received, tags included";
  EXPECT_EQ(sent.reason, uint32_t{VCHIP_TO_CPU_IGMP});
  EXPECT_EQ(left(), 0u);
  type(5, kCopyIt);
  EXPECT_EQ(out(1, igmp()), mask({2, 3, kCpu}));
}

TEST_F(Traps, MldIsAmongThe255OfIcmp) {
  type(4, kToCpu);
  for (uint32_t message = 0; message < 256; ++message) {
    const bool is_one = (message >= 130 && message <= 132) || message == 143;
    for (const bool hop_by_hop : {false, true})
      EXPECT_EQ(out(1, mld(message, hop_by_hop)), is_one ? mask({kCpu}) : mask({2, 3})) << message;
  }
  arrive(1, mld(143));
  EXPECT_EQ(only(kCpu).reason, uint32_t{VCHIP_TO_CPU_MLD});
}

TEST_F(Traps, OwnAddressIsAnEntryOnTheProcessorsPort) {
  bind(station(5), kCpu);
  set_vlan(1, mask({1, 2, 3, kCpu}), mask({1, 2, 3, kCpu}));
  const Bytes frame = plain(station(5), station(1));
  type(24, kForwardIt);
  arrive(1, frame);
  EXPECT_EQ(only(kCpu).reason, 0u) << "as the lookup finds";
  type(24, kDropIt);
  EXPECT_EQ(out(1, frame), 0u);
  type(24, kToCpu);
  arrive(1, frame);
  EXPECT_EQ(only(kCpu).reason, uint32_t{VCHIP_TO_CPU_OWN_ADDRESS});
  type(24, kCopyIt);
  arrive(1, frame);
  EXPECT_EQ(count(kCpu), 2u) << "the copy, and its own as a member";
}

TEST_F(Traps, ProtocolsMeetTheStateAndAreLearned) {
  type(5, kToCpu);
  for (const uint32_t blocked : {0u, 1u, 2u}) {
    state(blocked);
    EXPECT_EQ(out(1, igmp()), 0u);
  }
  EXPECT_EQ(drops(1).state, 3u);
  ASSERT_EQ(rtk_l2_addr_del(0, 1, Bytes{2, 0, 0, 0, 0, 1}.data()), 0);
  state(3);
  for (const uint32_t action : {kDropIt, kToCpu}) {
    type(5, action);
    arrive(1, igmp());
    EXPECT_TRUE(is_known(station(1)));
    ASSERT_EQ(rtk_l2_addr_del(0, 1, Bytes{2, 0, 0, 0, 0, 1}.data()), 0);
  }
}

TEST_F(Traps, ProtocolsComeBeforeTheRestOfLearning) {
  type(5, kToCpu);
  ASSERT_EQ(rtk_l2_newMacOp_set(0, 1, 0, kDropIt), 0);
  EXPECT_EQ(out(1, igmp()), mask({kCpu}));
  bind(station(1), 1, 2);
  EXPECT_EQ(out(1, igmp()), mask({kCpu})) << "a source that is filtered";
  type(5, kForwardIt);
  EXPECT_EQ(out(1, igmp()), 0u);
  EXPECT_EQ(drops(1).learn, 1u);
}

TEST_F(Traps, OfSeveralReasonsTheFirstCounts) {
  type(5, kCopyIt);
  ASSERT_EQ(rtk_l2_newMacOp_set(0, 1, 0, kCopyIt), 0);
  ASSERT_EQ(rtk_l2_portLookupMissAction_set(0, 1, 0, kToCpu), 0);
  set_vlan(1, mask({1, 2, kCpu}), mask({1, 2, kCpu}));
  arrive(1, igmp());
  const Left sent = only(kCpu);
  EXPECT_EQ(sent.reason, uint32_t{VCHIP_TO_CPU_IGMP});
  EXPECT_EQ(left(), 0u) << "to the processor by the miss action, and nowhere else";
  EXPECT_EQ(drops(1).taken, 1u);
}

TEST_F(Traps, TheProcessorsOwnAreNotTrapped) {
  set_vlan(1, mask({1, 2, kCpu}), mask({1, 2, kCpu}));
  type(5, kToCpu);
  EXPECT_EQ(out(kCpu, igmp()), mask({1, 2}));
}

TEST_F(Traps, TypesOfPortsAreNotSetSwitchWide) {
  type(19, kToCpu);
  type(21, kToCpu);
  ASSERT_EQ(set_bpdu(kForwardIt), 0);
  ASSERT_EQ(set_lldp(kForwardIt), 0);
  EXPECT_EQ(out(1, Maker(kReserved, station(1)).half(38).bytes()), mask({2, 3}));
  EXPECT_EQ(out(1, Maker(kReserved + 0xe, station(1)).type(0x88cc).bytes()), mask({2, 3}));
  for (uint32_t number = 0; number < 32; ++number) {
    if (number == 19 || number == 21) continue;
    ASSERT_EQ(rtk_trap_portMgmtFrameAction_set(0, 1, number, kDropIt), 0);
  }
  type(5, kForwardIt);
  EXPECT_EQ(out(1, igmp()), mask({2, 3})) << "nor the others by port";
}

TEST_F(Traps, NoOtherTypeHasAnEffect) {
  for (uint32_t number = 0; number < 32; ++number) {
    if (number == 4 || number == 5 || number == 24) continue;
    for (const uint32_t action : {kDropIt, kToCpu}) {
      type(number, action);
      EXPECT_EQ(out(1, plain(kBroadcast, station(1))), mask({2, 3})) << number;
    }
  }
}

}  // namespace
