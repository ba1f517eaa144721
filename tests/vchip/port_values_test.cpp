// SPDX-License-Identifier: MIT
// Values, masks and indexes that the port calls refuse, each with its code.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include "private_chip.h"

namespace {

using PortValues = vchip_test::PrivateChip;

TEST_F(PortValues, FlagsAreZeroOrOne) {
  const std::string before = vchip::dump_json(-1);
  for (const uint32_t value : {2u, 256u, UINT32_MAX}) {
    EXPECT_EQ(rtk_port_flowCtrlEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_port_backpressureEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_eee_portEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_rate_stormControlEnable_set(0, 3, 0, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_rate_stormControlTypeSel_set(0, 3, 0, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_sec_portAttackPreventEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_sec_attackPreventAction_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portIgrFilter_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_l2_vlanMode_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 3, value, 0), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portIgrTagKeepEnable_set(0, 3, 0, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 3, value, 0), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portEgrTagKeepEnable_set(0, 3, 0, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_vlan_portEgrOuterTagSts_set(0, 3, value), VCHIP_E_VALUE);
  }
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(PortValues, EveryRangeHasAnEnd) {
  const std::string before = vchip::dump_json(-1);
  EXPECT_EQ(rtk_port_phyCrossOverMode_set(0, 3, 3), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_newMacOp_set(0, 3, 3, 0), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_newMacOp_set(0, 3, 0, 4), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 0, 63), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 0, 0x4000), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_switch_pkt2CpuTypeFormat_set(0, 0, 4), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 3, -1), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, 3, 0x100000), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_rate_stormControlRate_set(0, 3, 0, 0x1000000), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_vlan_portOuterPvid_set(0, 3, 4096), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_vlan_innerTpidEntry_set(0, 0, 0x10000), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_vlan_outerTpidEntry_set(0, 0, 0x10000), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_vlan_portIgrInnerTpid_set(0, 3, 16), VCHIP_E_VALUE);
  EXPECT_EQ(vchip_pair_set(0, 3, 0, 16, 0), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(PortValues, EveryTableHasAnEnd) {
  const std::string before = vchip::dump_json(-1);
  const uint32_t mask = 1;
  uint32_t word = 0;
  user_counter_t value = {};
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_get(0, 6, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 6, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 0, 8), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 6, 0, &mask), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 0, 8, &mask), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_mcastFwdPortmask_get(0, 512, &word, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_switch_maxPktLenLinkSpeed_get(0, 2, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_switch_maxPktLenLinkSpeed_set(0, 2, 64), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_switch_pkt2CpuTypeFormat_set(0, 8, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_stat_port_get(0, 3, CHIP_PORT_COUNTERS, &value), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_sec_attackPreventAction_get(0, 16, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_sec_attackPreventAction_set(0, 16, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_rate_stormControlEnable_set(0, 3, 5, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_rate_stormControlExceed_get(0, 3, 5, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_innerTpidEntry_get(0, 4, &word), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_innerTpidEntry_set(0, 4, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_outerTpidEntry_set(0, 4, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_portEgrInnerTpid_set(0, 3, 4), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_vlan_portEgrOuterTpid_set(0, 3, 4), VCHIP_E_INDEX);
  EXPECT_EQ(vchip_pair_set(0, 3, 4, 0, 0), VCHIP_E_INDEX);
  EXPECT_EQ(vchip_counter_set(0, 3, CHIP_PORT_COUNTERS, 0), VCHIP_E_INDEX);
  EXPECT_EQ(vchip_counter_add(0, 3, CHIP_PORT_COUNTERS, 0), VCHIP_E_INDEX);
  EXPECT_EQ(vchip_storm_exceed(0, 3, 5), VCHIP_E_INDEX);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(PortValues, MasksHoldOnlyPortsThatThereAre) {
  const uint32_t beyond = 0x20000000;
  EXPECT_EQ(rtk_port_isolation_set(0, 3, beyond), VCHIP_E_PORT);
  EXPECT_EQ(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 2, 5, &beyond), VCHIP_E_PORT);
  EXPECT_EQ(rtk_diag_rtctEnable_set(0, &beyond), VCHIP_E_PORT);
  const uint32_t nothing = 0;
  EXPECT_EQ(rtk_diag_rtctEnable_set(0, &nothing), VCHIP_E_PORT);
  const uint32_t cpu = 0x10000000;
  EXPECT_EQ(rtk_diag_rtctEnable_set(0, &cpu), VCHIP_E_CPU_PORT);
  EXPECT_EQ(rtk_port_isolation_set(0, 3, cpu), 0);
}

TEST_F(PortValues, TheWorldIsCheckedToo) {
  EXPECT_EQ(vchip_pair_set(2, 3, 0, 0, 0), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_pair_set(0, 29, 0, 0, 0), VCHIP_E_PORT);
  EXPECT_EQ(vchip_pair_set(0, 28, 0, 0, 0), VCHIP_E_CPU_PORT);
  EXPECT_EQ(vchip_counter_set(2, 3, 0, 0), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_counter_add(0, -1, 0, 0), VCHIP_E_PORT);
  EXPECT_EQ(vchip_storm_exceed(2, 3, 0), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_storm_exceed(0, 28, 0), VCHIP_E_CPU_PORT);
}

TEST_F(PortValues, ViewsOfWhatIsNotThereThrow) {
  EXPECT_THROW(vchip::port_rates(2, 0), std::out_of_range);
  EXPECT_THROW(vchip::port_rates(0, 29), std::out_of_range);
  EXPECT_THROW(vchip::forwarding(0, -1), std::out_of_range);
  EXPECT_THROW(vchip::forward_masks(2), std::out_of_range);
  EXPECT_THROW(vchip::tags(0, 29), std::out_of_range);
  EXPECT_THROW(vchip::tpids(2), std::out_of_range);
  EXPECT_THROW(vchip::counters(0, 29), std::out_of_range);
  EXPECT_THROW(vchip::cable(0, 28), std::out_of_range);
  EXPECT_THROW(vchip::attacks(2), std::out_of_range);
}

}  // namespace
