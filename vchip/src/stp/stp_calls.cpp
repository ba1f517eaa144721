// SPDX-License-Identifier: MIT
// The SDK's calls on spanning-tree instances.
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace vchip {
namespace {

int32_t on_instance(uint32_t instance) {
  return below(instance, kInstances);
}

// The VLANs of an instance that is about to go fall back to the common one.
void leave_instance(VlanBlock &table, uint32_t instance) {
  for (uint32_t vid = kFirstVlan; vid <= kLastVlan; ++vid)
    if (table.vlan(vid).stg == instance) table.set_stg(vid, kCommonInstance);
}

}  // namespace
}  // namespace vchip

using vchip::on_instance;
using vchip::on_port;
using vchip::Unit;

int32_t rtk_stp_mstpInstance_create(uint32_t unit, uint32_t instance) {
  return vchip::change_if(unit, {on_instance(instance)}, [=](Unit &chip) {
    if (chip.stp.exists(instance)) return VCHIP_E_INSTANCE_EXISTS;
    chip.stp.create(instance);
    return 0;
  });
}

int32_t rtk_stp_mstpInstance_destroy(uint32_t unit, uint32_t instance) {
  return vchip::change_if(unit, {on_instance(instance)}, [=](Unit &chip) {
    if (instance == vchip::kCommonInstance) return VCHIP_E_VALUE;
    if (!chip.stp.exists(instance)) return VCHIP_E_INSTANCE;
    vchip::leave_instance(chip.vlan, instance);
    chip.stp.destroy(instance);
    return 0;
  });
}

int32_t rtk_stp_isMstpInstanceExist_get(uint32_t unit, uint32_t instance, uint32_t *exists) {
  return vchip::look(unit, {vchip::not_null(exists), on_instance(instance)}, [=](const Unit &chip) {
    *exists = chip.stp.exists(instance) ? 1 : 0;
    return 0;
  });
}

int32_t rtk_stp_mstpState_get(uint32_t unit, uint32_t instance, int32_t port, uint32_t *state) {
  return vchip::look(unit, {on_port(port), vchip::not_null(state), on_instance(instance)},
                     [=](const Unit &chip) {
                       if (!chip.stp.exists(instance)) return VCHIP_E_INSTANCE;
                       *state = chip.stp.state(instance, port);
                       return 0;
                     });
}

int32_t rtk_stp_mstpState_set(uint32_t unit, uint32_t instance, int32_t port, uint32_t state) {
  return vchip::change_if(
      unit, {on_port(port), on_instance(instance), vchip::at_most(state, vchip::kStpForwarding)},
      [=](Unit &chip) {
        if (!chip.stp.exists(instance)) return VCHIP_E_INSTANCE;
        chip.stp.set_state(instance, port, state);
        return 0;
      });
}

int32_t rtk_vlan_stg_set(uint32_t unit, uint32_t vid, uint32_t instance) {
  return vchip::change_if(unit, {vchip::on_vlan(vid), on_instance(instance)}, [=](Unit &chip) {
    if (!chip.vlan.exists(vid)) return VCHIP_E_VLAN;
    if (!chip.stp.exists(instance)) return VCHIP_E_INSTANCE;
    chip.vlan.set_stg(vid, instance);
    return 0;
  });
}
