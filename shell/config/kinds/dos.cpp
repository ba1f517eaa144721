// SPDX-License-Identifier: MIT
#include "objects/dos.h"

#include <swctl/platform/port_read.h>
#include <swctl/port.h>

#include "chip/call.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/plain.h"

namespace swsh {
namespace {

SettingKind action_kind() {
  SettingKind kind = plain_kind({.name = "action",
                                 .command = "dos set % action @",
                                 .ids = {},
                                 .read = {},
                                 .usual = 0,
                                 .on_unit_zero = true});
  kind.read = [](SettingReader &reader) {
    for (const AttackReading &each : read_attack_actions(reader.context))
      reader.put({each.type}, each.action != 0 ? "drop" : "forward");
  };
  return kind;
}

}  // namespace

void add_dos_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(action_kind());
  kinds.push_back(
      plain_kind({.name = "protection",
                  .command = "dos protect ports % state @",
                  .ids = board.front_interfaces(),
                  .read = [](const SettingReader &reader, int64_t interface) -> int64_t {
                    const Port port = reader.board.port(interface);
                    return ask(SWSH_OPTIONAL_CALL(swctl_platform_port_protection_get), port,
                               reader.context.unit, port.chip);
                  },
                  .usual = 0,
                  .needs = {"swctl_platform_port_protection_get"}}));
}

}  // namespace swsh
