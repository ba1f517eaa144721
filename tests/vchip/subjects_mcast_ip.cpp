// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {
namespace {

const chip_ip_mcast_entry kIpEntry = {10, 0, 0xE8010203, 0xC0000201, 3, {}};
const chip_ip6_mcast_entry kEntry6 = {10, {{0xff, 0x3e}}, {{0x20, 1}}, 0, 3, {}};

// The second time an entry is there.
int32_t unless_there(int32_t result) {
  return result == VCHIP_E_IP_MCAST_EXISTS ? 0 : result;
}

}  // namespace

const Subjects &mcast_ip_subjects() {
  static const Subjects all = {
      {"rtk_l2_ipMcastAddr_add", false, 0, 1,
       [](auto u, auto, auto &o) {
         return unless_there(rtk_l2_ipMcastAddr_add(u, o.null == 0 ? nullptr : &kIpEntry));
       }},
      {"rtk_l2_ipMcastAddr_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         if (o.null != 0) rtk_l2_ipMcastAddr_add(u, &kIpEntry);
         return rtk_l2_ipMcastAddr_set(u, o.null == 0 ? nullptr : &kIpEntry);
       }},
      {"rtk_l2_ipMcastAddr_del", false, 0, 0,
       [](auto u, auto, auto &) {
         rtk_l2_ipMcastAddr_add(u, &kIpEntry);
         return rtk_l2_ipMcastAddr_del(u, kIpEntry.address_a, kIpEntry.address_b, 10);
       }},
      {"rtk_l2_ip6McastAddr_add", false, 0, 1,
       [](auto u, auto, auto &o) {
         return unless_there(rtk_l2_ip6McastAddr_add(u, o.null == 0 ? nullptr : &kEntry6));
       }},
      {"rtk_l2_ip6McastAddr_del", false, 0, 0,
       [](auto u, auto, auto &) {
         rtk_l2_ip6McastAddr_add(u, &kEntry6);
         return rtk_l2_ip6McastAddr_del(u, kEntry6.address_a, kEntry6.address_b, 10);
       }},
      {"rtk_l2_ipmcMode_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_l2_ipmcMode_set(u, 1); }},
      {"rtk_l2_ip6mcMode_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_l2_ip6mcMode_set(u, 1); }},
      {"rtk_l2_portLookupMissAction_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_l2_portLookupMissAction_set(u, p, 5, 3); }},
  };
  return all;
}

}  // namespace vchip_test
