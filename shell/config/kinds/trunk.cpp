// SPDX-License-Identifier: MIT
#include <swctl/platform/trunk_read.h>

#include <set>

#include "chip/call.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/kinds/words.h"
#include "config/plain.h"
#include "number_list.h"

namespace swsh {
namespace {

constexpr int64_t kSourcePort = CHIP_TRUNK_HASH_SOURCE_PORT;

int64_t listed(const std::string &ports) {
  return interface_mask(parse_number_list(ports, 0, USER_FRONT_INTERFACES).numbers);
}

SettingKind members_kind() {
  SettingKind kind;
  kind.object = "trunk";
  kind.needs = {"swctl_platform_trunk_next"};
  kind.on_unit_zero = true;
  kind.commands = {"trunk set", "trunk del"};
  kind.usual = [](const Id &) { return Content(); };
  kind.read = [](SettingReader &reader) {
    each_record(SWSH_OPTIONAL_CALL(swctl_platform_trunk_next), "trunk", reader.context.unit, 0,
                [&](const swctl_platform_trunk &trunk) {
                  const auto members = reader.board.interfaces_of(trunk.members);
                  if (members.empty()) {
                    reader.leave_out(std::to_string(trunk.index), "its ports are on no interface");
                  } else {
                    reader.put({trunk.index}, number_list_text(members));
                  }
                });
  };
  kind.take = [](Statement &statement, Draft &draft) {
    const int64_t ports = take_interfaces(statement, "PORTS");
    const Content members = ports == 0 ? Content() : number_list_text(mask_interfaces(ports));
    draft.put({statement.take("TRUNK")->number}, members);
    return true;
  };
  kind.check = [](const Contents &trunks, const Complaint &complain) {
    std::set<int64_t> taken;
    for (const auto &[id, ports] : trunks)
      for (const int64_t port : parse_number_list(*ports, 0, USER_FRONT_INTERFACES).numbers)
        if (!taken.insert(port).second)
          complain(id, "port " + std::to_string(port) + " is in another trunk too");
  };
  // A port is in one trunk at a time: one that leaves may be wanted in another.
  kind.remade = [](const std::string &from, const std::string &to) {
    return (listed(from) & ~listed(to)) != 0;
  };
  kind.change = [](const Change &change, Commands &commands) {
    commands.push_back(change.to ? "trunk set " + change.ids + ' ' + *change.to
                                 : "trunk del " + change.ids);
  };
  return kind;
}

}  // namespace

void add_trunk_kinds(Kinds &kinds, const Board &) {
  kinds.push_back(plain_kind({.name = "hash",
                              .command = "trunk hash @",
                              .ids = {},
                              .read = [](const SettingReader &reader, int64_t) -> int64_t {
                                return ask(SWSH_OPTIONAL_CALL(swctl_platform_trunk_hash_get),
                                           reader.context, reader.context.unit,
                                           CHIP_TRUNK_ALGORITHM);
                              },
                              .usual = kSourcePort,
                              .needs = {"swctl_platform_trunk_hash_get"},
                              .on_unit_zero = true}));
  kinds.push_back(members_kind());
}

}  // namespace swsh
