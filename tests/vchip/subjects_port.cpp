// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {

const Subjects &port_subjects() {
  static const Subjects all = {
      {"rtk_port_link_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_port_link_get(u, p, o.at(0)); }},
      {"rtk_port_speedDuplex_get", true, 0, 2,
       [](auto u, auto p, auto &o) { return rtk_port_speedDuplex_get(u, p, o.at(0), o.at(1)); }},
      {"rtk_port_phyComboPortMedia_get", true, VCHIP_E_CPU_PORT, 1,
       [](auto u, auto p, auto &o) { return rtk_port_phyComboPortMedia_get(u, p, o.at(0)); }},
      {"rtk_port_adminEnable_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_port_adminEnable_get(u, p, o.at(0)); }},
      {"rtk_port_adminEnable_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_port_adminEnable_set(u, p, 1); }},
      {"rtk_port_phyAutoNegoEnable_get", true, VCHIP_E_CPU_PORT, 1,
       [](auto u, auto p, auto &o) { return rtk_port_phyAutoNegoEnable_get(u, p, o.at(0)); }},
      {"rtk_port_phyAutoNegoEnable_set", true, VCHIP_E_CPU_PORT, 0,
       [](auto u, auto p, auto &) { return rtk_port_phyAutoNegoEnable_set(u, p, 0); }},
      {"rtk_port_phyAutoNegoAbility_get", true, VCHIP_E_CPU_PORT, 1,
       [](auto u, auto p, auto &o) { return rtk_port_phyAutoNegoAbility_get(u, p, o.at(0)); }},
      {"rtk_port_phyAutoNegoAbility_set", true, VCHIP_E_CPU_PORT, 1,
       [](auto u, auto p, auto &o) {
         const uint32_t word = VCHIP_ABILITY_100_FULL;
         return rtk_port_phyAutoNegoAbility_set(u, p, o.null == 0 ? nullptr : &word);
       }},
      {"rtk_port_phyForceModeAbility_get", true, VCHIP_E_CPU_PORT, 3,
       [](auto u, auto p, auto &o) {
         return rtk_port_phyForceModeAbility_get(u, p, o.at(0), o.at(1), o.at(2));
       }},
      {"rtk_port_phyForceModeAbility_set", true, VCHIP_E_CPU_PORT, 0,
       [](auto u, auto p, auto &) { return rtk_port_phyForceModeAbility_set(u, p, 1, 1, 1); }},
      {"rtk_diag_portMacLocalLoopbackEnable_get", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return rtk_diag_portMacLocalLoopbackEnable_get(u, p, o.at(0));
       }},
      {"rtk_diag_portMacLocalLoopbackEnable_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_diag_portMacLocalLoopbackEnable_set(u, p, 1); }},
      {"rtk_switch_maxPktLenTagLenCntIncEnable_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_switch_maxPktLenTagLenCntIncEnable_set(u, 0); }},
      {"rtk_rate_stormControlRateMode_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_rate_stormControlRateMode_set(u, 0); }},
      {"rtk_rate_stormControlBurstSize_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_rate_stormControlBurstSize_set(u, 0, 7); }},
  };
  return all;
}

}  // namespace vchip_test
