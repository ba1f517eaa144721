// SPDX-License-Identifier: MIT
#include <swctl/stp.h>

#include "chip/each.h"
#include "chip/ports.h"
#include "stp/commands.h"
#include "stp/instance.h"

namespace swsh {
namespace {

std::vector<Choice> states() {
  return {{"disabled", USER_STP_DISABLED, "Takes, sends and learns nothing"},
          {"blocking", USER_STP_BLOCKING, "Neither learns nor forwards"},
          {"listening", USER_STP_LISTENING, "Waits before it learns"},
          {"learning", USER_STP_LEARNING, "Learns and does not forward"},
          {"forwarding", USER_STP_FORWARDING, "Learns and forwards"}};
}

uint32_t read_state(const Context &context, uint32_t instance, const Port &port) {
  return ask(SWSH_CALL(user_stg_stp_get), port, kLead, context.unit, instance, port.chip);
}

// One line for the ports of an instance that are in the same state.
void add_lines(Answer &answer, const Context &context, uint32_t instance) {
  const auto ports = interfaces_by(
      front_ports(), [&](const Port &port) { return read_state(context, instance, port); });
  for (const auto &[state, interfaces] : ports)
    answer.records.push_back(Record()
                                 .add("instance", int64_t{instance})
                                 .add("state", word_value(states(), state))
                                 .add("ports", interfaces));
}

Answer show_states(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const uint32_t instance : chosen_instances(arguments, context))
    add_lines(answer, context, instance);
  return answer;
}

Answer set_state(const Arguments &arguments, const Context &context) {
  const std::vector<Port> ports = ports_given(arguments, "PORTS");
  const uint32_t instance = existing(context, arguments.u32("INSTANCE"));
  for_each_port(ports, [&](const Port &port) {
    perform(SWSH_CALL(user_stg_stp_set), port, kLead, context.unit, instance, port.chip,
            arguments.u32("state"));
  });
  return {};
}

}  // namespace

Node stp_show_command() {
  return {.name = "show",
          .help = "Show the ports of instances by their state",
          .positional = {instance_parameter(false)},
          .details =
              "The chip has one state for listening and learning. It reads as the one\n"
              "that this session asked for last, or as listening.\n",
          .run = show_states};
}

Node stp_set_command() {
  return {.name = "set",
          .help = "Set the state of ports in an instance",
          .positional = {instance_parameter(true), ports_to_change()},
          .keywords = {required("state", choice(states()), "State")},
          .run = set_state};
}

}  // namespace swsh
