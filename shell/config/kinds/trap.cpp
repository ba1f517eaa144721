// SPDX-License-Identifier: MIT
#include <swctl/platform/trap_read.h>

#include "chip/call.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/plain.h"

namespace swsh {
namespace {

constexpr int64_t kUsualTrap = CHIP_TRAP_DROP;
constexpr int64_t kUsualGroupTrap = CHIP_TRAP_FORWARD;

// Of the whole unit.
template <typename Getter>
void add_trap(Kinds &kinds, const char *frames, const Getter &getter, uint32_t code,
              int64_t usual) {
  kinds.push_back(plain_kind({.name = frames,
                              .command = std::string("trap set ") + frames + " @",
                              .ids = {},
                              .read = [=](const SettingReader &reader, int64_t) -> int64_t {
                                return ask(getter, std::string(frames), reader.context.unit, code);
                              },
                              .usual = usual,
                              .needs = {getter.name}}));
}

void add_port_trap(Kinds &kinds, const Board &board, const char *frames, uint32_t code) {
  constexpr auto kGet = SWSH_OPTIONAL_CALL(swctl_platform_trap_port_frame_get);
  kinds.push_back(
      plain_kind({.name = frames,
                  .command = std::string("trap set ") + frames + " @ ports %",
                  .ids = board.front_interfaces(),
                  .read = [=](const SettingReader &reader, int64_t interface) -> int64_t {
                    const Port port = reader.board.port(interface);
                    return ask(kGet, port, reader.context.unit, port.chip, code);
                  },
                  .usual = kUsualTrap,
                  .needs = {kGet.name}}));
}

}  // namespace

void add_trap_kinds(Kinds &kinds, const Board &board) {
  constexpr auto kFrame = SWSH_OPTIONAL_CALL(swctl_platform_trap_frame_get);
  constexpr auto kGroup = SWSH_OPTIONAL_CALL(swctl_platform_trap_group_get);
  add_trap(kinds, "igmp", kFrame, CHIP_TRAP_FRAME_IGMP, kUsualTrap);
  add_trap(kinds, "mld", kFrame, CHIP_TRAP_FRAME_MLD, kUsualTrap);
  add_trap(kinds, "own-mac", kFrame, CHIP_TRAP_FRAME_OWN_MAC, kUsualTrap);
  add_port_trap(kinds, board, "bpdu", CHIP_TRAP_FRAME_BPDU);
  add_port_trap(kinds, board, "lldp", CHIP_TRAP_FRAME_LLDP);
  add_trap(kinds, "lacp", kGroup, CHIP_TRAP_GROUP_LACP, kUsualGroupTrap);
  add_trap(kinds, "oam", kGroup, CHIP_TRAP_GROUP_OAM, kUsualGroupTrap);
}

}  // namespace swsh
