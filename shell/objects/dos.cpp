// SPDX-License-Identifier: MIT
#include <swctl/port.h>

#include "chip/call.h"
#include "chip/lead.h"
#include "chip/limits.h"
#include "chip/ports.h"
#include "objects/registry.h"

namespace swsh {
namespace {

std::string action_text(uint32_t action) {
  return action != 0 ? "drop" : "forward";
}

// How many types there are is the chip's affair: it refuses the first beyond.
Answer show(const Arguments &, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (uint32_t type = 0; type <= kLastAttackType; ++type) {
    constexpr auto kAction = SWSH_CALL(user_dos_attack_prevent_action_get);
    uint32_t action = 0;
    const int32_t result = kAction.get()(kLead, context.unit, type, &action);
    if (result < 0 && type > 0) break;
    if (result < 0) refuse(kAction.name, subject_of(context), result);
    answer.records.push_back(
        Record().add("type", int64_t{type}).add("action", action_text(action)));
  }
  return answer;
}

Answer set(const Arguments &arguments, const Context &context) {
  perform(SWSH_CALL(user_dos_attack_prevent_action_set), context, kLead, context.unit,
          arguments.u32("TYPE"), arguments.u32("action"));
  return {};
}

Answer protect(const Arguments &, const Context &context) {
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
               .details = "The library reads unit 0, whatever unit is chosen.\n",
               .run = show},
              {.name = "set",
               .help = "Choose what becomes of the frames of an attack",
               .positional = {required("TYPE", number(0, kLastAttackType), "Attack type")},
               .keywords = {required("action", choice({{"forward", 0, ""}, {"drop", 1, ""}}),
                                     "What becomes of its frames")},
               .run = set},
              {.name = "protect",
               .help = "Switch prevention on for every front port",
               .run = protect},
          },
  };
}

}  // namespace swsh
