// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {

const Subjects &frame_subjects() {
  static const Subjects all = {
      {"rtk_l2_zeroSALearningEnable_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_l2_zeroSALearningEnable_set(u, 0); }},
      {"rtk_l2_lookupMissFloodPortMaskIdx_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_l2_lookupMissFloodPortMaskIdx_set(u, 2, 5); }},
      {"rtk_qos_1pDfltPriSrcSel_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_qos_1pDfltPriSrcSel_set(u, 0); }},
      {"rtk_acl_meterIncludeIfg_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_acl_meterIncludeIfg_set(u, 0); }},
  };
  return all;
}

}  // namespace vchip_test
