// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {
namespace {

const uint32_t kMap[8] = {7, 6, 5, 4, 3, 2, 1, 0};

// Eight words that a call may write; the outputs hold only three.
template <typename Call>
int32_t with_table(Outputs &outputs, Call call) {
  uint32_t table[8] = {kUntouched, kUntouched};
  const int32_t result = call(outputs.at(0) == nullptr ? nullptr : table);
  if (table[1] != kUntouched) outputs.words[0] = table[1];
  return result;
}

}  // namespace

const Subjects &qos_subjects() {
  static const Subjects all = {
      {"rtk_qos_outer1pPriRemap_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_qos_outer1pPriRemap_set(u, 7, 1, 7); }},
      {"rtk_qos_1pPriRemap_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_qos_1pPriRemap_set(u, 7, 7); }},
      {"rtk_qos_dscpPriRemap_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_qos_dscpPriRemap_get(u, 63, o.at(0)); }},
      {"rtk_qos_dscpPriRemap_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_qos_dscpPriRemap_set(u, 63, 7); }},
      {"rtk_qos_portOuterPri_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_qos_portOuterPri_get(u, p, o.at(0)); }},
      {"rtk_qos_portOuterPri_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_qos_portOuterPri_set(u, p, 7); }},
      {"rtk_qos_portInnerPri_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_qos_portInnerPri_set(u, p, 7); }},
      {"rtk_qos_priMap_get", false, 0, 1,
       [](auto u, auto, auto &o) {
         return with_table(o, [=](uint32_t *table) { return rtk_qos_priMap_get(u, 8, table); });
       }},
      {"rtk_qos_priMap_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_qos_priMap_set(u, 8, o.null == 0 ? nullptr : kMap);
       }},
      {"rtk_qos_priSelGroup_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_qos_priSelGroup_set(u, 3, o.null == 0 ? nullptr : kMap);
       }},
      {"rtk_qos_portPriSelGroup_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_qos_portPriSelGroup_set(u, p, 0); }},
      {"rtk_qos_queueStrictEnable_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_qos_queueStrictEnable_get(u, p, 7, o.at(0)); }},
      {"rtk_qos_queueStrictEnable_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_qos_queueStrictEnable_set(u, p, 7, 1); }},
      {"rtk_qos_schedulingAlgorithm_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_qos_schedulingAlgorithm_get(u, p, o.at(0)); }},
      {"rtk_qos_schedulingAlgorithm_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_qos_schedulingAlgorithm_set(u, p, 1); }},
      {"rtk_qos_schedulingQueue_get", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return with_table(
             o, [=](uint32_t *table) { return rtk_qos_schedulingQueue_get(u, p, table); });
       }},
      {"rtk_qos_schedulingQueue_set", true, 0, 1,
       [](auto u, auto p, auto &o) {
         return rtk_qos_schedulingQueue_set(u, p, o.null == 0 ? nullptr : kMap);
       }},
      {"rtk_qos_1pRemarkSrcSel_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_qos_1pRemarkSrcSel_set(u, 0); }},
      {"rtk_qos_1pRemarkEnable_set", true, 0, 0,
       [](auto u, auto p, auto &) { return rtk_qos_1pRemarkEnable_set(u, p, 1); }},
  };
  return all;
}

}  // namespace vchip_test
