// SPDX-License-Identifier: MIT
#include <swctl/platform/port_read.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <algorithm>

#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "command/value.h"
#include "config/description.h"
#include "config/kinds.h"
#include "config/kinds/words.h"
#include "config/plain.h"
#include "port/commands.h"
#include "text.h"

namespace swsh {
namespace {

constexpr uint32_t kSpeeds[] = {10, 100, 1000, 10000};  // by the SDK's code
constexpr uint32_t kUsualAbility = USER_ABILITY_10_HALF | USER_ABILITY_10_FULL |
                                   USER_ABILITY_100_HALF | USER_ABILITY_100_FULL |
                                   USER_ABILITY_1000_FULL | USER_ABILITY_PAUSE;
constexpr uint32_t kBothPauses = USER_ABILITY_PAUSE | USER_ABILITY_ASYMMETRIC_PAUSE;
constexpr int64_t kUsualFrameLength = 1518;
constexpr uint32_t kInnerTpid = 0x8100;
constexpr uint32_t kOuterTpid = 0x88a8;

template <typename Getter>
auto of_port(const Getter &getter) {
  return [=](const SettingReader &reader, int64_t interface) -> int64_t {
    return read_port(reader.context, reader.board.port(interface), getter);
  };
}

template <typename Getter>
auto of_chip_port(const Getter &getter) {
  return [=](const SettingReader &reader, int64_t interface) -> int64_t {
    const Port port = reader.board.port(interface);
    return ask(getter, port, reader.context.unit, port.chip);
  };
}

// What a port may run at: the forced mode, which is kept while autonegotiation is on, and
// what is advertised. Each command changes more of it than it says.
struct PortMode {
  std::string speed = "1000";
  std::string duplex = "full";
  bool pause = false;
  bool autoneg = true;
  uint32_t advertised = kUsualAbility;

