// SPDX-License-Identifier: MIT
// What the blocks of the ports do: power-on values, which differ from what
// management programs set, and what follows from settings and from outside.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include "os/json.h"
#include "private_chip.h"

namespace {

using PortBlocks = vchip_test::PrivateChip;
using json = os::Json;
using Words = std::vector<uint32_t>;

json block(const char *name) {
  return os::parse_json(vchip::dump_json(-1, {0, name}))["units"][0][name];
}

TEST_F(PortBlocks, PowerOn) {
  const vchip::PortRateView rates = vchip::port_rates(1, 5);
  EXPECT_FALSE(rates.ingress_limited);
  EXPECT_EQ(rates.ingress_rate, 0xfffff);
  EXPECT_FALSE(rates.egress_limited);
  EXPECT_EQ(rates.egress_rate, 0xfffff);
  ASSERT_EQ(rates.storm.size(), 5u);
  EXPECT_FALSE(rates.storm[4].controlled);
  EXPECT_EQ(rates.storm[4].rate, 0xffffffu);
  EXPECT_FALSE(rates.storm[4].exceeded);
  EXPECT_EQ(vchip::forwarding(1, 5).isolation, 0x1fffffffu);
  EXPECT_EQ(vchip::defaults(1).flood_mask_index, Words(6, 0));
  const Words masks = vchip::forward_masks(1);
  ASSERT_EQ(masks.size(), 512u);
  EXPECT_EQ(masks[7], 0x1fffffffu);
  EXPECT_EQ(masks[8], 0u);
  EXPECT_EQ(vchip::tags(1, 5),
            (vchip::PortTagView{1, false, false, {false, false}, {false, false}, 0, 1, 0, 0}));
  EXPECT_EQ(vchip::tpids(1).inner, Words(4, 0x8100));
  EXPECT_EQ(vchip::tpids(1).outer, Words(4, 0x88a8));
  EXPECT_EQ(vchip::attacks(1).protected_ports, 0u);
  EXPECT_EQ(vchip::attacks(1).action, Words(16, 0));
  EXPECT_EQ(vchip::switch_wide(1).max_length, Words(2, 1518));
  EXPECT_EQ(vchip::switch_wide(1).cpu_format, Words(8, 0));
}

// IEEE 802.3 annex 28B.3: what the two ends' two bits come to.
TEST_F(PortBlocks, PauseByTheTable) {
  struct PauseRow {
    unsigned local, partner;  // 2 pause, 1 asymmetric
    bool transmit, receive;
  };
  const PauseRow rows[] = {
      {0, 0, false, false}, {0, 1, false, false}, {0, 2, false, false}, {0, 3, false, false},
      {1, 0, false, false}, {1, 1, false, false}, {1, 2, false, false}, {1, 3, true, false},
      {2, 0, false, false}, {2, 1, false, false}, {2, 2, true, true},   {2, 3, true, true},
      {3, 0, false, false}, {3, 1, false, true},  {3, 2, true, true},   {3, 3, true, true}};
  for (const PauseRow &row : rows) {
    const vchip_partner_t partner = {1, VCHIP_ABILITY_100_FULL | row.partner << 24};
    const uint32_t ability = VCHIP_ABILITY_100_FULL | row.local << 24;
    ASSERT_EQ(vchip_cable_plug(0, 3, &partner), 0);
    ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, 3, &ability), 0);
    uint32_t transmit = 9;
    uint32_t receive = 9;
    ASSERT_EQ(rtk_port_flowctrl_get(0, 3, &transmit, &receive), 0);
    EXPECT_EQ(transmit != 0, row.transmit) << row.local << row.partner;
    EXPECT_EQ(receive != 0, row.receive) << row.local << row.partner;
    EXPECT_EQ(vchip::port(0, 3).pause_transmit, row.transmit);
    EXPECT_EQ(vchip::port(0, 3).pause_receive, row.receive);
  }
}

bool pauses(int32_t port) {
  const vchip::PortView view = vchip::port(0, port);
  EXPECT_EQ(view.pause_transmit, view.pause_receive);
  return view.pause_transmit;
}

TEST_F(PortBlocks, ForcedPauseNeedsNoPartnersWord) {
  const vchip_partner_t partner = {0, VCHIP_ABILITY_100_FULL};
  ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(0, 3, 0), 0);
  ASSERT_EQ(rtk_port_phyForceModeAbility_set(0, 3, 1, 1, 1), 0);
  EXPECT_FALSE(pauses(3)) << "no link";
  ASSERT_EQ(vchip_cable_plug(0, 3, &partner), 0);
  EXPECT_TRUE(pauses(3));
  ASSERT_EQ(rtk_port_phyForceModeAbility_set(0, 3, 1, 0, 1), 0);
  EXPECT_FALSE(pauses(3)) << "half duplex";
}

TEST_F(PortBlocks, PartnersThatDoNotNegotiateAgreeOnNothing) {
  const vchip_partner_t partner = {0, VCHIP_ABILITY_100_FULL | VCHIP_ABILITY_PAUSE};
  ASSERT_EQ(vchip_cable_plug(0, 24, &partner), 0);
  ASSERT_EQ(vchip_medium_set(0, 24, 1), 0);
  EXPECT_EQ(vchip::port(0, 24).duplex, 1u);
  EXPECT_FALSE(pauses(24));
}

