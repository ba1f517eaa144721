// SPDX-License-Identifier: MIT
#include <swctl/platform/vlan_read.h>
#include <swctl/stp.h>

#include <map>

#include "chip/call.h"
#include "chip/lead.h"
#include "chip/optional_call.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

constexpr int64_t kLastInstance = 15;

std::vector<Choice> states() {
  return {{"disabled", USER_STP_DISABLED, "Takes part in nothing"},
          {"blocking", USER_STP_BLOCKING, "Neither learns nor forwards"},
          {"listening", USER_STP_LISTENING, "Waits before it learns"},
          {"learning", USER_STP_LEARNING, "Learns and does not forward"},
          {"forwarding", USER_STP_FORWARDING, "Learns and forwards"}};
}

std::string instance_text(uint32_t instance) {
  return "instance " + std::to_string(instance);
}

bool exists(const Context &context, uint32_t instance) {
  return ask(SWSH_CALL(user_stp_isMstpInstanceExist_get), instance_text(instance), kLead,
             context.unit, instance) != 0;
}

uint32_t existing(const Context &context, uint32_t instance) {
  if (exists(context, instance)) return instance;
  const std::string number = std::to_string(instance);
  throw CommandError(wrong_usage("there is no instance " + number, number));
}

std::vector<uint32_t> instances(const Arguments &arguments, const Context &context) {
  if (arguments.has("INSTANCE")) return {existing(context, arguments.u32("INSTANCE"))};
  std::vector<uint32_t> all;
  for (uint32_t instance = 0; instance <= kLastInstance; ++instance)
    if (exists(context, instance)) all.push_back(instance);
  return all;
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

Answer show(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const uint32_t instance : instances(arguments, context))
    add_lines(answer, context, instance);
  return answer;
}

Answer set(const Arguments &arguments, const Context &context) {
  const std::vector<Port> ports = ports_of(arguments.numbers("PORTS"));
  const uint32_t instance = existing(context, arguments.u32("INSTANCE"));
  for (const Port &port : ports)
    perform(SWSH_CALL(user_stg_stp_set), port, kLead, context.unit, instance, port.chip,
            arguments.u32("state"));
  return {};
}

Answer add_instance(const Arguments &arguments, const Context &context) {
  const uint32_t instance = arguments.u32("INSTANCE");
  perform(SWSH_CALL(user_stg_create_id), instance_text(instance), kLead, context.unit, instance);
  return {};
}

Answer remove_instance(const Arguments &arguments, const Context &context) {
  const uint32_t instance = arguments.u32("INSTANCE");
  perform(SWSH_CALL(user_stg_destroy), instance_text(instance), kLead, context.unit, instance);
  return {};
}

Answer show_vlans(const Arguments &arguments, const Context &context) {
  std::map<uint32_t, std::vector<int64_t>> vlans;
  each_record(SWSH_OPTIONAL_CALL(swctl_platform_vlan_next), "VLAN", context.unit, 1,
              [&](const swctl_platform_vlan &vlan) { vlans[vlan.instance].push_back(vlan.index); });
  Answer answer = {Shape::table, {}, ""};
  for (const uint32_t instance : instances(arguments, context))
    answer.records.push_back(
        Record().add("instance", int64_t{instance}).add("vlans", vlans[instance]));
  return answer;
}

Answer add_vlans(const Arguments &arguments, const Context &context) {
  const uint32_t instance = existing(context, arguments.u32("instance"));
  for (const int64_t vid : arguments.numbers("VLANS"))
    perform(SWSH_CALL(user_stg_vlan_add), "VLAN " + std::to_string(vid), kLead, context.unit,
            instance, static_cast<uint32_t>(vid));
  return {};
}

Answer remove_vlans(const Arguments &arguments, const Context &context) {
  for (const int64_t vid : arguments.numbers("VLANS"))
    perform(SWSH_CALL(user_stg_vlan_remove), "VLAN " + std::to_string(vid), kLead, context.unit, 0u,
            static_cast<uint32_t>(vid));
  return {};
}

Parameter instance_parameter(bool required) {
  return {.name = "INSTANCE",
          .type = number(0, kLastInstance),
          .help = "Spanning-tree instance",
          .required = required};
}

Parameter vlans_parameter() {
  return {.name = "VLANS", .type = numbers(1, 4094), .help = "VLANs to move", .required = true};
}

Node instance_commands() {
  return {.name = "instance",
          .help = "Make and destroy instances",
          .children = {{.name = "add",
                        .help = "Make an instance",
                        .positional = {instance_parameter(true)},
                        .run = add_instance},
                       {.name = "del",
                        .help = "Destroy an instance",
                        .positional = {instance_parameter(true)},
                        .run = remove_instance}}};
}

Node vlan_commands() {
  return {.name = "vlan",
          .help = "The VLANs of instances",
          .children = {{.name = "show",
                        .help = "Show the VLANs of instances",
                        .positional = {instance_parameter(false)},
                        .run = show_vlans},
                       {.name = "add",
                        .help = "Put VLANs into an instance",
                        .positional = {vlans_parameter()},
                        .keywords = {{.name = "instance",
                                      .type = number(0, kLastInstance),
                                      .help = "Where they go",
                                      .required = true}},
                        .run = add_vlans},
                       {.name = "del",
                        .help = "Put VLANs back into instance 0",
                        .positional = {vlans_parameter()},
                        .run = remove_vlans}}};
}

}  // namespace

Node stp_object() {
  return {
      .name = "stp",
      .help = "Spanning tree: instances, VLANs, port states",
      .children =
          {
              {.name = "show",
               .help = "Show the ports of instances by their state",
               .positional = {instance_parameter(false)},
               .details = "The chip has one state for listening and learning. It reads as the one\n"
                          "that this session asked for last, or as listening.\n",
               .run = show},
              {.name = "set",
               .help = "Set the state of ports in an instance",
               .positional = {instance_parameter(true),
                              {.name = "PORTS",
                               .type = interface_list(),
                               .help = "Ports to change",
                               .required = true}},
               .keywords =
                   {{.name = "state", .type = choice(states()), .help = "State", .required = true}},
               .run = set},
              instance_commands(),
              vlan_commands(),
          },
  };
}

}  // namespace swsh
