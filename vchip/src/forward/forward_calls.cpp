// SPDX-License-Identifier: MIT
// The SDK's calls on isolation, flooding and learning.
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace {

using vchip::at_most;
using vchip::below;
using vchip::change;
using vchip::kMissTypes;
using vchip::kPortMasks;
using vchip::look;
using vchip::not_null;
using vchip::on_port;
using vchip::on_ports;
using vchip::Unit;

}  // namespace

int32_t rtk_port_isolation_get(uint32_t unit, int32_t port, uint32_t *mask) {
  return look(unit, {on_port(port), not_null(mask)}, [=](const Unit &chip) {
    *mask = chip.flood.isolation(port);
    return 0;
  });
}

int32_t rtk_port_isolation_set(uint32_t unit, int32_t port, uint32_t mask) {
  return change(unit, {on_port(port), on_ports(mask)},
                [=](Unit &chip) { chip.flood.set_isolation(port, mask); });
}

int32_t rtk_l2_lookupMissFloodPortMaskIdx_get(uint32_t unit, uint32_t type, uint32_t *index) {
  return look(unit, {not_null(index), below(type, kMissTypes)}, [=](const Unit &chip) {
    *index = chip.flood.miss_index()[type];
    return 0;
  });
}

int32_t rtk_l2_lookupMissFloodPortMaskIdx_set(uint32_t unit, uint32_t type, uint32_t index) {
  return change(unit, {below(type, kMissTypes), below(index, vchip::kFloodMasks)},
                [=](Unit &chip) { chip.flood.set_miss_index(type, index); });
}

int32_t rtk_l2_lookupMissFloodPortMask_set_with_idx(uint32_t unit, uint32_t type, uint32_t index,
                                                    const uint32_t *mask) {
  const uint32_t ports = mask == nullptr ? 0 : *mask;
  return change(
      unit,
      {not_null(mask), on_ports(ports), below(type, kMissTypes), below(index, vchip::kFloodMasks)},
      [=](Unit &chip) { chip.forward_mask.set_ports(index, ports); });
}

int32_t rtk_l2_mcastFwdPortmask_get(uint32_t unit, uint32_t index, uint32_t *mask,
                                    uint32_t *extra) {
  return look(unit, {not_null(mask, extra), below(index, kPortMasks)}, [=](const Unit &chip) {
    const vchip::ForwardMask &entry = chip.forward_mask.mask(index);
    *mask = entry.ports;
    *extra = entry.extra;
    return 0;
  });
}

int32_t rtk_l2_newMacOp_get(uint32_t unit, int32_t port, uint32_t *mode, uint32_t *action) {
  return look(unit, {on_port(port), not_null(mode, action)}, [=](const Unit &chip) {
    const vchip::NewAddress &pair = chip.learning.port(port);
    *mode = pair.mode;
    *action = number_of(pair.action);
    return 0;
  });
}

int32_t rtk_l2_newMacOp_set(uint32_t unit, int32_t port, uint32_t mode, uint32_t action) {
  return change(
      unit, {on_port(port), at_most(mode, vchip::kLearnNothing), vchip::is_frame_action(action)},
      [=](Unit &chip) {
        chip.learning.set_port(port, {mode, vchip::FrameAction{action}});
      });
}