TEST_F(PortBlocks, FlowControlSetsBothWaysOfAgreeing) {
  ASSERT_EQ(rtk_port_flowCtrlEnable_set(0, 3, 1), 0);
  EXPECT_EQ(vchip::port(0, 3).advertised, VCHIP_ABILITY_USUAL | 0x03000000u);
  EXPECT_EQ(vchip::port(0, 3).forced_flow_control, 1u);
  ASSERT_EQ(rtk_port_flowCtrlEnable_set(0, 3, 0), 0);
  EXPECT_EQ(vchip::port(0, 3).advertised, VCHIP_ABILITY_USUAL & ~0x03000000u);
  EXPECT_EQ(vchip::port(0, 3).forced_flow_control, 0u);
}

TEST_F(PortBlocks, StormWordsAreOnTheirOwn) {
  ASSERT_EQ(rtk_rate_stormControlEnable_set(0, 3, 2, 1), 0);
  ASSERT_EQ(rtk_rate_stormControlTypeSel_set(0, 3, 3, 1), 0);
  ASSERT_EQ(rtk_rate_stormControlRate_set(0, 3, 4, 77), 0);
  ASSERT_EQ(vchip_storm_exceed(0, 3, 1), 0);
  EXPECT_EQ(block("rate")["ports"][3]["storm"], os::parse_json(R"([
    {"controlled":false,"selection":0,"rate":16777215,"exceeded":false},
    {"controlled":false,"selection":0,"rate":16777215,"exceeded":true},
    {"controlled":true,"selection":0,"rate":16777215,"exceeded":false},
    {"controlled":false,"selection":1,"rate":16777215,"exceeded":false},
    {"controlled":false,"selection":0,"rate":77,"exceeded":false}])"));
  uint32_t word = 9;
  EXPECT_EQ(rtk_rate_stormControlTypeSel_get(0, 3, 3, &word), 0);
  EXPECT_EQ(word, 1u);
  EXPECT_EQ(rtk_rate_stormControlRate_get(0, 3, 4, &word), 0);
  EXPECT_EQ(word, 77u);
  ASSERT_EQ(rtk_rate_stormControlExceed_reset(0, 3, 1), 0);
  EXPECT_FALSE(vchip::port_rates(0, 3).storm[1].exceeded);
}

TEST_F(PortBlocks, BandwidthsOfBothWaysAreOnTheirOwn) {
  ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 3, 625), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, 3, 1), 0);
  const json port = block("rate")["ports"][3];
  EXPECT_EQ(port["ingress"], os::parse_json(R"({"limited":false,"rate":625})"));
  EXPECT_EQ(port["egress"], os::parse_json(R"({"limited":true,"rate":1048575})"));
}

TEST_F(PortBlocks, FloodMasksBelongToTheirIndex) {
  const uint32_t mask = 0x10000003;
  ASSERT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 2, 5, &mask), 0);
  EXPECT_EQ(vchip::defaults(0).flood_mask_index[2], 0u) << "the type stays where it was";
  EXPECT_EQ(vchip::forward_masks(0)[5], mask);
  ASSERT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 2, 5), 0);
  EXPECT_EQ(vchip::defaults(0).flood_mask_index, (Words{0, 0, 5, 0, 0, 0}));
  EXPECT_EQ(block("forward_mask")[5], os::parse_json(R"({"index":5,"ports":[0,1,28]})"));
  EXPECT_EQ(block("flood")["miss_index"], os::parse_json("[0,0,5,0,0,0]"));
}

TEST_F(PortBlocks, LearningInWords) {
  ASSERT_EQ(rtk_l2_newMacOp_set(0, 3, 1, 2), 0);
  EXPECT_EQ(block("learning")[3],
            os::parse_json(R"({"port":3,"learns":"by-software","frame":"trap-to-cpu"})"));
  EXPECT_EQ(block("learning")[4],
            os::parse_json(R"({"port":4,"learns":"at-once","frame":"forward"})"));
}

TEST_F(PortBlocks, TagsInWords) {
  ASSERT_EQ(rtk_l2_vlanMode_set(0, 3, 1), 0);
  ASSERT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 3, 0, 1), 0);
  ASSERT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 3, 1, 0), 0);
  EXPECT_EQ(block("tag")["ports"][3], os::parse_json(R"({"port":3,"outer_pvid":1,
    "ingress_filter":false,"double_tag":true,"ingress_keep":{"inner":false,"outer":true},
    "egress_keep":{"inner":true,"outer":false},"outer_tag_status":0,"ingress_inner_tpids":1,
    "egress_inner_tpid":0,"egress_outer_tpid":0})"));
  EXPECT_EQ(block("tag")["outer_tpid"], os::parse_json("[34984,34984,34984,34984]"));
}