  void force(const std::string &new_speed, const std::string &new_duplex);
  void set_pause(bool on);
  bool operator==(const PortMode &) const = default;
  Content words() const;
};

// The library takes the pause of what was in force over.
void PortMode::force(const std::string &new_speed, const std::string &new_duplex) {
  if (autoneg) pause = (advertised & USER_ABILITY_PAUSE) != 0;
  speed = new_speed;
  duplex = new_duplex;
  autoneg = false;
}

void PortMode::set_pause(bool on) {
  pause = on;
  advertised = on ? advertised | kBothPauses : advertised & ~kBothPauses;
}

const Type &ability_type() {
  static const Type type = choice_list(ability_choices());
  return type;
}

// Nothing if no command makes it so.
Content PortMode::words() const {
  const auto abilities = value_word(ability_type(), advertised);
  if (!abilities || speed.empty()) return std::nullopt;
  return "speed " + speed + " duplex " + duplex + " pause " + (pause ? "on" : "off") + " autoneg " +
         (autoneg ? "on" : "off") + " advertise " + *abilities;
}

PortMode mode_in(const std::string &words) {
  const std::string abilities = word_after(words, "advertise", "");
  const int64_t mask = parse_value(ability_type(), abilities).argument.number;
  return {word_after(words, "speed", ""), word_after(words, "duplex", ""),
          word_after(words, "pause", "") == "on", word_after(words, "autoneg", "") == "on",
          static_cast<uint32_t>(mask)};
}

void read_mode(SettingReader &reader, const Port &port) {
  const uint32_t unit = reader.context.unit;
  uint32_t speed = 0;
  uint32_t duplex = 0;
  uint32_t pause = 0;
  perform(SWSH_CALL(rtk_port_phyForceModeAbility_get), port, unit, port.chip, &speed, &duplex,
          &pause);
  PortMode mode;
  mode.speed = speed < std::size(kSpeeds) ? std::to_string(kSpeeds[speed]) : "";
  mode.duplex = duplex == USER_DUPLEX_FULL ? "full" : "half";
  mode.pause = pause != 0;
  mode.autoneg = read_port(reader.context, port, SWSH_CALL(user_port_autoneg_get)) != 0;
  mode.advertised = read_port(reader.context, port, SWSH_CALL(user_port_ability_advert_get));
  const Content words = mode.words();
  if (words) {
    reader.put({port.interface}, words);
  } else {
    reader.leave_out(std::to_string(port.interface), "no command sets its modes");
  }
}

// In the order in which port set does it.
bool take_mode(Statement &statement, Draft &draft) {
  const Argument *speed = statement.take("speed");
  const Argument *duplex = statement.take("duplex");
  const Argument *advertise = statement.take("advertise");
  const Argument *autoneg = statement.take("autoneg");
  const Argument *pause = statement.take("pause");
  const Argument *all[] = {speed, duplex, advertise, autoneg, pause};
  if (std::ranges::all_of(all, [](const Argument *each) { return each == nullptr; })) return false;
  if ((speed == nullptr) != (duplex == nullptr))
    throw CommandError(wrong_usage("speed and duplex are given together in a configuration",
                                   speed == nullptr ? "duplex" : "speed",
                                   {speed == nullptr ? "speed" : "duplex"}));
  for (const int64_t port : statement.take_ports("PORTS")) {
    PortMode mode = mode_in(*draft.at({port}));
    if (speed != nullptr) mode.force(speed->word, duplex->word);
    if (advertise != nullptr) mode.advertised = static_cast<uint32_t>(advertise->number);
    if (autoneg != nullptr) mode.autoneg = autoneg->number != 0;
    if (pause != nullptr) mode.set_pause(pause->number != 0);
    draft.put({port}, mode.words());
  }
  return true;
}

void change_mode(const Change &change, Commands &commands) {
  const PortMode to = mode_in(*change.to);
  PortMode now = mode_in(*change.from);
  std::string forced;
  if (now.speed != to.speed || now.duplex != to.duplex) {
    forced = " speed " + to.speed + " duplex " + to.duplex;
    now.force(to.speed, to.duplex);
  }
  if (now.pause != to.pause) {
    forced += std::string(" pause ") + (to.pause ? "on" : "off");
    now.set_pause(to.pause);
  }
  if (!forced.empty()) commands.push_back("port set " + change.ids + forced);
  std::string rest;
  if (now.advertised != to.advertised)
    rest = " advertise " + *value_word(ability_type(), to.advertised);
  if (now.autoneg != to.autoneg) rest += std::string(" autoneg ") + (to.autoneg ? "on" : "off");
  if (!rest.empty()) commands.push_back("port set " + change.ids + rest);
}

SettingKind mode_kind() {
  SettingKind kind;
  kind.object = "port";
  kind.name = "mode";
  kind.merges = true;
  kind.commands = {"port set"};
  kind.usual = [words = PortMode().words()](const Id &) { return words; };
  kind.read = [](SettingReader &reader) {
    for (const Port &port : reader.board.front()) read_mode(reader, port);
  };
  kind.take = take_mode;
  kind.change = change_mode;
  return kind;
}

// The chip's words for what becomes of new addresses, by the words of port set.
struct LearningWord {
  const char *word;
  uint32_t mode;
  uint32_t action;
};
constexpr LearningWord kLearningWords[] = {
    {"on", 0, 0}, {"off", 2, 1}, {"forward", 2, 0}, {"cpu", 1, 2}, {"copy", 0, 3}};

void read_learning(SettingReader &reader) {
  for (const Port &port : reader.board.front()) {
    uint32_t mode = 0;
    uint32_t action = 0;
    perform(SWSH_CALL(rtk_l2_newMacOp_get), port, reader.context.unit, port.chip, &mode, &action);
    const char *word = nullptr;
    for (const LearningWord &each : kLearningWords)
      if (each.mode == mode && each.action == action) word = each.word;
    if (word != nullptr) {
      reader.put({port.interface}, word);
    } else {
      reader.leave_out(std::to_string(port.interface), "no command sets what new addresses do");
    }
  }
}

// The library keeps some of the words over others, and none over "on".
void change_learning(const Change &change, Commands &commands) {
  const std::string set = "port set " + change.ids + " learning ";
  const bool is_kept = *change.to == "cpu" || *change.to == "copy";
  if (is_kept && *change.from != "on") commands.push_back(set + "on");
  commands.push_back(set + *change.to);
}

SettingKind learning_kind(const Board &board) {
  SettingKind kind = plain_kind({.name = "learning",
                                 .command = "port set % learning @",
                                 .ids = board.front_interfaces(),
                                 .read = {},
                                 .usual = USER_LEARN_ON,
                                 .on_unit_zero = true});
  kind.read = read_learning;
  // "restore" is what was there before, which a configuration does not know.
  kind.take = [take_word = kind.take](Statement &statement, Draft &draft) {
    const bool is_word = statement.arguments.has("learning") &&
                         statement.arguments.number("learning") != USER_LEARN_RESTORE;
    return is_word && take_word(statement, draft);
  };
  kind.change = change_learning;
  return kind;
}

std::string tpid_words(uint32_t inner, uint32_t entry, uint32_t outer) {
  return "tpid " + hexadecimal(inner) + " entry " + std::to_string(entry) +
         (outer == inner ? "" : " outer " + hexadecimal(outer));
}

void read_tpids(SettingReader &reader) {
  constexpr auto kOuter = SWSH_OPTIONAL_CALL(swctl_platform_outer_tpid_get);
  const uint32_t unit = reader.context.unit;
  for (const Port &port : reader.board.front()) {
    const uint32_t inner = read_port(reader.context, port, SWSH_CALL(user_port_tpid_get));
    const uint32_t entry = ask(SWSH_CALL(rtk_vlan_portEgrInnerTpid_get), port, unit, port.chip);
    const uint32_t outer = ask(kOuter, port, unit, entry);
    reader.put({port.interface}, tpid_words(inner, entry, outer));
  }
}

bool take_tpid(Statement &statement, Draft &draft) {
  const Argument *tpid = statement.take("tpid");
  if (tpid == nullptr) return false;
  const Argument *entry = statement.take("entry");
  const Argument *outer = statement.take("outer");
  const int64_t inner = tpid->number;
  const int64_t place = entry == nullptr ? 0 : entry->number;
  const std::string words =
      tpid_words(static_cast<uint32_t>(inner), static_cast<uint32_t>(place),
                 static_cast<uint32_t>(outer == nullptr ? inner : outer->number));
  for (const int64_t port : statement.take_ports("PORTS")) draft.put({port}, words);
  // The entry is that of the switch.
  for (const int64_t port : statement.board.front_interfaces())
    if (word_after(*draft.at({port}), "entry", "") == std::to_string(place))
      draft.put({port}, words);
  return true;
}

SettingKind tpid_kind() {
  SettingKind kind;
  kind.object = "port";
  kind.name = "tpid";
  kind.needs = {"swctl_platform_outer_tpid_get"};
  kind.merges = true;
  kind.commands = {"port set"};
  kind.usual = [](const Id &) { return tpid_words(kInnerTpid, 0, kOuterTpid); };
  kind.read = read_tpids;
  kind.take = take_tpid;
  kind.change = change_by("port set % @");
  return kind;
}

// One length for the unit, set on any port.
SettingKind frame_length_kind(const Board &board) {
  const std::string port = std::to_string(board.front_interfaces().front());
  SettingKind kind = plain_kind({.name = "mtu",
                                 .command = "port set % mtu @",
                                 .ids = {0},
                                 .read = {},
                                 .usual = kUsualFrameLength});
  kind.merges = false;
  kind.read = [](SettingReader &reader) {
    reader.put({}, std::to_string(read_port(reader.context, reader.board.front().front(),
                                            SWSH_CALL(user_port_jumboframe_get))));
  };
  kind.take = [](Statement &statement, Draft &draft) {
    const Argument *length = statement.take("mtu");
    if (length == nullptr) return false;
    statement.take_ports("PORTS");
    draft.put({}, std::to_string(length->number));
    return true;
  };
  kind.change = [port](const Change &change, Commands &commands) {
    commands.push_back("port set " + port + " mtu " + *change.to);
  };
  return kind;
}

void read_port_descriptions(SettingReader &reader) {
  try {
    for (const auto &[interface, text] : read_descriptions(reader.context.unit))
      reader.put({interface}, description_word(text));
  } catch (const CommandError &error) {
    reader.leave_out("", error.fault().message);
  }
}

bool take_description(Statement &statement, Draft &draft) {
  const Argument *text = statement.take("description");
  if (text == nullptr) return false;
  expect_description(text->word);
  for (const int64_t port : statement.take_ports("PORTS"))
    draft.put({port}, description_word(text->word));
  return true;
}

// The chip has none; the directory of the unit keeps them.
SettingKind description_kind() {
  SettingKind kind;
  kind.object = "port";
  kind.name = "description";
  kind.merges = true;
  kind.commands = {"port set"};
  kind.usual = [](const Id &) { return description_word(""); };
  kind.read = read_port_descriptions;
  kind.take = take_description;
  kind.change = change_by("port set % description @");
  return kind;
}

int64_t isolation_of(const SettingReader &reader, int64_t interface) {
  const Port port = reader.board.port(interface);
  const user_pbmp_t reached =
      ask(SWSH_CALL(user_port_egress_get), port, kLead, reader.context.unit, port.chip, 0);
  return interface_mask(reader.board.interfaces_of(reached.word[0]));
}

}  // namespace

void add_port_kinds(Kinds &kinds, const Board &board) {
  const auto add = [&](const char *keyword, auto read, int64_t usual,
                       std::vector<const char *> needs = {}) {
    kinds.push_back(plain_kind({.name = keyword,
                                .command = std::string("port set % ") + keyword + " @",
                                .ids = board.front_interfaces(),
                                .read = read,
                                .usual = usual,
                                .needs = std::move(needs)}));
  };
  kinds.push_back(description_kind());
  add("vlan", of_port(SWSH_CALL(user_port_untagged_vlan_get)), kFirstVlan);
  add("filter", of_chip_port(SWSH_OPTIONAL_CALL(swctl_platform_port_filter_get)), 0,
      {"swctl_platform_port_filter_get"});
  add("isolation", isolation_of, interface_mask(board.all_interfaces()));
  kinds.push_back(mode_kind());
  add("backpressure", of_chip_port(SWSH_OPTIONAL_CALL(swctl_platform_port_backpressure_get)), 0,
      {"swctl_platform_port_backpressure_get"});
  add("mdix", of_port(SWSH_CALL(user_port_mdix_get)), USER_MDIX_AUTO);
  add("eee", of_port(SWSH_CALL(user_eee_portEnable_get)), 0);
  add("loopback", of_port(SWSH_CALL(user_port_loopback_get)), 0);
  kinds.push_back(frame_length_kind(board));
  kinds.push_back(learning_kind(board));
  add("dtag", of_port(SWSH_CALL(user_port_dtag_mode_get)), USER_DTAG_OFF);
  // The first port in the mode makes the outer TPID of entry 0 that of customers.
  kinds.back().upsets = {"on", "port tpid", board.front_interfaces()};
  kinds.push_back(tpid_kind());
  add("ingress", of_port(SWSH_CALL(user_port_ingress_rate_get)), kLastRate);
  add("egress", of_port(SWSH_CALL(user_port_egress_rate_get)), kLastRate);
  add("admin", of_port(SWSH_CALL(user_port_enable_get)), 1);
}

}  // namespace swsh
