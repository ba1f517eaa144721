// SPDX-License-Identifier: MIT
// The SDK's calls on frames for the processor.
#include <swctl/platform/sdk.h>
#include <swctl/platform/trap_read.h>

#include "chip/chip.h"
#include "common/check.h"

namespace vchip {
namespace {

int32_t on_frame_type(uint32_t type) {
  return below(type, kFrameTypes);
}

}  // namespace
}  // namespace vchip

int32_t rtk_trap_mgmtFrameAction_set(uint32_t unit, uint32_t type, uint32_t action) {
  return vchip::change(
      unit, {vchip::on_frame_type(type), vchip::is_frame_action(action)},
      [=](vchip::Unit &chip) { chip.trap.set_action(type, vchip::FrameAction{action}); });
}

int32_t rtk_trap_portMgmtFrameAction_set(uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t action) {
  return vchip::change(
      unit, {vchip::on_port(port), vchip::on_frame_type(type), vchip::is_frame_action(action)},
      [=](vchip::Unit &chip) {
        chip.trap.set_port_action(port, type, vchip::FrameAction{action});
      });
}

int32_t rtk_trap_rmaGroupAction_set(uint32_t unit, uint32_t group, uint32_t action) {
  return vchip::change(
      unit, {vchip::below(group, vchip::kRmaGroups), vchip::is_frame_action(action)},
      [=](vchip::Unit &chip) { chip.trap.set_rma_group(group, vchip::FrameAction{action}); });
}

int32_t rtk_trap_bypassStp_set(uint32_t unit, uint32_t type, uint32_t enable) {
  return vchip::change(unit, {vchip::below(type, vchip::kBypassTypes), vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.trap.set_bypass(type, enable); });
}

int32_t swctl_platform_trap_frame_get(uint32_t unit, uint32_t type, uint32_t *action) {
  return vchip::look(unit, {vchip::not_null(action), vchip::on_frame_type(type)},
                     [=](const vchip::Unit &chip) {
                       *action = number_of(chip.trap.actions()[type]);
                       return 0;
                     });
}

int32_t swctl_platform_trap_port_frame_get(uint32_t unit, int32_t port, uint32_t type,
                                           uint32_t *action) {
  return vchip::look(unit,
                     {vchip::on_port(port), vchip::not_null(action), vchip::on_frame_type(type)},
                     [=](const vchip::Unit &chip) {
                       *action = number_of(chip.trap.port_actions(port)[type]);
                       return 0;
                     });
}

int32_t swctl_platform_trap_group_get(uint32_t unit, uint32_t group, uint32_t *action) {
  return vchip::look(unit, {vchip::not_null(action), vchip::below(group, vchip::kRmaGroups)},
                     [=](const vchip::Unit &chip) {
                       *action = number_of(chip.trap.rma_groups()[group]);
                       return 0;
                     });
}

int32_t swctl_platform_trap_bypass_get(uint32_t unit, uint32_t type, uint32_t *enable) {
  return vchip::look(unit, {vchip::not_null(enable), vchip::below(type, vchip::kBypassTypes)},
                     [=](const vchip::Unit &chip) {
                       *enable = chip.trap.bypass()[type];
                       return 0;
                     });
}
