// SPDX-License-Identifier: MIT
#include <swctl/port.h>

#include "chip/call.h"
#include "config/kinds.h"
#include "config/kinds/words.h"
#include "config/plain.h"
#include "number_list.h"

namespace swsh {
namespace {

std::string flood_words(int64_t mask) {
  return mask == 0 ? kNoPorts : number_list_text(mask_interfaces(mask));
}

void read_flood(SettingReader &reader) {
  const user_pbmp_t ports =
      ask(SWSH_CALL(user_ulf_flood_ports_get), reader.context, kLead, reader.context.unit);
  reader.put({}, flood_words(interface_mask(reader.board.interfaces_of(ports.word[0]))));
}

int64_t flood_mask(const std::string &words) {
  if (words == kNoPorts) return 0;
  return interface_mask(parse_number_list(words, 0, USER_FRONT_INTERFACES).numbers);
}

bool take_flood(Statement &statement, Draft &draft) {
  const int64_t ports = take_interfaces(statement, "PORTS");
  const int64_t before = flood_mask(*draft.at({}));
  if (statement.command == "flood set") draft.put({}, flood_words(ports));
  if (statement.command == "flood add") draft.put({}, flood_words(before | ports));
  if (statement.command == "flood remove") draft.put({}, flood_words(before & ~ports));
  return true;
}

}  // namespace

void add_flood_kinds(Kinds &kinds, const Board &board) {
  SettingKind kind;
  kind.object = "flood";
  kind.commands = {"flood set", "flood add", "flood remove"};
  const std::string all = flood_words(interface_mask(board.all_interfaces()));
  kind.usual = [all](const Id &) { return all; };
  kind.read = read_flood;
  kind.take = take_flood;
  kind.change = change_by("flood set @");
  kinds.push_back(std::move(kind));
}

}  // namespace swsh
