// SPDX-License-Identifier: MIT
#include <swctl/platform/trap_records.h>

#include "document/dump.h"
#include "stp/trap_block.h"

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

const char *action_name(FrameAction action) {
  constexpr const char *kNames[] = {"forward", "drop", "trap", "copy"};
  return kNames[number_of(action)];
}

void dump_actions(Dump &entry, const TrapBlock::Actions &actions) {
  for (const NamedType &named : kNamedTypes)
    entry.text(named.name, action_name(actions[named.type]));
  entry.numbers("by_type", numbers_of(actions));
}

}  // namespace

void TrapBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.object("frames", [this](Dump &entry) { dump_actions(entry, actions_); });
    block.text("oam", action_name(rma_groups_[CHIP_TRAP_GROUP_OAM]));
    block.text("lacp", action_name(rma_groups_[CHIP_TRAP_GROUP_LACP]));
    block.numbers("rma_groups", numbers_of(rma_groups_));
    block.flag("slow_protocols_bypass", bypass_[CHIP_TRAP_BYPASS_SLOW_PROTOCOLS] != 0);
    block.numbers("bypass", {bypass_.begin(), bypass_.end()});
    block.objects("ports", port_actions_.size(), [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      dump_actions(entry, port_actions_[port]);
    });
  });
}

}  // namespace vchip
