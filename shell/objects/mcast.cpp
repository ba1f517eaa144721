// SPDX-License-Identifier: MIT
#include <swctl/mcast.h>

#include <algorithm>

#include "chip/absent.h"
#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/l2_walk.h"
#include "chip/limits.h"
#include "fault.h"
#include "number_list.h"
#include "objects/mcast_ip.h"
#include "objects/registry.h"

namespace swsh {
namespace {

// The group that a command names, and the ports that it names.
struct Named {
  User_mcast_addr_t group;
  uint32_t ports;

  std::string text() const { return entry_text(group.mac, group.vid); }
};

Named named(const Arguments &arguments) {
  Named all = {};
  const Mac mac = mac_of(arguments, "MAC");
  User_mcast_addr_t_init(kLead, &all.group, mac.data(), arguments.u32("vlan"));
  if (arguments.has("ports")) all.ports = portmask_of(interfaces_given(arguments, "ports"));
  return all;
}

uint32_t &ports_in(User_mcast_addr_t &group) {
  return group.pbmp.word[0];
}

Answer show_mcast(const Arguments &arguments, const Context &context) {
  Answer answer = {.shape = Shape::table, .records = {}, .text = ""};
  const Interfaces interfaces;
  for (const chip_l2_mcast_entry &entry : read_groups(context.unit)) {
    if (arguments.has("vlan") && arguments.number("vlan") != entry.vid) continue;
    Record record = group_record(interfaces, entry.mac, entry.vid, entry.portmask);
    record.add_detail("forwarding", int64_t{entry.fwdIndex});
    answer.records.push_back(std::move(record));
  }
  return answer;
}

Answer add_mcast(const Arguments &arguments, const Context &context) {
  Named all = named(arguments);
  ports_in(all.group) = all.ports;
  perform(SWSH_CALL(User_mcast_addr_add), all.text(), kLead, context.unit, &all.group);
  return {};
}

bool is_there(const Context &context, const User_mcast_addr_t &group) {
  return std::ranges::any_of(read_groups(context.unit), [&](const chip_l2_mcast_entry &entry) {
    return entry.vid == group.vid && std::ranges::equal(entry.mac, group.mac);
  });
}

// The library answers alike for a group that is not there and for a chip that
// refuses: the table can tell.
template <typename Act>
void act_on_group(const Context &context, const Named &all, Act act) {
  act_on("group", all.text(), act, [&] { return is_there(context, all.group); });
}

Answer del_mcast(const Arguments &arguments, const Context &context) {
  const Named all = named(arguments);
  act_on_group(context, all, [&] {
    perform(SWSH_CALL(User_mcast_addr_remove), all.text(), kLead, context.unit, all.group.mac,
            all.group.vid);
  });
  return {};
}

void read(const Context &context, Named &all) {
  const Mac mac = {all.group.mac[0], all.group.mac[1], all.group.mac[2],
                   all.group.mac[3], all.group.mac[4], all.group.mac[5]};
  act_on_group(context, all, [&] {
    perform(SWSH_CALL(User_mcast_port_get), all.text(), kLead, context.unit, mac.data(),
            all.group.vid, &all.group);
  });
}

bool has_ports(const Context &context, const User_mcast_addr_t &group) {
  return std::ranges::any_of(read_groups(context.unit), [&](const chip_l2_mcast_entry &entry) {
    return entry.vid == group.vid && std::ranges::equal(entry.mac, group.mac) &&
           entry.portmask == group.pbmp.word[0];
  });
}

// Gives a group other ports. The library deletes the group and adds it again:
// where that fails, the group that there was is added again.
template <typename Called>
void change_ports(const Context &context, const Called &called, const User_mcast_addr_t &before,
                  const Named &all) {
  try {
    perform(called, all.text(), kLead, context.unit, &all.group);
  } catch (const CommandError &error) {
    User_mcast_addr_add(kLead, context.unit, &before);
    throw with_note(error, has_ports(context, before) ? "the group is as it was"
                                                      : "the group is not as it was");
  }
}

// The chip takes a group's complete ports, so they are read first.
Answer join(const Arguments &arguments, const Context &context) {
  Named all = named(arguments);
  read(context, all);
  const User_mcast_addr_t before = all.group;
  ports_in(all.group) |= all.ports;
  change_ports(context, SWSH_CALL(User_mcast_port_add), before, all);
  return {};
}

Answer leave(const Arguments &arguments, const Context &context) {
  Named all = named(arguments);
  read(context, all);
  const uint32_t strangers = all.ports & ~ports_in(all.group);
  if (strangers != 0) {
    const std::string list = number_list_text(interfaces_of(Interfaces(), strangers));
    throw CommandError(wrong_usage("no member of the group: " + list, list));
  }
  const User_mcast_addr_t before = all.group;
  ports_in(all.group) &= ~all.ports;
  change_ports(context, SWSH_CALL(User_mcast_port_remove), before, all);
  return {};
}

Node group_command(const char *name, const char *help, bool with_ports, Handler run) {
  Node node = {
      .name = name,
      .help = help,
      .positional = {required("MAC", mac_address(), "Group address")},
      .keywords = {required("vlan", number(0, kLastVlanId), "VLAN of the group")},
      .run = run,
  };
  if (with_ports) {
    node.keywords.push_back(required("ports", interface_list(0), "Ports, 0 for the CPU"));
  }
  return node;
}

}  // namespace

Node mcast_object() {
  return {
      .name = "mcast",
      .help = "Multicast: layer-2 groups, IP entries",
      .children = {{.name = "show",
                    .help = "Show the groups and their ports",
                    .keywords = {{.name = "vlan",
                                  .type = number(0, kLastVlanId),
                                  .help = "Only groups in this VLAN"}},
                    .run = show_mcast},
                   group_command("add", "Add a group", true, add_mcast),
                   group_command("del", "Delete a group", false, del_mcast),
                   group_command("join", "Add ports to a group", true, join),
                   group_command("leave", "Take ports from a group", true, leave),
                   mcast_ip_commands()},
  };
}

}  // namespace swsh
