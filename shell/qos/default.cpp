// SPDX-License-Identifier: MIT
#include <swctl/qos.h>

#include "chip/each.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "chip/ports.h"
#include "qos/commands.h"

namespace swsh {
namespace {

Answer show_default(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : chosen_ports(arguments)) {
    const uint32_t priority = ask(SWSH_CALL(user_qos_port_cos_get), port, port.chip);
    answer.records.push_back(
        Record().add("port", port.interface).add("priority", int64_t{priority}));
  }
  return answer;
}

Answer set_default(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  for_each_port(ports_given(arguments, "PORTS"), [&](const Port &port) {
    perform(SWSH_CALL(user_qos_port_cos_set), port, port.chip, arguments.u32("priority"));
  });
  return {};
}

}  // namespace

Node qos_default_commands() {
  return {.name = "default",
          .help = "The priority of frames without a tag",
          .children = {{.name = "show",
                        .help = "Show the priority of ports",
                        .positional = {ports_to_show()},
                        .run = show_default},
                       {.name = "set",
                        .help = "Give ports a priority",
                        .positional = {ports_to_change()},
                        .keywords = {required("priority", number(0, kLastPriority), "Priority")},
                        .run = set_default}}};
}

}  // namespace swsh
