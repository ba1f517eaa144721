// SPDX-License-Identifier: MIT
#include <swctl/port.h>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/ports.h"
#include "objects/registry.h"

namespace swsh {
namespace {

// The one type that the library reports as exceeded, if any.
int64_t exceeded_type(const Context &context, const Port &port) {
  uint32_t flag = 0;
  uint32_t type = 0;
  perform(SWSH_CALL(user_rate_stormExceedFlag_get), port, kLead, context.unit, port.chip, &flag,
          &type);
  return flag != 0 ? int64_t{type} : -1;
}

Record storm_record(const Context &context, const Port &port, uint32_t type, int64_t exceeded) {
  uint32_t rate = 0;
  uint32_t enable = 0;
  perform(SWSH_CALL(user_rate_bandwidth_get), port, kLead, context.unit, port.chip, type, &rate,
          &enable);
  const uint32_t selection =
      ask(SWSH_CALL(user_rate_stormsel_get), port, kLead, context.unit, port.chip, type);
  Record record;
  record.add("port", port.interface);
  record.add("type", int64_t{type});
  record.add("control", enable != 0, enable != 0 ? "on" : "off");
  record.add("rate", int64_t{rate});
  record.add("selection", int64_t{selection});
  const bool first = exceeded == int64_t{type};
  record.add("exceeded", first, first ? "yes" : "no");
  return record;
}

Answer show_storm(const Arguments &arguments, const Context &context) {
  const auto ports = chosen_ports(arguments);
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : ports) {
    const int64_t exceeded = exceeded_type(context, port);
    for (uint32_t type = 0; type < USER_STORM_TYPES; ++type)
      answer.records.push_back(storm_record(context, port, type, exceeded));
  }
  return answer;
}

// The library's function answers -1 whatever the chip says.
void switch_control(const Context &context, const Port &port, uint32_t type, uint32_t on) {
  constexpr auto kSwitch = SWSH_CALL(user_rate_stormControlEnable_set);
  const Witness witness;
  kSwitch.get()(kLead, context.unit, port.chip, type, on);
  if (!witness.failed().empty()) refuse(witness.blame(kSwitch.name, 0), subject_of(port));
}

Answer set_storm(const Arguments &arguments, const Context &context) {
  const auto type = arguments.u32("type");
  for_each_port(ports_given(arguments, "PORTS"), [&](const Port &port) {
    if (arguments.has("rate"))
      perform(SWSH_CALL(user_rate_bandwidth_set), port, kLead, context.unit, port.chip, type,
              arguments.u32("rate"));
    if (arguments.has("control")) switch_control(context, port, type, arguments.u32("control"));
    if (arguments.has("selection"))
      perform(SWSH_CALL(user_rate_stormsel_set), port, kLead, context.unit, port.chip, type,
              arguments.u32("selection"));
  });
  return {};
}

Answer reset(const Arguments &arguments, const Context &context) {
  for_each_port(ports_given(arguments, "PORTS"), [&](const Port &port) {
    perform(SWSH_CALL(user_rate_stormExceedFlag_reset), port, kLead, context.unit, port.chip);
  });
  return {};
}

std::vector<Choice> storm_modes() {
  return {{"bytes", 0, "Bytes"}, {"packets", 1, "Packets"}};
}

Answer show_storm_mode(const Context &context) {
  const uint8_t mode = ask(SWSH_CALL(user_rate_stormCountMode_get), context, kLead, context.unit);
  return {Shape::detail, {Record().add("mode", word_value(storm_modes(), mode))}, ""};
}

Answer set_mode(const Arguments &arguments, const Context &context) {
  if (!arguments.has("MODE")) return show_storm_mode(context);
  constexpr auto kSet = SWSH_CALL(user_rate_stormCountMode_set);
  const int32_t result = perform(kSet, context, kLead, context.unit, arguments.u32("MODE"));
  // Any result but 0 is a failure here.
  if (result != 0) refuse({kSet.name, result}, subject_of(context));
  return {};
}

}  // namespace

Node storm_object() {
  return {
      .name = "storm",
      .help = "Storm control: rates of flooded traffic",
      .children =
          {
              {.name = "show",
               .help = "Show storm control of ports",
               .positional = {ports_to_show()},
               .details =
                   "Of the types that exceeded their rate, the lowest of a port is marked.\n",
               .run = show_storm},
              {.name = "set",
               .help = "Limit a type of traffic",
               .positional = {ports_to_change()},
               .keywords = {required("type", number(0, USER_STORM_TYPES - 1), "Type of traffic"),
                            {.name = "rate",
                             .type = number(0, 0xffffff),
                             .help = "Rate in the chip's unit; 0 switches control off"},
                            {.name = "control",
                             .type = on_off(),
                             .help = "Whether the rate is in force; a new one is"},
                            {.name = "selection",
                             .type = number(0, 1),
                             .help = "Which traffic the type covers"}},
               .run = set_storm},
              {.name = "reset",
               .help = "Clear the marks of exceeded rates",
               .positional = {ports_to_change()},
               .run = reset},
              {.name = "mode",
               .help = "Show or choose what is counted, for the whole unit",
               .positional =
                   {{.name = "MODE", .type = choice(storm_modes()), .help = "What is counted"}},
               .run = set_mode},
          },
  };
}

}  // namespace swsh
