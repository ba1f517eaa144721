// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/platform/vlan_read.h>
#include <swctl/stp.h>

#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/plain.h"

namespace swsh {
namespace {

constexpr char kInstanceKind[] = "stp instance";

bool instance_exists(const SettingReader &reader, int64_t instance) {
  return ask(SWSH_CALL(user_stp_isMstpInstanceExist_get), "instance " + std::to_string(instance),
             kLead, reader.context.unit, static_cast<uint32_t>(instance)) != 0;
}

SettingKind instance_kind() {
  SettingKind kind;
  kind.object = "stp";
  kind.name = "instance";
  kind.goes_last = true;
  kind.commands = {"stp instance add", "stp instance del"};
  kind.usual = [](const Id &id) { return id.number == 0 ? Content("") : std::nullopt; };
  kind.read = [](SettingReader &reader) {
    for (int64_t instance = 0; instance <= kLastInstance; ++instance)
      reader.put({instance}, instance_exists(reader, instance) ? Content("") : std::nullopt);
  };
  kind.take = [](Statement &statement, Draft &draft) {
    const bool add = statement.command == "stp instance add";
    draft.put({statement.take("INSTANCE")->number}, add ? Content("") : std::nullopt);
    return true;
  };
  kind.change = [](const Change &change, Commands &commands) {
    commands.push_back((change.to ? "stp instance add " : "stp instance del ") + change.ids);
  };
  return kind;
}

SettingKind instance_of_vlan_kind() {
  SettingKind kind;
  kind.object = "stp";
  kind.name = "vlan";
  kind.needs = {"swctl_platform_vlan_next"};
  kind.merges = true;
  kind.removal_merges = true;
  kind.commands = {"stp vlan add", "stp vlan del"};
  kind.usual = [](const Id &) { return Content(); };
  kind.read = [](SettingReader &reader) {
    each_record(SWSH_OPTIONAL_CALL(swctl_platform_vlan_next), "VLAN", reader.context.unit, 1,
                [&](const swctl_platform_vlan &vlan) {
                  if (vlan.instance != 0)
                    reader.put({vlan.index}, "instance " + std::to_string(vlan.instance));
                });
  };
  kind.take = [](Statement &statement, Draft &draft) {
    const Argument *instance = statement.take("instance");
    for (const int64_t vid : statement.take("VLANS")->numbers) {
      const bool none = instance == nullptr || instance->number == 0;
      draft.put({vid}, none ? Content() : "instance " + std::to_string(instance->number));
    }
    return true;
  };
  kind.change = [](const Change &change, Commands &commands) {
    commands.push_back(change.to ? "stp vlan add " + change.ids + ' ' + *change.to
                                 : "stp vlan del " + change.ids);
  };
  kind.owner = [](const Id &id) { return Owner{"vlan", id}; };
  return kind;
}

// The chip has one state for listening and learning.
int64_t shown_state(int64_t state) {
  return state == USER_STP_LEARNING ? int64_t{USER_STP_LISTENING} : state;
}

SettingKind states_kind(int64_t instance, const Board &board) {
  const std::string number = std::to_string(instance);
  const auto read = [instance](const SettingReader &reader, int64_t interface) -> int64_t {
    const Port port = reader.board.port(interface);
    return shown_state(ask(SWSH_CALL(user_stg_stp_get), port, kLead, reader.context.unit,
                           static_cast<uint32_t>(instance), port.chip));
  };
  SettingKind kind = plain_kind({.name = "state in instance " + number,
                                 .command = "stp set " + number + " % state @",
                                 .ids = board.front_interfaces(),
                                 .read = read,
                                 .usual = instance == 0 ? USER_STP_FORWARDING : USER_STP_DISABLED,
                                 .reads_as = shown_state});
  kind.read = [instance, read_all = kind.read](SettingReader &reader) {
    if (instance_exists(reader, instance)) read_all(reader);
  };
  kind.owner = [instance](const Id &) { return Owner{kInstanceKind, {instance}}; };
  return kind;
}

}  // namespace

void add_stp_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(instance_kind());
  kinds.push_back(instance_of_vlan_kind());
  for (int64_t instance = 0; instance <= kLastInstance; ++instance)
    kinds.push_back(states_kind(instance, board));
}

}  // namespace swsh
