// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {

const Subjects &stp_subjects() {
  static const Subjects all = {
      {"rtk_stp_mstpInstance_create", false, 0, 0,
       [](auto u, auto, auto &) {
         const int32_t result = rtk_stp_mstpInstance_create(u, 15);
         // The second time it is there.
         return result == VCHIP_E_INSTANCE_EXISTS ? 0 : result;
       }},
      {"rtk_stp_mstpInstance_destroy", false, 0, 0,
       [](auto u, auto, auto &) {
         rtk_stp_mstpInstance_create(u, 14);
         return rtk_stp_mstpInstance_destroy(u, 14);
       }},
      {"rtk_stp_isMstpInstanceExist_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_stp_isMstpInstanceExist_get(u, 0, o.at(0)); }},
      {"rtk_stp_mstpState_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_stp_mstpState_get(u, 0, p, o.at(0)); }},
      {"rtk_stp_mstpState_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_stp_mstpState_set(u, 0, p, 1); }},
      {"rtk_vlan_stg_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_vlan_stg_set(u, 1, 0); }},
      {"rtk_trap_mgmtFrameAction_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_trap_mgmtFrameAction_set(u, 31, 3); }},
      {"rtk_trap_portMgmtFrameAction_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_trap_portMgmtFrameAction_set(u, p, 31, 3); }},
  };
  return all;
}

}  // namespace vchip_test
