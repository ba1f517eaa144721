// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {

const Subjects &mirror_trunk_subjects() {
  static const chip_mirror_entry entry = {1, 28, 1, 2, 5, 6, 1, 8, 9, 10, 11, 1, 13, 14, 1};
  static const uint32_t members = 3;
  static const Subjects all = {
      {"rtk_mirror_group_get", false, 0, 1,
       [](auto u, auto, auto &o) {
         chip_mirror_entry read = {};
         read.field5 = kUntouched;
         const int32_t result = rtk_mirror_group_get(u, 3, o.at(0) == nullptr ? nullptr : &read);
         o.words[0] = read.field5;
         return result;
       }},
      {"rtk_mirror_group_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_mirror_group_set(u, 3, o.null == 0 ? nullptr : &entry);
       }},
      {"rtk_trunk_port_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_trunk_port_set(u, 31, o.null == 0 ? nullptr : &members);
       }},
      {"rtk_trunk_distributionAlgorithmParam_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_trunk_distributionAlgorithmParam_set(u, 1, 0x7f); }},
      {"rtk_trap_bypassStp_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_trap_bypassStp_set(u, 7, 1); }},
      {"rtk_trap_rmaGroupAction_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_trap_rmaGroupAction_set(u, 3, 3); }},
  };
  return all;
}

}  // namespace vchip_test