TEST_F(PortBlocks, AttacksInWords) {
  ASSERT_EQ(rtk_sec_portAttackPreventEnable_set(0, 3, 1), 0);
  ASSERT_EQ(rtk_sec_portAttackPreventEnable_set(0, 9, 1), 0);
  ASSERT_EQ(rtk_sec_portAttackPreventEnable_set(0, 9, 0), 0);
  EXPECT_EQ(block("attack")["protected_ports"], os::parse_json("[3]"));
}

TEST_F(PortBlocks, CountersCountUpAndWrap) {
  ASSERT_EQ(vchip_counter_set(0, 3, CHIP_COUNTER_RX_UNICAST, UINT64_MAX), 0);
  EXPECT_EQ(block("counter")[3], os::parse_json(R"({"port":3,"counters":
    [{"counter":1,"name":"rx-unicast","value":"18446744073709551615"}]})"));
  ASSERT_EQ(vchip_counter_add(0, 3, CHIP_COUNTER_RX_UNICAST, 3), 0);
  EXPECT_EQ(vchip::counters(0, 3)[1], 2u);
  ASSERT_EQ(vchip_counter_add(0, 3, 33, 0x100000000), 0);
  user_counter_t value = {9, 9};
  ASSERT_EQ(rtk_stat_port_get(0, 3, 33, &value), 0);
  EXPECT_EQ(value.high, 1u);
  EXPECT_EQ(value.low, 0u);
  ASSERT_EQ(rtk_stat_port_reset(0, 3), 0);
  EXPECT_EQ(vchip::counters(0, 3), std::vector<uint64_t>(48, 0));
}

TEST_F(PortBlocks, ACableTestTakesAPictureOfTheWires) {
  chip_cable_test_t result = {};
  EXPECT_EQ(rtk_diag_portRtctResult_get(0, 3, &result), VCHIP_E_NO_TEST);
  ASSERT_EQ(vchip_cable_plug(0, 3, &vchip_test::kUsualPartner), 0);
  ASSERT_EQ(vchip_pair_set(0, 3, 1, VCHIP_FAULT_SHORT | VCHIP_FAULT_CROSSTALK, 1234), 0);
  const uint32_t mask = 0x8;
  ASSERT_EQ(rtk_diag_rtctEnable_set(0, &mask), 0);
  ASSERT_EQ(vchip_pair_set(0, 3, 1, 0, 0), 0);
  ASSERT_EQ(rtk_diag_portRtctResult_get(0, 3, &result), 0);
  EXPECT_EQ(result.shorted[1], 1u);
  EXPECT_EQ(result.crosstalk[1], 1u);
  EXPECT_EQ(result.open[1] | result.mismatch[1] | result.shorted[0], 0u);
  EXPECT_EQ(result.length[1], 1234u);
  EXPECT_EQ(rtk_diag_portRtctResult_get(0, 4, &result), VCHIP_E_NO_TEST);
  EXPECT_TRUE(vchip::cable(0, 3).tested);
  EXPECT_EQ(vchip::cable(0, 3).pairs[1].faults, 0u);
  EXPECT_EQ(block("cable")[3]["found"][1],
            os::parse_json(R"({"faults":["short","crosstalk"],"length_cm":1234})"));
  EXPECT_TRUE(block("cable")[4]["found"].is_null());
}

TEST_F(PortBlocks, WithoutACableEveryPairIsOpen) {
  ASSERT_EQ(vchip_pair_set(0, 3, 1, VCHIP_FAULT_SHORT, 1234), 0);
  const uint32_t mask = 0x8;
  ASSERT_EQ(rtk_diag_rtctEnable_set(0, &mask), 0);
  chip_cable_test_t result = {};
  ASSERT_EQ(rtk_diag_portRtctResult_get(0, 3, &result), 0);
  for (int pair = 0; pair < 4; ++pair) {
    EXPECT_EQ(result.open[pair], 1u);
    EXPECT_EQ(result.shorted[pair], 0u);
    EXPECT_EQ(result.length[pair], 0u);
  }
}

TEST_F(PortBlocks, FibreHasNoWires) {
  ASSERT_EQ(vchip_medium_set(0, 24, 1), 0);
  const uint32_t both = 0x1000008;
  EXPECT_EQ(rtk_diag_rtctEnable_set(0, &both), VCHIP_E_MEDIUM);
  EXPECT_FALSE(vchip::cable(0, 3).tested) << "all or nothing";
}

TEST_F(PortBlocks, ResetUndoesIt) {
  ASSERT_EQ(vchip_pair_set(0, 3, 1, VCHIP_FAULT_SHORT, 1234), 0);
  ASSERT_EQ(vchip_counter_set(0, 3, 1, 5), 0);
  ASSERT_EQ(vchip_storm_exceed(0, 3, 1), 0);
  ASSERT_EQ(rtk_l2_vlanMode_set(0, 3, 1), 0);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::cable(0, 3).pairs[1].faults, 0u);
  EXPECT_EQ(vchip::counters(0, 3)[1], 0u);
  EXPECT_FALSE(vchip::port_rates(0, 3).storm[1].exceeded);
  EXPECT_FALSE(vchip::tags(0, 3).double_tag);
}

}  // namespace
