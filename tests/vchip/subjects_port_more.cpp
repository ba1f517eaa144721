// SPDX-License-Identifier: MIT
// Flow control, rates, flooding, tags, counters, cable tests and the rest.
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {
namespace {

// Outputs that are no words: a write shows in the first word.
template <typename Record, typename Call>
int32_t into_record(Outputs &outputs, Call call) {
  Record record = {};
  auto &first = reinterpret_cast<uint32_t &>(record);
  first = kUntouched;
  const int32_t result = call(outputs.null == 0 ? nullptr : &record);
  outputs.words[0] = first;
  return result;
}

}  // namespace

#define PORT_GET(call, cpu)                                                          \
  {                                                                                  \
#call, true, cpu, 1, [](auto u, auto p, auto &o) { return call(u, p, o.at(0)); } \
  }
#define PORT_GET_TWO(call, cpu)                                                               \
  {                                                                                           \
#call, true, cpu, 2, [](auto u, auto p, auto &o) { return call(u, p, o.at(0), o.at(1)); } \
  }
#define PORT_SET(call, cpu, ...)                                                        \
  {                                                                                     \
#call, true, cpu, 0, [](auto u, auto p, auto &) { return call(u, p, __VA_ARGS__); } \
  }
#define UNIT_SET(call, ...)                                                       \
  {                                                                               \
#call, false, 0, 0, [](auto u, auto, auto &) { return call(u, __VA_ARGS__); } \
  }
#define UNIT_GET(call, index)                                                         \
  {                                                                                   \
#call, false, 0, 1, [](auto u, auto, auto &o) { return call(u, index, o.at(0)); } \
  }
#define STORM_GET(call)                                                \
  {                                                                    \
#call, true, VCHIP_E_CPU_PORT, 1,                                  \
        [](auto u, auto p, auto &o) { return call(u, p, 4, o.at(0)); } \
  }

const Subjects &port_more_subjects() {
  static const Subjects all = {
      PORT_SET(rtk_port_flowCtrlEnable_set, VCHIP_E_CPU_PORT, 1),
      PORT_GET_TWO(rtk_port_flowctrl_get, VCHIP_E_CPU_PORT),
      PORT_SET(rtk_port_backpressureEnable_set, VCHIP_E_CPU_PORT, 1),
      PORT_GET(rtk_port_phyCrossOverMode_get, VCHIP_E_CPU_PORT),
      PORT_SET(rtk_port_phyCrossOverMode_set, VCHIP_E_CPU_PORT, 2),
      PORT_GET(rtk_eee_portEnable_get, VCHIP_E_CPU_PORT),
      PORT_SET(rtk_eee_portEnable_set, VCHIP_E_CPU_PORT, 1),
      PORT_GET(rtk_port_isolation_get, 0),
      PORT_SET(rtk_port_isolation_set, 0, 5),
      UNIT_GET(rtk_l2_lookupMissFloodPortMaskIdx_get, 2),
      {"rtk_l2_lookupMissFloodPortMask_set_with_idx", false, 0, 1,
       [](auto u, auto, auto &o) {
         const uint32_t mask = 3;
         return rtk_l2_lookupMissFloodPortMask_set_with_idx(u, 2, 5, o.null == 0 ? nullptr : &mask);
       }},
      {"rtk_l2_mcastFwdPortmask_get", false, 0, 2,
       [](auto u, auto, auto &o) { return rtk_l2_mcastFwdPortmask_get(u, 5, o.at(0), o.at(1)); }},
      PORT_GET_TWO(rtk_l2_newMacOp_get, 0),
      PORT_SET(rtk_l2_newMacOp_set, 0, 2, 3),
      UNIT_GET(rtk_switch_maxPktLenLinkSpeed_get, 1),
      UNIT_SET(rtk_switch_maxPktLenLinkSpeed_set, 1, 9000),
      UNIT_SET(rtk_switch_pkt2CpuTypeFormat_set, 7, 3),
      {"rtk_diag_rtctEnable_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         const uint32_t mask = 3;
         return rtk_diag_rtctEnable_set(u, o.null == 0 ? nullptr : &mask);
       }},
      {"rtk_diag_portRtctResult_get", true, VCHIP_E_CPU_PORT, 1,
       [](auto u, auto p, auto &o) {
         const uint32_t mask = p >= 0 && p < VCHIP_CPU_PORT ? uint32_t{1} << p : 0;
         if (o.null < 0) rtk_diag_rtctEnable_set(u, &mask);
         return into_record<chip_cable_test_t>(
             o, [=](auto *record) { return rtk_diag_portRtctResult_get(u, p, record); });
       }},
      {"rtk_stat_port_get", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return into_record<user_counter_t>(
             o, [=](auto *value) { return rtk_stat_port_get(u, p, 47, value); });
       }},
      {"rtk_stat_port_getAll", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return into_record<chip_port_counters_t>(
             o, [=](auto *counters) { return rtk_stat_port_getAll(u, p, counters); });
       }},
      {"rtk_stat_port_reset", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_stat_port_reset(u, p); }},
      PORT_SET(rtk_sec_portAttackPreventEnable_set, VCHIP_E_CPU_PORT, 1),
      UNIT_GET(rtk_sec_attackPreventAction_get, 15),
      UNIT_SET(rtk_sec_attackPreventAction_set, 15, 1),
  };
  return all;
}

