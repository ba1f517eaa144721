// SPDX-License-Identifier: MIT
#include "stp/stp_block.h"

#include <swctl-vchip/stp_view.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <atomic>
#include <string>

#include "core/check.h"
#include "core/dump.h"
#include "core/viewing.h"

namespace vchip {
namespace {

const char *state_name(uint32_t state) {
  constexpr const char *kNames[] = {"disabled", "blocking", "learning", "forwarding"};
  return kNames[state];
}

// A killed call must not leave an instance with half of its states.
void set_exists(StpInstance &instance, uint32_t exists) {
  std::atomic_ref<uint32_t>(instance.exists).exchange(exists);
}

std::vector<uint32_t> existing(const StpBlock &block) {
  std::vector<uint32_t> instances;
  for (uint32_t instance = 0; instance < kInstances; ++instance)
    if (block.exists(instance)) instances.push_back(instance);
  return instances;
}

int32_t on_instance(uint32_t instance) {
  return instance < kInstances ? 0 : VCHIP_E_INDEX;
}

int32_t on_vlan_id(uint32_t vid) {
  return vid >= kFirstVlan && vid <= kLastVlan ? 0 : VCHIP_E_VALUE;
}

// The VLANs of an instance that is about to go fall back to the common one.
void leave_instance(VlanBlock &table, uint32_t instance) {
  for (uint32_t vid = kFirstVlan; vid <= kLastVlan; ++vid)
    if (table.vlan(vid).stg == instance) table.set_stg(vid, kCommonInstance);
}

}  // namespace

void StpBlock::make(uint32_t instance, uint32_t state) {
  set_exists(instances_[instance], 0);
  instances_[instance].states.fill(state);
  set_exists(instances_[instance], 1);
}

void StpBlock::reset() {
  for (StpInstance &instance : instances_) set_exists(instance, 0);
  make(kCommonInstance, kStpForwarding);
}

void StpBlock::create(uint32_t instance) {
  make(instance, kStpDisabled);
}

void StpBlock::destroy(uint32_t instance) {
  set_exists(instances_[instance], 0);
}

bool StpBlock::sound() const {
  return std::ranges::all_of(instances_, [](const StpInstance &instance) {
    return std::ranges::all_of(instance.states,
                               [](uint32_t state) { return state <= kStpForwarding; });
  });
}

void StpBlock::dump(const char *name, Dump &unit) const {
  const std::vector<uint32_t> instances = existing(*this);
  unit.objects(name, instances.size(), [&](Dump &entry, size_t place) {
    std::vector<std::string> names;
    for (const uint32_t state : instances_[instances[place]].states)
      names.push_back(state_name(state));
    entry.number("instance", instances[place]);
    entry.texts("states", names);
  });
}

std::vector<StpView> stp_instances(uint32_t unit) {
  Viewing chip;
  const StpBlock &block = chip.unit(unit).stp;
  std::vector<StpView> all;
  for (const uint32_t instance : existing(block)) {
    StpView view = {instance, {}};
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      view.states.push_back(block.state(instance, port));
    all.push_back(view);
  }
  return all;
}

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
  return vchip::change_if(unit, {vchip::on_vlan_id(vid), on_instance(instance)}, [=](Unit &chip) {
    if (!chip.vlan.exists(vid)) return VCHIP_E_VLAN;
    if (!chip.stp.exists(instance)) return VCHIP_E_INSTANCE;
    chip.vlan.set_stg(vid, instance);
    return 0;
  });
}
