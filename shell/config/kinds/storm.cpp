// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "chip/call.h"
#include "config/kinds.h"
#include "config/plain.h"

namespace swsh {
namespace {

constexpr int64_t kPackets = 1;
constexpr int64_t kHighestStormRate = 0xffffff;

// A rate, and whether it is in force. Setting a rate switches control on, and
// setting 0 switches it off.
struct Control {
  int64_t rate = kHighestStormRate;
  bool on = false;

  std::string words() const {
    return "rate " + std::to_string(rate) +
           (on == (rate != 0) ? ""
            : on              ? " control on"
                              : " control off");
  }
};

Control storm_control_in(const std::string &words) {
  Control control;
  control.rate = std::stoll(words.substr(words.find(' ') + 1));
  control.on = control.rate != 0;
  if (words.ends_with(" on")) control.on = true;
  if (words.ends_with(" off")) control.on = false;
  return control;
}

// The chip's own words: what the library answers depends on what this process
// has set before.
Control read_control(const SettingReader &reader, int64_t interface, uint32_t type) {
  const Port port = reader.board.port(interface);
  const uint32_t unit = reader.context.unit;
  Control control;
  control.rate = ask(SWSH_CALL(rtk_rate_stormControlRate_get), port, unit, port.chip, type);
  control.on = ask(SWSH_CALL(rtk_rate_stormControlEnable_get), port, unit, port.chip, type) != 0;
  return control;
}

bool is_of_type(const Statement &statement, uint32_t type) {
  return statement.arguments.has("type") && statement.arguments.number("type") == type;
}

bool take_control(Statement &statement, Draft &draft, uint32_t type) {
  if (!is_of_type(statement, type)) return false;
  const Argument *rate = statement.take("rate");
  const Argument *on = statement.take("control");
  if (rate == nullptr && on == nullptr) return false;
  statement.take("type");
  for (const int64_t port : statement.take_ports("PORTS")) {
    Control control = storm_control_in(*draft.at({port}));
    if (rate != nullptr) control = {rate->number, rate->number != 0};
    if (on != nullptr) control.on = on->number != 0;
    draft.put({port}, control.words());
  }
  return true;
}

SettingKind rate_kind(uint32_t type, const Board &board) {
  SettingKind kind;
  kind.object = "storm";
  kind.name = "rate of type " + std::to_string(type);
  kind.merges = true;
  kind.commands = {"storm set"};
  kind.usual = [](const Id &) { return Control().words(); };
  kind.read = [type, ports = board.front_interfaces()](SettingReader &reader) {
    for (const int64_t port : ports) reader.put({port}, read_control(reader, port, type).words());
  };
  kind.take = [type](Statement &statement, Draft &draft) {
    return take_control(statement, draft, type);
  };
  kind.change = change_by("storm set % type " + std::to_string(type) + " @");
  return kind;
}

}  // namespace

void add_storm_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(plain_kind({.name = "mode",
                              .command = "storm mode @",
                              .ids = {},
                              .read = [](const SettingReader &reader, int64_t) -> int64_t {
                                return ask(SWSH_CALL(rtk_rate_stormControlRateMode_get),
                                           reader.context, reader.context.unit);
                              },
                              .usual = kPackets}));
  for (uint32_t type = 0; type < USER_STORM_TYPES; ++type) {
    kinds.push_back(
        plain_kind({.name = "selection of type " + std::to_string(type),
                    .command = "storm set % type " + std::to_string(type) + " selection @",
                    .ids = board.front_interfaces(),
                    .read = [type](const SettingReader &reader, int64_t interface) -> int64_t {
                      const Port port = reader.board.port(interface);
                      return ask(SWSH_CALL(rtk_rate_stormControlTypeSel_get), port,
                                 reader.context.unit, port.chip, type);
                    },
                    .usual = 0}));
    kinds.push_back(rate_kind(type, board));
  }
}

}  // namespace swsh
