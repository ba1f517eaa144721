// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "chip/call.h"
#include "chip/limits.h"
#include "config/kinds.h"
#include "config/kinds/words.h"
#include "config/plain.h"
#include "number_list.h"

namespace swsh {
namespace {

// A group: the words "to 20 ingress 1-3 egress 1 flows". One that is disabled keeps
// what it mirrors and has no "to".
struct MirrorGroup {
  std::string to;
  int64_t ingress = 0;
  int64_t egress = 0;
  bool flows = false;

  bool is_empty() const { return to.empty() && ingress == 0 && egress == 0 && !flows; }
  Content words() const;
};

Content MirrorGroup::words() const {
  if (is_empty()) return std::nullopt;
  const std::string all = (to.empty() ? "" : " to " + to) + list_words("ingress", ingress) +
                          list_words("egress", egress) + (flows ? " flows" : "");
  return all.substr(1);
}

int64_t listed_mask(const std::string &words, const char *keyword) {
  const std::string list = word_after(words, keyword, "");
  return list.empty() ? 0
                      : interface_mask(parse_number_list(list, 0, USER_FRONT_INTERFACES).numbers);
}

MirrorGroup group_in(const Content &words) {
  if (!words) return {};
  return {word_after(*words, "to", ""), listed_mask(*words, "ingress"),
          listed_mask(*words, "egress"), words->ends_with("flows")};
}

void read_mirror_group(SettingReader &reader, uint32_t group) {
  const std::string what = "mirror group " + std::to_string(group);
  const chip_mirror_entry entry = ask(SWSH_CALL(rtk_mirror_group_get), what, 0u, group);
  const auto mask = [&](uint32_t ports) {
    return interface_mask(reader.board.interfaces_of(ports));
  };
  const auto to = reader.board.interfaces().of(static_cast<int32_t>(entry.mirroring_port));
  MirrorGroup read = {"", mask(entry.ingress), mask(entry.egress), entry.field15 != 0};
  const bool mirrors = read.ingress != 0 || read.egress != 0 || read.flows;
  if (entry.enable != 0 && (!to || !mirrors)) {
    reader.leave_out(std::to_string(group), "no command makes such a group");
    return;
  }
  if (entry.enable != 0) read.to = std::to_string(*to);
  reader.put({group}, read.words());
}

void add_group(MirrorGroup &group, Statement &statement) {
  const Argument *direction = statement.take("direction");
  const int64_t ports = take_interfaces(statement, "ports");
  const std::string way = direction == nullptr ? "both" : direction->word;
  const int64_t to = statement.take("to")->number;
  statement.board.expect({to});
  group.to = std::to_string(to);
  if (way != "egress") group.ingress |= ports;
  if (way != "ingress") group.egress |= ports;
  if (statement.take("flows") != nullptr) group.flows = true;
}

void remove_group(MirrorGroup &group, Statement &statement) {
  if (statement.command == "mirror reset") {
    group = {};
    return;
  }
  const bool whole = !statement.arguments.has("ports");
  const int64_t ports = take_interfaces(statement, "ports");
  group.ingress &= ~ports;
  group.egress &= ~ports;
  if (whole || (group.ingress == 0 && group.egress == 0)) group.to.clear();
}

bool take_mirror(Statement &statement, Draft &draft) {
  const Id id = {statement.take("GROUP")->number};
  MirrorGroup group = group_in(draft.at(id));
  if (statement.command == "mirror add") {
    add_group(group, statement);
  } else {
    remove_group(group, statement);
  }
  draft.put(id, group.words());
  return true;
}

// Adding takes nothing out.
bool has_less(const std::string &from, const std::string &to) {
  const MirrorGroup before = group_in(from);
  const MirrorGroup after = group_in(to);
  return (before.ingress & ~after.ingress) != 0 || (before.egress & ~after.egress) != 0 ||
         (before.flows && !after.flows);
}

void change_mirror(const Change &change, Commands &commands) {
  if (!change.to) {
    commands.push_back("mirror reset " + change.ids);
    return;
  }
  const MirrorGroup group = group_in(change.to);
  const MirrorGroup before = group_in(change.from);
  const bool enabled = !group.to.empty();
  const bool redirected = group.to != before.to;
  // A disabled group is made with any port to copy to, and then disabled.
  const std::string add = "mirror add " + change.ids + " to " + (enabled ? group.to : "0");
  const auto ports = [&](int64_t mask, const char *direction) {
    if (mask == 0) return;
    commands.push_back(add + list_words("ports", mask) + " direction " + direction);
  };
  const int64_t ingress = redirected ? group.ingress : group.ingress & ~before.ingress;
  const int64_t egress = redirected ? group.egress : group.egress & ~before.egress;
  ports(ingress & egress, "both");
  ports(ingress & ~egress, "ingress");
  ports(egress & ~ingress, "egress");
  if (group.flows && (redirected || !before.flows)) commands.push_back(add + " flows");
  if (!enabled) commands.push_back("mirror del " + change.ids);
}

}  // namespace

void add_mirror_kinds(Kinds &kinds, const Board &) {
  SettingKind kind;
  kind.object = "mirror";
  kind.on_unit_zero = true;
  kind.commands = {"mirror add", "mirror del", "mirror reset"};
  kind.usual = [](const Id &) { return Content(); };
  kind.read = [](SettingReader &reader) {
    for (uint32_t group = 0; group <= kLastMirrorGroup; ++group) read_mirror_group(reader, group);
  };
  kind.take = take_mirror;
  kind.change = change_mirror;
  kind.remade = has_less;
  kinds.push_back(std::move(kind));
}

}  // namespace swsh
