// SPDX-License-Identifier: MIT
#include "objects/dos.h"

#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <algorithm>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "chip/ports.h"
#include "objects/registry.h"

namespace swsh {
namespace {

std::string action_text(uint32_t action) {
  return action != 0 ? "drop" : "forward";
}

using Reading = AttackReading;

constexpr auto kAction = SWSH_CALL(user_dos_attack_prevent_action_get);

Reading read_action(const Context &context, uint32_t type) {
  uint32_t action = 0;
  const int32_t result = kAction.get()(kLead, context.unit, type, &action);
  return {type, result, action};
}

[[noreturn]] void refuse_reading(const Reading &reading) {
  refuse({kAction.name, reading.result}, subject_of("type " + std::to_string(reading.type)));
}

// The chip decides how many types there are. It refuses those beyond all
// alike, and none before. What it refuses otherwise was not read: the one that
// differs, or all of them where the first type is refused by now.
void expect_end(const Context &context, const std::vector<Reading> &beyond) {
  const Reading first = read_action(context, 0);
  if (first.result < 0) refuse_reading(first);
  const auto is_alone = [&](const Reading &reading) {
    return std::ranges::count(beyond, reading.result, &Reading::result) == 1;
  };
  const auto odd = std::ranges::find_if(beyond, is_alone);
  if (odd != beyond.end()) refuse_reading(*odd);
}

}  // namespace

std::vector<AttackReading> read_attack_actions(const Context &context) {
  std::vector<Reading> types;
  std::vector<Reading> beyond;
  for (uint32_t type = 0; type <= kLastAttackType; ++type) {
    const Reading reading = read_action(context, type);
    if (reading.result < 0) beyond.push_back(reading);
    if (reading.result < 0) continue;
    if (!beyond.empty()) refuse_reading(beyond.front());
    types.push_back(reading);
  }
  if (!beyond.empty()) expect_end(context, beyond);
  return types;
}

namespace {

Answer show_dos(const Arguments &, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const Reading &reading : read_attack_actions(context)) {
    const auto type = static_cast<int64_t>(answer.records.size());
    answer.records.push_back(Record().add("type", type).add("action", action_text(reading.action)));
  }
  return answer;
}

Answer set_dos(const Arguments &arguments, const Context &context) {
  perform(SWSH_CALL(user_dos_attack_prevent_action_set), context, kLead, context.unit,
          arguments.u32("TYPE"), arguments.u32("action"));
  return {};
}

Answer protect_ports(const Arguments &arguments, const Context &context) {
  const uint32_t on = arguments.has("state") ? arguments.u32("state") : 1;
  const std::vector<Port> ports =
      arguments.has("ports") ? ports_given(arguments, "ports") : front_ports();
  for_each_port(ports, [&](const Port &port) {
    perform(SWSH_CALL(rtk_sec_portAttackPreventEnable_set), port, context.unit, port.chip, on);
  });
  return {};
}

// The library switches all front ports on and none off.
Answer protect(const Arguments &arguments, const Context &context) {
  if (arguments.has("ports") || arguments.has("state")) return protect_ports(arguments, context);
  perform(SWSH_CALL(user_dos_attack_prevent_init), context, kLead, context.unit);
  return {};
}

}  // namespace

Node dos_object() {
  return {
      .name = "dos",
      .help = "Prevention of denial-of-service attacks",
      .children =
          {
              {.name = "show",
               .help = "Show what becomes of the frames of each attack",
               .run = show_dos},
              {.name = "set",
               .help = "Choose what becomes of the frames of an attack",
               .positional = {required("TYPE", number(0, kLastAttackType), "Attack type")},
               .keywords = {required("action", choice({{"forward", 0, ""}, {"drop", 1, ""}}),
                                     "What becomes of its frames")},
               .run = set_dos},
              {.name = "protect",
               .help = "Switch prevention on for every front port",
               .keywords = {{.name = "ports", .type = interface_list(), .help = "Only for these"},
                            {.name = "state", .type = on_off(), .help = "On if not given"}},
               .run = protect},
          },
  };
}

}  // namespace swsh
