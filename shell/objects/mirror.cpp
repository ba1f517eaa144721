// SPDX-License-Identifier: MIT
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>

#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

std::string group_text(uint32_t group) {
  return "mirror group " + std::to_string(group);
}

// The library writes groups and reads none, so the chip is asked.
chip_mirror_entry read_group(uint32_t group) {
  return ask(SWSH_CALL(rtk_mirror_group_get), group_text(group), 0u, group);
}

Record group_record(const Interfaces &interfaces, uint32_t group) {
  const chip_mirror_entry entry = read_group(group);
  const bool on = entry.enable != 0;
  const bool flows = entry.field15 != 0;
  const auto to = interfaces.of(static_cast<int32_t>(entry.mirroring_port));
  Record record;
  record.add("group", int64_t{group});
  record.add("state", on, on ? "on" : "off");
  if (on && to) {
    record.add("to", *to);
  } else {
    record.add("to", nullptr);
  }
  record.add("ingress", interfaces_of(interfaces, entry.ingress));
  record.add("egress", interfaces_of(interfaces, entry.egress));
  record.add("flows", flows, flows ? "yes" : "no");
  return record;
}

Answer show_mirror(const Arguments &, const Context &context) {
  expect_unit_zero(context);
  const Interfaces interfaces;
  Answer answer = {Shape::table, {}, ""};
  for (uint32_t group = 0; group <= kLastMirrorGroup; ++group)
    answer.records.push_back(group_record(interfaces, group));
  return answer;
}

constexpr auto kDisable = SWSH_CALL(user_set_mirror_disable);
constexpr auto kDisableEmpty = SWSH_CALL(user_check_set_mirror_disable);

std::vector<Port> mirrored(const Arguments &arguments) {
  if (!arguments.has("ports")) return {};
  return ports_given(arguments, "ports");
}

// What act() changes of a group, the library reads, changes and writes, even if
// it cannot read it. Where one of its calls fails, the group gets back what it
// had.
template <typename Act>
void change_group(uint32_t group, Act act) {
  const chip_mirror_entry before = read_group(group);
  try {
    act(before);
  } catch (const CommandError &error) {
    const bool is_back = SWSH_CALL(rtk_mirror_group_set).get()(0, group, &before) >= 0;
    throw with_note(error, is_back ? "the group is as it was" : "the group is not as it was");
  }
}

void set_port(const Context &context, uint32_t group, const Port &port, uint32_t to,
              uint32_t mode) {
  perform(SWSH_CALL(user_mirror_port_set), port, kLead, context.unit, port.chip, group, to, mode);
}

Answer add_mirror(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  if (!arguments.has("ports") && !arguments.has("flows"))
    throw CommandError(wrong_usage("nothing to mirror", {}, {"ports", "flows"}));
  if (!arguments.has("ports") && arguments.has("direction"))
    throw CommandError(wrong_usage("a direction is one of ports", {}, {"ports"}));
  const uint32_t group = arguments.u32("GROUP");
  const auto to = static_cast<uint32_t>(port_of(arguments.number("to")).chip);
  const std::vector<Port> ports = mirrored(arguments);
  const uint32_t mode = arguments.has("direction") ? arguments.u32("direction") : USER_MIRROR_BOTH;
  change_group(group, [&](const chip_mirror_entry &) {
    for (const Port &port : ports) set_port(context, group, port, to, mode);
    if (arguments.has("flows"))
      perform(SWSH_CALL(user_set_flow_mirror), group_text(group), kLead, context.unit, group, to);
  });
  return {};
}

Answer del_mirror(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const uint32_t group = arguments.u32("GROUP");
  const std::vector<Port> ports = mirrored(arguments);
  const auto disable = arguments.has("ports") ? kDisableEmpty : kDisable;
  change_group(group, [&](const chip_mirror_entry &before) {
    for (const Port &port : ports)
      set_port(context, group, port, before.mirroring_port, USER_MIRROR_NONE);
    perform(disable, group_text(group), kLead, context.unit, group);
  });
  return {};
}

// The library never takes back that flows are mirrored.
Answer reset_mirror(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const chip_mirror_entry empty = {};
  const uint32_t group = arguments.u32("GROUP");
  perform(SWSH_CALL(rtk_mirror_group_set), group_text(group), 0u, group, &empty);
  return {};
}

Parameter group_parameter() {
  return required("GROUP", number(0, kLastMirrorGroup), "Mirror group");
}

Parameter ports_parameter(const char *help) {
  return {.name = "ports", .type = interface_list(0), .help = help};
}

}  // namespace

Node mirror_object() {
  return {
      .name = "mirror",
      .help = "Mirroring: copies of frames to a port",
      .children =
          {
              {.name = "show", .help = "Show the mirror groups", .run = show_mirror},
              {.name = "add",
               .help = "Mirror ports, or the flows that rules choose",
               .positional = {group_parameter()},
               .keywords = {required("to", interface_number(0), "Port that gets the copies"),
                            ports_parameter("Ports that are mirrored; 0 is the CPU"),
                            {.name = "direction",
                             .type = choice({{"ingress", USER_MIRROR_INGRESS, "What they receive"},
                                             {"egress", USER_MIRROR_EGRESS, "What they send"},
                                             {"both", USER_MIRROR_BOTH, "Both"}}),
                             .help = "Which frames; both if not given"},
                            {.name = "flows",
                             .type = flag(),
                             .help = "Mirror the flows that rules choose"}},
               .run = add_mirror},
              {.name = "del",
               .help = "Disable a group, or take ports out of it",
               .positional = {group_parameter()},
               .keywords = {ports_parameter("Only these; the group goes with the last one")},
               .details = "A group that is disabled as a whole keeps its ports: enabled again it\n"
                          "mirrors them.\n",
               .run = del_mirror},
              {.name = "reset",
               .help = "Make a group as it is after power-on",
               .positional = {group_parameter()},
               .run = reset_mirror},
          },
  };
}

}  // namespace swsh
