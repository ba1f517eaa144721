// SPDX-License-Identifier: MIT
#include <swctl/port_frame.h>
#include <swctl/vlan.h>

#include <algorithm>
#include <functional>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/ports.h"
#include "chip/vlans.h"
#include "fault.h"
#include "objects/registry.h"
#include "objects/vlan_rule.h"

namespace swsh {
namespace {

std::vector<int64_t> members_given(const Arguments &arguments, const char *keyword) {
  return arguments.has(keyword) ? interfaces_given(arguments, keyword) : std::vector<int64_t>{};
}

// Masks of the chip ports of a line. A port in both lists is refused before
// anything is changed; the chip would take it as untagged.
struct Members {
  uint32_t tagged;
  uint32_t untagged;
};

void expect_apart(const Arguments &arguments) {
  const std::vector<int64_t> untagged = members_given(arguments, "untagged");
  for (const int64_t port : members_given(arguments, "tagged")) {
    if (!std::ranges::binary_search(untagged, port)) continue;
    const std::string number = std::to_string(port);
    throw CommandError(wrong_usage("port " + number + " is both tagged and untagged", number));
  }
}

Members members_of(const Arguments &arguments) {
  expect_apart(arguments);
  return {portmask_of(members_given(arguments, "tagged")),
          portmask_of(members_given(arguments, "untagged"))};
}

// Writes VLANs one by one, each as it was read and then changed. The library's
// own functions change a VLAN that they could not read, too.
void change(const Context &context, const std::vector<Vlan> &vlans,
            const std::function<void(Vlan &)> &step) {
  for_each_of(
      vlans, [](const Vlan &vlan) { return vlan.vid; },
      [&](Vlan vlan) {
        step(vlan);
        write_vlan(context, vlan);
      });
}

void add_members(Vlan &vlan, const Members &members) {
  vlan.member |= members.tagged | members.untagged;
  vlan.untag = (vlan.untag & ~members.tagged) | members.untagged;
}

Record vlan_record(const Interfaces &interfaces, const Vlan &vlan) {
  return Record()
      .add("vlan", vlan.vid)
      .add("tagged", interfaces_of(interfaces, vlan.tagged()))
      .add("untagged", interfaces_of(interfaces, vlan.untagged()));
}

// What a port has to do with VLANs: a line per VLAN that it is a member of.
Answer show_port(const Context &context, int64_t interface, const std::vector<Vlan> &vlans) {
  const uint32_t port = portmask_of({interface});
  const int64_t pvid = read_pvid(context, interface);
  Answer answer = {Shape::table, {}, ""};
  for (const Vlan &vlan : vlans) {
    if ((vlan.member & port) == 0) continue;
    const bool tagged = (vlan.tagged() & port) != 0;
    const bool is_default = vlan.vid == pvid;
    answer.records.push_back(Record()
                                 .add("port", interface)
                                 .add("vlan", vlan.vid)
                                 .add("tagged", tagged, tagged ? "yes" : "no")
                                 .add("pvid", is_default, is_default ? "yes" : "no"));
  }
  return answer;
}

Answer show_vlan(const Arguments &arguments, const Context &context) {
  const bool chosen = arguments.has("VLANS");
  const std::vector<Vlan> vlans =
      chosen ? vlans_of(context, arguments.numbers("VLANS")) : read_vlans(context);
  if (arguments.has("port")) return show_port(context, arguments.number("port"), vlans);
  const Interfaces interfaces;
  Answer answer = {Shape::table, {}, ""};
  for (const Vlan &vlan : vlans) answer.records.push_back(vlan_record(interfaces, vlan));
  return answer;
}

Answer add_vlan(const Arguments &arguments, const Context &context) {
  const Members members = members_of(arguments);
  for_each_number(arguments.numbers("VLANS"), [&](int64_t vid) {
    perform(SWSH_CALL(user_vlan_create), vlan_text(vid), kLead, context.unit,
            static_cast<uint32_t>(vid));
    if (!arguments.has("tagged") && !arguments.has("untagged")) return;
    for (Vlan vlan : vlans_of(context, {vid})) {
      add_members(vlan, members);
      write_vlan(context, vlan);
    }
  });
  return {};
}

Answer remove_vlan(const Arguments &arguments, const Context &context) {
  vlans_of(context, arguments.numbers("VLANS"));
  for_each_number(arguments.numbers("VLANS"), [&](int64_t vid) {
    perform(SWSH_CALL(user_vlan_destroy), vlan_text(vid), kLead, context.unit,
            static_cast<uint32_t>(vid));
  });
  return {};
}

Answer set_vlan(const Arguments &arguments, const Context &context) {
  const Members members = members_of(arguments);
  change(context, vlans_of(context, arguments.numbers("VLANS")), [&](Vlan &vlan) {
    vlan = {vlan.vid, members.tagged | members.untagged, members.untagged};
  });
  return {};
}

Answer add_ports(const Arguments &arguments, const Context &context) {
  const Members members = members_of(arguments);
  change(context, vlans_of(context, arguments.numbers("VLANS")),
         [&](Vlan &vlan) { add_members(vlan, members); });
  return {};
}

Answer remove_ports(const Arguments &arguments, const Context &context) {
  const uint32_t ports = portmask_of(interfaces_given(arguments, "PORTS"));
  change(context, vlans_of(context, arguments.numbers("VLANS")), [&](Vlan &vlan) {
    vlan.member &= ~ports;
    vlan.untag &= ~ports;
  });
  return {};
}

bool all_ports_have(const Context &context, int64_t vid) {
  const auto has = [&](const Port &port) { return read_pvid(context, port.interface) == vid; };
  return has(port_of(kCpuInterface)) && std::ranges::all_of(front_ports(), has);
}

Answer show_default(const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : front_ports()) {
    answer.records.push_back(
        Record().add("port", port.interface).add("pvid", read_pvid(context, port.interface)));
  }
  return answer;
}

Answer set_default_of(const Arguments &arguments, const Context &context, int64_t vid) {
  for_each_port(ports_given(arguments, "ports"), [&](const Port &port) {
    write_port(context, port, SWSH_CALL(user_port_untagged_vlan_set), vid);
  });
  return {};
}

// The library's walk does not know where the board ends. Whether a refusal was
// only that, the ports themselves can say.
Answer set_or_show_default(const Arguments &arguments, const Context &context) {
  if (!arguments.has("VLAN")) return show_default(context);
  const int64_t vid = arguments.number("VLAN");
  if (arguments.has("ports")) return set_default_of(arguments, context, vid);
  constexpr auto kSet = SWSH_CALL(user_vlan_default_set);
  const Witness witness;
  const int32_t result = kSet.get()(kLead, context.unit, static_cast<uint32_t>(vid));
  if (result >= 0 || all_ports_have(context, vid)) return {};
  refuse(witness.blame(kSet.name, result), subject_of(vlan_text(vid)));
}

Parameter vlans(bool required) {
  return {.name = "VLANS",
          .type = numbers(kFirstVlan, kLastVlan),
          .help = "VLAN IDs",
          .required = required};
}

Parameter port_list(const char *keyword, const char *help) {
  return {.name = keyword, .type = interface_list(0), .help = help};
}

std::vector<Parameter> member_lists() {
  return {port_list("tagged", "Ports that send its frames with a tag"),
          port_list("untagged", "Ports that send its frames without a tag")};
}

Node show_vlan_command() {
  return {
      .name = "show",
      .help = "Show VLANs and their ports",
      .positional = {vlans(false)},
      .keywords = {{.name = "port",
                    .type = interface_number(),
                    .help = "Only this port: its VLANs, tagged or not, and its default"}},
      .details = "Without VLANS, every VLAN of the chip. Port 0 is the CPU.\n",
      .run = show_vlan,
  };
}

Node change_command(const char *name, const char *help, Handler run, const char *details) {
  return {
      .name = name,
      .help = help,
      .positional = {vlans(true)},
      .keywords = member_lists(),
      .details = details,
      .run = run,
  };
}

Node port_commands() {
  Node add_command = change_command("add", "Add ports to VLANs that exist", add_ports,
                                    "Ports that are members already change over.\n");
  add_command.needs_keyword = true;
  return {
      .name = "port",
      .help = "Ports of VLANs",
      .children = {std::move(add_command),
                   {.name = "del",
                    .help = "Take ports out of VLANs",
                    .positional = {vlans(true),
                                   required("PORTS", interface_list(0), "Ports to take out")},
                    .run = remove_ports}},
  };
}

Node default_command() {
  return {
      .name = "default",
      .help = "Show or set the default VLAN of all ports",
      .positional = {{.name = "VLAN",
                      .type = number(kFirstVlan, kLastVlan),
                      .help = "VLAN that frames without a tag get"}},
      .keywords = {{.name = "ports",
                    .type = interface_list(0),
                    .help = "Only of these ports; 0 is the CPU"}},
      .details = "Without VLAN, the default VLAN of each port.\n",
      .run = set_or_show_default,
  };
}

}  // namespace

Node vlan_object() {
  return {
      .name = "vlan",
      .help = "VLANs: ports, defaults, rules, translation",
      .children =
          {
              show_vlan_command(),
              change_command("add", "Create VLANs and add ports to them", add_vlan,
                             "VLANs that exist stay as they are but for the ports named.\n"),
              {.name = "del",
               .help = "Destroy VLANs",
               .positional = {vlans(true)},
               .details = "Every VLAN is looked up before the first one is destroyed.\n",
               .run = remove_vlan},
              change_command("set", "Replace the ports of VLANs", set_vlan,
                             "Ports that are not named are no longer members.\n"),
              port_commands(),
              default_command(),
              vlan_rule_commands(),
              vlan_translate_commands(),
          },
  };
}

}  // namespace swsh
