// SPDX-License-Identifier: MIT
#include "objects/mcast_ip.h"

#include <swctl/mcast.h>

#include <arpa/inet.h>
#include <cstring>
#include <utility>

#include "chip/lead.h"
#include "chip/ports.h"
#include "fault.h"

namespace swsh {
namespace {

// An address as the library takes it: a number, or sixteen bytes.
struct Address {
  bool six = false;
  uint32_t number = 0;
  uint8_t bytes[SWCTL_IP6_BYTES] = {};
};

Address parse(const std::string &word) {
  Address address;
  uint8_t four[4] = {};
  if (inet_pton(AF_INET, word.c_str(), four) == 1) {
    memcpy(&address.number, four, sizeof four);
    address.number = ntohl(address.number);
  } else if (inet_pton(AF_INET6, word.c_str(), address.bytes) == 1) {
    address.six = true;
  } else {
    throw CommandError(wrong_usage('"' + word + "\" is no address", word,
                                   {"an address such as 232.1.2.3 or ff3e::8000:1"}));
  }
  return address;
}

// What a command names. Without a source, all zeros stand for every one.
struct Entry {
  Address group;
  Address source;
  uint32_t vid;
  user_pbmp_t ports;
  std::string text;
};

Entry entry_of(const Arguments &arguments) {
  Entry entry = {};
  entry.group = parse(arguments.word("GROUP"));
  entry.source.six = entry.group.six;
  if (arguments.has("source")) entry.source = parse(arguments.word("source"));
  if (entry.source.six != entry.group.six) {
    throw CommandError(wrong_usage("group and source are of two families", arguments.word("source"),
                                   {"a source of the group's family"}));
  }
  entry.vid = static_cast<uint32_t>(arguments.number("vlan"));
  if (arguments.has("ports")) entry.ports = bitmap_of(arguments.numbers("ports"));
  entry.text = arguments.word("GROUP") + " in VLAN " + std::to_string(entry.vid);
  return entry;
}

Answer add(const Arguments &arguments, const Context &context) {
  const Entry entry = entry_of(arguments);
  if (entry.group.six) {
    check_call(User_ip6_mcast_add(context.unit, entry.source.bytes, entry.group.bytes, entry.vid,
                                  entry.ports),
               "User_ip6_mcast_add", entry.text);
  } else {
    check_call(User_ip_mcast_add(context.unit, entry.source.number, entry.group.number, entry.vid,
                                 entry.ports),
               "User_ip_mcast_add", entry.text);
  }
  return {};
}

Answer set(const Arguments &arguments, const Context &context) {
  const Entry entry = entry_of(arguments);
  if (entry.group.six) {
    throw CommandError(
        wrong_usage("an IPv6 entry cannot be set", arguments.word("GROUP"), {"del and add"}));
  }
  check_call(User_ip_mcast_set(context.unit, entry.source.number, entry.group.number, entry.vid,
                               entry.ports),
             "User_ip_mcast_set", entry.text);
  return {};
}

Answer del(const Arguments &arguments, const Context &context) {
  const Entry entry = entry_of(arguments);
  if (entry.group.six) {
    check_call(User_ip6_mcast_del(context.unit, entry.source.bytes, entry.group.bytes, entry.vid),
               "User_ip6_mcast_del", entry.text);
  } else {
    check_call(User_ip_mcast_del(context.unit, entry.source.number, entry.group.number, entry.vid),
               "User_ip_mcast_del", entry.text);
  }
  return {};
}

Answer set_lookup(const Arguments &arguments, const Context &context) {
  const auto by_address = static_cast<uint32_t>(arguments.number("LOOKUP"));
  const bool six = arguments.number("FAMILY") == 6;
  const auto call = six ? User_switch_ip6mc_mode_set : User_switch_ipmc_set;
  check_call(call(kLead, context.unit, by_address),
             six ? "User_switch_ip6mc_mode_set" : "User_switch_ipmc_set", unit_text(context));
  return {};
}

Answer set_miss(const Arguments &arguments, const Context &context) {
  const auto action = static_cast<uint32_t>(arguments.number("action"));
  const bool six = arguments.number("FAMILY") == 6;
  const auto call =
      six ? User_switch_ip6mc_lookup_miss_action : User_switch_ipmc_lookup_miss_action;
  for (const Port &port : ports_of(arguments.numbers("PORTS")))
    check_result(
        call(kLead, context.unit, port.chip, action),
        six ? "User_switch_ip6mc_lookup_miss_action" : "User_switch_ipmc_lookup_miss_action",
        port.interface);
  return {};
}

Node entry_command(const char *name, const char *help, bool with_ports, Handler run) {
  Node node = {
      .name = name,
      .help = help,
      .positional = {{.name = "GROUP",
                      .type = text(),
                      .help = "Group address, IPv4 or IPv6",
                      .required = true}},
      .keywords =
          {{.name = "vlan", .type = number(1, 4094), .help = "VLAN of the entry", .required = true},
           {.name = "source", .type = text(), .help = "Source address; every one if not given"}},
      .run = run};
  if (with_ports) {
    node.keywords.push_back({.name = "ports",
                             .type = interface_list(0),
                             .help = "All ports of the entry",
                             .required = true});
  }
  return node;
}

Parameter family() {
  return {.name = "FAMILY",
          .type = choice({{"ip", 4, "IPv4"}, {"ip6", 6, "IPv6"}}),
          .help = "Address family",
          .required = true};
}

}  // namespace

Node mcast_ip_commands() {
  return {
      .name = "ip",
      .help = "IP multicast entries and lookups",
      .children =
          {
              entry_command("add", "Add an entry", true, add),
              entry_command("set", "Give an IPv4 entry other ports", true, set),
              entry_command("del", "Delete an entry", false, del),
              {.name = "lookup",
               .help = "Choose how groups are looked up",
               .positional = {family(),
                              {.name = "LOOKUP",
                               .type = choice({{"mac", 0, "By MAC address"},
                                               {"address", 1, "By IP addresses"}}),
                               .help = "What is looked up",
                               .required = true}},
               .run = set_lookup},
              {.name = "miss",
               .help = "Say what becomes of unknown groups",
               .positional = {family(),
                              {.name = "PORTS",
                               .type = interface_list(),
                               .help = "Ports that they come into",
                               .required = true}},
               .keywords = {{.name = "action",
                             .type = number(0, 0xff),
                             .help = "The chip's action code",
                             .required = true}},
               .run = set_miss},
          },
  };
}

}  // namespace swsh
