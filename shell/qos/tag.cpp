// SPDX-License-Identifier: MIT
#include <swctl/platform/qos_read.h>
#include <swctl/qos.h>

#include "chip/each.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "qos/commands.h"

namespace swsh {
namespace {

Answer show_tag(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const int64_t priority : chosen_or_all(arguments, "PRIORITIES", kLastPriority)) {
    const uint32_t internal =
        ask(SWSH_OPTIONAL_CALL(swctl_platform_qos_tag_get), priority_text(priority), context.unit,
            static_cast<uint32_t>(priority));
    answer.records.push_back(Record().add("priority", priority).add("internal", int64_t{internal}));
  }
  return answer;
}

Answer set_tag(const Arguments &arguments, const Context &context) {
  for_each_number(arguments.numbers("PRIORITIES"), [&](int64_t priority) {
    perform(SWSH_CALL(user_qos_pri_remap_set), priority_text(priority), context.unit,
            static_cast<uint32_t>(priority), arguments.u32("internal"));
  });
  return {};
}

}  // namespace

Node qos_tag_commands() {
  return {.name = "tag",
          .help = "The internal priority of each priority in a tag",
          .children = {
              {.name = "show",
               .help = "Show the internal priority of priorities",
               .positional = {{.name = "PRIORITIES",
                               .type = numbers(0, kLastPriority),
                               .help = "Priorities to show"}},
               .run = show_tag},
              {.name = "set",
               .help = "Give priorities of tags an internal one",
               .positional = {required("PRIORITIES", numbers(0, kLastPriority), "In the tag")},
               .keywords = {required("internal", number(0, kLastPriority), "Internal priority")},
               .run = set_tag}}};
}

}  // namespace swsh
