// SPDX-License-Identifier: MIT
#include "stp/trap_block.h"

#include <swctl-vchip/stp_view.h>
#include <swctl/platform/sdk.h>
#include <swctl/platform/trap_read.h>

#include <algorithm>
#include <string>

#include "core/check.h"
#include "core/dump.h"
#include "core/viewing.h"

namespace vchip {
namespace {

// Frame types that the model has a name for.
struct NamedType {
  uint32_t type;
  const char *name;
};
constexpr NamedType kNamedTypes[] = {{CHIP_TRAP_FRAME_MLD, "mld"},
                                     {CHIP_TRAP_FRAME_IGMP, "igmp"},
                                     {CHIP_TRAP_FRAME_BPDU, "bpdu"},
                                     {CHIP_TRAP_FRAME_LLDP, "lldp"},
                                     {CHIP_TRAP_FRAME_OWN_MAC, "own_mac"}};

const char *action_name(uint32_t action) {
  constexpr const char *kNames[] = {"forward", "drop", "trap", "copy"};
  return kNames[action];
}

void dump_actions(Dump &entry, const TrapBlock::Actions &actions) {
  for (const NamedType &named : kNamedTypes)
    entry.text(named.name, action_name(actions[named.type]));
  entry.numbers("by_type", {actions.begin(), actions.end()});
}

int32_t on_frame_type(uint32_t type) {
  return type < kFrameTypes ? 0 : VCHIP_E_INDEX;
}

int32_t an_action(uint32_t action) {
  return at_most(action, kTrapCopy);
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void TrapBlock::reset() {
  actions_.fill(kTrapDrop);
  for (Actions &actions : port_actions_) actions.fill(kTrapDrop);
  rma_groups_.fill(kTrapForward);
  bypass_.fill(0);
}

bool TrapBlock::sound() const {
  const auto all_known = [](const auto &actions) {
    return std::ranges::all_of(actions, [](uint32_t action) { return action <= kTrapCopy; });
  };
  return all_known(actions_) && std::ranges::all_of(port_actions_, all_known) &&
         all_known(rma_groups_);
}

void TrapBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.object("frames", [this](Dump &entry) { dump_actions(entry, actions_); });
    block.text("oam", action_name(rma_groups_[CHIP_TRAP_GROUP_OAM]));
    block.text("lacp", action_name(rma_groups_[CHIP_TRAP_GROUP_LACP]));
    block.numbers("rma_groups", {rma_groups_.begin(), rma_groups_.end()});
    block.flag("slow_protocols_bypass", bypass_[CHIP_TRAP_BYPASS_SLOW_PROTOCOLS] != 0);
    block.numbers("bypass", {bypass_.begin(), bypass_.end()});
    block.objects("ports", port_actions_.size(), [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      dump_actions(entry, port_actions_[port]);
    });
  });
}

TrapView traps(uint32_t unit) {
  Viewing chip;
  const TrapBlock &block = chip.unit(unit).trap;
  return {{block.actions().begin(), block.actions().end()},
          {block.rma_groups().begin(), block.rma_groups().end()},
          {block.bypass().begin(), block.bypass().end()}};
}

std::vector<uint32_t> port_traps(uint32_t unit, int32_t port) {
  Viewing chip;
  const TrapBlock &block = chip.unit(unit).trap;
  if (on_port(port) != 0) throw std::out_of_range("no port " + std::to_string(port));
  return {block.port_actions(port).begin(), block.port_actions(port).end()};
}

}  // namespace vchip

int32_t rtk_trap_mgmtFrameAction_set(uint32_t unit, uint32_t type, uint32_t action) {
  return vchip::change(unit, {vchip::on_frame_type(type), vchip::an_action(action)},
                       [=](vchip::Unit &chip) { chip.trap.set_action(type, action); });
}

int32_t rtk_trap_portMgmtFrameAction_set(uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t action) {
  return vchip::change(unit,
                       {vchip::on_port(port), vchip::on_frame_type(type), vchip::an_action(action)},
                       [=](vchip::Unit &chip) { chip.trap.set_port_action(port, type, action); });
}

int32_t rtk_trap_rmaGroupAction_set(uint32_t unit, uint32_t group, uint32_t action) {
  return vchip::change(unit,
                       {group < vchip::kRmaGroups ? 0 : VCHIP_E_INDEX, vchip::an_action(action)},
                       [=](vchip::Unit &chip) { chip.trap.set_rma_group(group, action); });
}

int32_t rtk_trap_bypassStp_set(uint32_t unit, uint32_t type, uint32_t enable) {
  return vchip::change(unit, {type < vchip::kBypassTypes ? 0 : VCHIP_E_INDEX, vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.trap.set_bypass(type, enable); });
}

int32_t swctl_platform_trap_frame_get(uint32_t unit, uint32_t type, uint32_t *action) {
  return vchip::look(unit, {vchip::not_null(action), vchip::on_frame_type(type)},
                     [=](const vchip::Unit &chip) {
                       *action = chip.trap.actions()[type];
                       return 0;
                     });
}

int32_t swctl_platform_trap_port_frame_get(uint32_t unit, int32_t port, uint32_t type,
                                           uint32_t *action) {
  return vchip::look(unit,
                     {vchip::on_port(port), vchip::not_null(action), vchip::on_frame_type(type)},
                     [=](const vchip::Unit &chip) {
                       *action = chip.trap.port_actions(port)[type];
                       return 0;
                     });
}

int32_t swctl_platform_trap_group_get(uint32_t unit, uint32_t group, uint32_t *action) {
  return vchip::look(unit, {vchip::not_null(action), vchip::below(group, vchip::kRmaGroups)},
                     [=](const vchip::Unit &chip) {
                       *action = chip.trap.rma_groups()[group];
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
