// SPDX-License-Identifier: MIT
// Defaults that are one SDK call each.
#include <swctl/field.h>
#include <swctl/frame.h>
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

namespace {

constexpr uint32_t kOff = 0;
constexpr uint32_t kUnknownUnicast = 2;  // lookup type
constexpr uint32_t kFloodMaskIndex = 5;
constexpr uint32_t kPortPriority = 0;

}  // namespace

int32_t user_switch_action_init(uint32_t unit) {
  return rtk_l2_zeroSALearningEnable_set(unit, kOff);
}

int32_t user_ulf_flood_index_init(uint32_t unit) {
  return rtk_l2_lookupMissFloodPortMaskIdx_set(unit, kUnknownUnicast, kFloodMaskIndex);
}

int32_t user_qos_default_cos_src_init(uint32_t, ...) {
  return rtk_qos_1pDfltPriSrcSel_set(0, kPortPriority);
}

int32_t user_field_meter_ifg_exclude_init(uint32_t, ...) {
  return rtk_acl_meterIncludeIfg_set(0, kOff);
}