const Subjects &port_rate_subjects() {
  static const Subjects all = {
      PORT_SET(rtk_rate_igrBandwidthCtrlEnable_set, 0, 1),
      {"rtk_rate_igrBandwidthCtrlRate_get", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return into_record<int32_t>(
             o, [=](auto *rate) { return rtk_rate_igrBandwidthCtrlRate_get(u, p, rate); });
       }},
      PORT_SET(rtk_rate_igrBandwidthCtrlRate_set, 0, 9),
      PORT_SET(rtk_rate_egrBandwidthCtrlEnable_set, 0, 1),
      {"rtk_rate_egrBandwidthCtrlRate_get", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return into_record<int32_t>(
             o, [=](auto *rate) { return rtk_rate_egrBandwidthCtrlRate_get(u, p, rate); });
       }},
      PORT_SET(rtk_rate_egrBandwidthCtrlRate_set, 0, 9),
      {"rtk_rate_stormControlRateMode_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_rate_stormControlRateMode_get(u, o.at(0)); }},
      STORM_GET(rtk_rate_stormControlEnable_get),
      PORT_SET(rtk_rate_stormControlEnable_set, VCHIP_E_CPU_PORT, 4, 1),
      STORM_GET(rtk_rate_stormControlTypeSel_get),
      PORT_SET(rtk_rate_stormControlTypeSel_set, VCHIP_E_CPU_PORT, 4, 1),
      STORM_GET(rtk_rate_stormControlRate_get),
      PORT_SET(rtk_rate_stormControlRate_set, VCHIP_E_CPU_PORT, 4, 9),
      STORM_GET(rtk_rate_stormControlExceed_get),
      PORT_SET(rtk_rate_stormControlExceed_reset, VCHIP_E_CPU_PORT, 4),
  };
  return all;
}

const Subjects &port_tag_subjects() {
  static const Subjects all = {
      PORT_SET(rtk_vlan_portOuterPvid_set, 0, 4095),
      PORT_SET(rtk_vlan_portIgrFilter_set, 0, 1),
      PORT_GET(rtk_l2_vlanMode_get, 0),
      PORT_SET(rtk_l2_vlanMode_set, 0, 1),
      PORT_SET(rtk_vlan_portIgrTagKeepEnable_set, 0, 1, 0),
      PORT_SET(rtk_vlan_portEgrTagKeepEnable_set, 0, 0, 1),
      PORT_SET(rtk_vlan_portEgrOuterTagSts_set, 0, 1),
      UNIT_GET(rtk_vlan_innerTpidEntry_get, 3),
      UNIT_SET(rtk_vlan_innerTpidEntry_set, 3, 0xffff),
      UNIT_SET(rtk_vlan_outerTpidEntry_set, 3, 0xffff),
      PORT_SET(rtk_vlan_portIgrInnerTpid_set, 0, 15),
      PORT_GET(rtk_vlan_portEgrInnerTpid_get, 0),
      PORT_SET(rtk_vlan_portEgrInnerTpid_set, 0, 3),
      PORT_SET(rtk_vlan_portEgrOuterTpid_set, 0, 3),
  };
  return all;
}

}  // namespace vchip_test
