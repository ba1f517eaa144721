// SPDX-License-Identifier: MIT
#include <swctl/qos.h>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "qos/commands.h"

namespace swsh {
namespace {

std::string code_point_text(int64_t dscp) {
  return "code point " + std::to_string(dscp);
}

Answer show_dscp(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const int64_t dscp : chosen_or_all(arguments, "DSCPS", kLastCodePoint)) {
    const uint32_t priority =
        ask(SWSH_CALL(user_qos_dscp_map_get), code_point_text(dscp), static_cast<uint32_t>(dscp));
    answer.records.push_back(Record().add("dscp", dscp).add("priority", int64_t{priority}));
  }
  return answer;
}

Answer set_dscp(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  for_each_number(arguments.numbers("DSCPS"), [&](int64_t dscp) {
    perform(SWSH_CALL(user_qos_dscp_map_set), code_point_text(dscp), static_cast<uint32_t>(dscp),
            arguments.u32("priority"));
  });
  return {};
}

}  // namespace

Node qos_dscp_commands() {
  return {
      .name = "dscp",
      .help = "The internal priority of each DSCP",
      .children = {{.name = "show",
                    .help = "Show the priority of code points",
                    .positional = {{.name = "DSCPS",
                                    .type = numbers(0, kLastCodePoint),
                                    .help = "Code points to show"}},
                    .run = show_dscp},
                   {.name = "set",
                    .help = "Give code points a priority",
                    .positional = {required("DSCPS", numbers(0, kLastCodePoint), "Code points")},
                    .keywords = {required("priority", number(0, kLastPriority), "Priority")},
                    .run = set_dscp}}};
}

}  // namespace swsh
