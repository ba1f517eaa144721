// SPDX-License-Identifier: MIT
#include <swctl/l2.h>

#include <algorithm>

#include "chip/address_table.h"
#include "chip/call.h"
#include "config/kinds.h"
#include "config/kinds/table_kind.h"
#include "config/plain.h"
#include "mac_text.h"

namespace swsh {
namespace {

constexpr int64_t kUsualAging = 300;

std::string binding(int64_t port, int64_t trunk) {
  return "port " + std::to_string(port) + (trunk == 0 ? "" : " trunk " + std::to_string(trunk));
}

Id address_id(const uint8_t *mac, int64_t vid) {
  return {vid, mac_text(mac) + " vlan " + std::to_string(vid)};
}

// What was learned is no setting.
void read_static_addresses(SettingReader &reader) {
  for (const user_l2_addr_t &entry : read_addresses()) {
    if ((entry.flags & USER_L2_FLAG_STATIC) == 0) continue;
    const Id id = address_id(entry.mac, entry.vid);
    const auto port = reader.board.interfaces().of(entry.port);
    if (!port || !STATIC_ENTRY_TEST(entry.flags)) {
      reader.leave_out(id.text, "no command adds such an address");
    } else {
      reader.put(id, binding(*port, entry.tgid));
    }
  }
}

Id id_given(Statement &statement) {
  uint8_t mac[6] = {};
  std::ranges::transform(statement.take("MAC")->numbers, mac,
                         [](int64_t byte) { return static_cast<uint8_t>(byte); });
  return address_id(mac, statement.take("vlan")->number);
}

bool take_address(Statement &statement, Draft &draft) {
  if (statement.arguments.has("dynamic")) return false;
  const Id id = id_given(statement);
  if (statement.command == "mac del") {
    draft.put(id, std::nullopt);
    return true;
  }
  statement.take("static");
  const int64_t port = statement.take("port")->number;
  statement.board.expect({port});
  const Argument *trunk = statement.take("trunk");
  draft.put(id, binding(port, trunk == nullptr ? 0 : trunk->number));
  return true;
}

}  // namespace

void add_mac_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(plain_kind({.name = "aging",
                              .command = "mac aging @",
                              .ids = {},
                              .read = [](const SettingReader &reader, int64_t) -> int64_t {
                                return ask(SWSH_CALL(user_mac_age_time_get), reader.context, kLead);
                              },
                              .usual = kUsualAging,
                              .on_unit_zero = true}));
  kinds.push_back(
      plain_kind({.name = "limit",
                  .command = "mac limit % max @",
                  .ids = board.front_interfaces(),
                  .read = [](const SettingReader &reader, int64_t interface) -> int64_t {
                    const Port port = reader.board.port(interface);
                    user_l2_learn_limit_t limit = {};
                    limit.port = port.chip;
                    perform(SWSH_CALL(user_mac_learn_limit_get), port, kLead, &limit);
                    return limit.limit;
                  },
                  .usual = USER_LEARN_LIMIT_MAX,
                  .on_unit_zero = true}));
  SettingKind kind = table_kind("mac", "", "mac add", "mac del", true);
  kind.on_unit_zero = true;
  kind.read = read_static_addresses;
  kind.take = take_address;
  kind.owner = [](const Id &id) { return Owner{"vlan", {id.number}}; };
  kind.outlives_owner = true;
  kinds.push_back(std::move(kind));
}

}  // namespace swsh
