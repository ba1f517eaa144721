// SPDX-License-Identifier: MIT
// The SDK's calls on settings of a whole unit.
#include <swctl/platform/port_read.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace vchip {
namespace {

int32_t possible_length(uint32_t length) {
  return length >= kMinFrameLength && length <= kMaxFrameLength ? 0 : VCHIP_E_VALUE;
}

}  // namespace
}  // namespace vchip

int32_t rtk_switch_maxPktLenTagLenCntIncEnable_set(uint32_t unit, uint32_t enable) {
  return vchip::change(unit, {vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.switch_wide.set_tag_counts(enable != 0); });
}

int32_t rtk_switch_maxPktLenLinkSpeed_get(uint32_t unit, uint32_t speed_class, uint32_t *length) {
  return vchip::look(unit,
                     {vchip::not_null(length), vchip::below(speed_class, vchip::kSpeedClasses)},
                     [=](const vchip::Unit &chip) {
                       *length = chip.switch_wide.max_length()[speed_class];
                       return 0;
                     });
}

int32_t rtk_switch_maxPktLenLinkSpeed_set(uint32_t unit, uint32_t speed_class, uint32_t length) {
  return vchip::change(
      unit, {vchip::below(speed_class, vchip::kSpeedClasses), vchip::possible_length(length)},
      [=](vchip::Unit &chip) { chip.switch_wide.set_max_length(speed_class, length); });
}

int32_t rtk_switch_pkt2CpuTypeFormat_set(uint32_t unit, uint32_t type, uint32_t format) {
  return vchip::change(
      unit,
      {vchip::below(type, vchip::kCpuFrameKinds), vchip::at_most(format, vchip::kMaxCpuFormat)},
      [=](vchip::Unit &chip) { chip.switch_wide.set_cpu_format(type, format); });
}

int32_t rtk_l2_zeroSALearningEnable_set(uint32_t unit, uint32_t enable) {
  return vchip::change(unit, {vchip::flag(enable)}, [=](vchip::Unit &chip) {
    chip.defaults.set_zero_source_learned(enable != 0);
  });
}

int32_t rtk_qos_1pDfltPriSrcSel_set(uint32_t unit, uint32_t source) {
  return vchip::change(unit, {vchip::at_most(source, vchip::kMaxPrioritySource)},
                       [=](vchip::Unit &chip) { chip.defaults.set_priority_source(source); });
}

int32_t rtk_acl_meterIncludeIfg_set(uint32_t unit, uint32_t include) {
  return vchip::change(unit, {vchip::flag(include)}, [=](vchip::Unit &chip) {
    chip.defaults.set_meters_count_gap(include != 0);
  });
}

int32_t rtk_sec_portAttackPreventEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return vchip::change(unit, {vchip::on_front_port(port), vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.attack.protect(port, enable != 0); });
}

int32_t swctl_platform_port_protection_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return vchip::look(unit, {vchip::on_port(port), vchip::not_null(enable)},
                     [=](const vchip::Unit &chip) {
                       *enable = chip.attack.protected_ports() >> port & 1;
                       return 0;
                     });
}

int32_t rtk_sec_attackPreventAction_get(uint32_t unit, uint32_t type, uint32_t *action) {
  return vchip::look(unit, {vchip::not_null(action), vchip::below(type, vchip::kAttackTypes)},
                     [=](const vchip::Unit &chip) {
                       *action = chip.attack.actions()[type];
                       return 0;
                     });
}

int32_t rtk_sec_attackPreventAction_set(uint32_t unit, uint32_t type, uint32_t action) {
  return vchip::change(
      unit,
      {vchip::below(type, vchip::kAttackTypes), vchip::at_most(action, vchip::kMaxAttackAction)},
      [=](vchip::Unit &chip) { chip.attack.set_action(type, action); });
}
