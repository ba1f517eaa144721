// SPDX-License-Identifier: MIT
#include "chip/limits.h"
#include "chip/vlans.h"
#include "config/kinds.h"
#include "config/kinds/vlan_rules.h"
#include "config/kinds/words.h"
#include "config/plain.h"
#include "number_list.h"

namespace swsh {
namespace {

constexpr int64_t kVlanAtPowerOn = 1;

// The interfaces of a VLAN, as masks.
struct Membership {
  int64_t tagged = 0;
  int64_t untagged = 0;

  std::string words() const {
    const std::string all = list_words("tagged", tagged) + list_words("untagged", untagged);
    return all.empty() ? "" : all.substr(1);
  }
};

int64_t mask_in(const std::string &words, const char *keyword) {
  const std::string list = word_after(words, keyword, "");
  if (list.empty()) return 0;
  return interface_mask(parse_number_list(list, 0, USER_FRONT_INTERFACES).numbers);
}

Membership membership_in(const std::string &words) {
  return {mask_in(words, "tagged"), mask_in(words, "untagged")};
}

// Thousands of VLANs have few memberships between them.
class MembershipWords {
 public:
  explicit MembershipWords(const Board &board) : board_(board) {}

  const std::string &of(const Vlan &vlan) {
    std::string &words = known_[{vlan.tagged(), vlan.untagged()}];
    if (words.empty()) {
      const Membership membership = {interface_mask(board_.interfaces_of(vlan.tagged())),
                                     interface_mask(board_.interfaces_of(vlan.untagged()))};
      words = membership.words();
    }
    return words;
  }

 private:
  const Board &board_;
  std::map<std::pair<uint32_t, uint32_t>, std::string> known_;
};

void read_vlan_settings(SettingReader &reader) {
  MembershipWords words(reader.board);
  bool has_first = false;
  for (const Vlan &vlan : read_vlans(reader.context)) {
    has_first |= vlan.vid == kVlanAtPowerOn;
    reader.put({vlan.vid}, words.of(vlan));
  }
  if (!has_first) reader.put({kVlanAtPowerOn}, std::nullopt);
}

Membership take_membership(Statement &statement) {
  const int64_t tagged = take_interfaces(statement, "tagged");
  const int64_t untagged = take_interfaces(statement, "untagged");
  const std::vector<int64_t> both = mask_interfaces(tagged & untagged);
  if (both.empty()) return {tagged, untagged};
  const std::string list = number_list_text(both);
  throw CommandError(wrong_usage("port " + list + " is both tagged and untagged", list));
}

Content with_ports(const Content &before, const Membership &more) {
  Membership all = before ? membership_in(*before) : Membership();
  all.tagged = (all.tagged & ~more.untagged) | more.tagged;
  all.untagged = (all.untagged & ~more.tagged) | more.untagged;
  return all.words();
}

Content without_ports(const Content &before, int64_t ports) {
  Membership all = membership_in(*before);
  all.tagged &= ~ports;
  all.untagged &= ~ports;
  return all.words();
}

void expect_in_file(const Draft &draft, int64_t vid) {
  if (draft.at({vid})) return;
  const std::string number = std::to_string(vid);
  throw CommandError(wrong_usage("there is no VLAN " + number + " up to this line", number));
}

bool take_vlan(Statement &statement, Draft &draft) {
  const std::string &command = statement.command;
  const std::vector<int64_t> vids = statement.take("VLANS")->numbers;
  const Membership ports = take_membership(statement);
  const int64_t leaving = take_interfaces(statement, "PORTS");
  for (const int64_t vid : vids) {
    if (command != "vlan add") expect_in_file(draft, vid);
    if (command == "vlan set") draft.put({vid}, ports.words());
    if (command == "vlan del") draft.put({vid}, std::nullopt);
    if (command == "vlan port del") draft.put({vid}, without_ports(draft.at({vid}), leaving));
    if (command == "vlan add" || command == "vlan port add")
      draft.put({vid}, with_ports(draft.at({vid}), ports));
  }
  return true;
}

void change_vlan(const Change &change, Commands &commands) {
  const std::string command = !change.to ? "vlan del " : change.from ? "vlan set " : "vlan add ";
  const std::string words = change.to && !change.to->empty() ? ' ' + *change.to : "";
  commands.push_back(command + change.ids + words);
}

SettingKind vlan_kind(const Board &board) {
  SettingKind kind;
  kind.object = "vlan";
  kind.merges = true;
  kind.removal_merges = true;
  kind.goes_last = true;
  kind.commands = {"vlan add", "vlan set", "vlan del", "vlan port add", "vlan port del"};
  const Membership all = {0, interface_mask(board.all_interfaces())};
  kind.usual = [words = all.words()](const Id &id) {
    return id.number == kVlanAtPowerOn ? Content(words) : std::nullopt;
  };
  kind.read = read_vlan_settings;
  kind.take = take_vlan;
  kind.change = change_vlan;
  return kind;
}

// The front ports' are settings of the object port.
SettingKind cpu_default_kind() {
  return plain_kind({.name = "default of the CPU",
                     .command = "vlan default @ ports 0",
                     .ids = {},
                     .read = [](const SettingReader &reader, int64_t) -> int64_t {
                       return read_pvid(reader.context, kCpuInterface);
                     },
                     .usual = kVlanAtPowerOn});
}

}  // namespace

void add_vlan_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(vlan_kind(board));
  kinds.push_back(cpu_default_kind());
  add_vlan_rule_kinds(kinds);
}

}  // namespace swsh
