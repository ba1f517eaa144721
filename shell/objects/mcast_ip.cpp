// SPDX-License-Identifier: MIT
#include "objects/mcast_ip.h"

#include <swctl/mcast.h>
#include <swctl/platform/mcast_read.h>

#include <arpa/inet.h>
#include <cstring>
#include <utility>

#include "chip/absent.h"
#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "chip/ports.h"
#include "fault.h"
#include "ip_text.h"

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

// What a command names. Without a source, all zeros are every one.
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
  entry.vid = arguments.u32("vlan");
  if (arguments.has("ports")) entry.ports = bitmap_of(interfaces_given(arguments, "ports"));
  entry.text = arguments.word("GROUP") + " in VLAN " + std::to_string(entry.vid);
  if (arguments.has("source")) entry.text += " from " + arguments.word("source");
  return entry;
}

// The IPv4 and the IPv6 side of what is set and shown.
struct Family {
  const char *word;
  const char *help;
  uint32_t lookup;  // type of lookups that the chip counts its misses by
};
constexpr Family kFamilies[] = {{"ip", "IPv4", CHIP_LOOKUP_IP_MCAST},
                                {"ip6", "IPv6", CHIP_LOOKUP_IP6_MCAST}};

bool is_six(const Family &family) {
  return family.lookup == CHIP_LOOKUP_IP6_MCAST;
}

std::string address_text(uint32_t address) {
  return ip_text(address);
}

std::string address_text(const chip_ip6_address &address) {
  return ip6_text(address.bytes);
}

// This shell gives the group as address b and the source as address a.
template <typename Entry>
Record entry_record(const Interfaces &interfaces, const Entry &entry) {
  const decltype(entry.address_a) every = {};
  Record record;
  record.add("vlan", int64_t{entry.vid});
  record.add("group", address_text(entry.address_b));
  if (memcmp(&entry.address_a, &every, sizeof every) == 0) {
    record.add("source", nullptr, "any");
  } else {
    record.add("source", address_text(entry.address_a));
  }
  return record.add("ports", interfaces_of(interfaces, entry.ports));
}

template <typename Next>
void add_entries(Answer &answer, const Next &next, const Arguments &arguments,
                 const Context &context) {
  const Interfaces interfaces;
  each_record(next, "entry", context.unit, 0, [&](const auto &found) {
    if (arguments.has("vlan") && arguments.number("vlan") != found.entry.vid) return;
    answer.records.push_back(entry_record(interfaces, found.entry));
  });
}

// Whether the command is about that family: none given means both.
bool is_chosen(const Arguments &arguments, const Family &family) {
  return !arguments.has("FAMILY") || arguments.word("FAMILY") == family.word;
}

Answer show_entries(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  if (is_chosen(arguments, kFamilies[0]))
    add_entries(answer, SWSH_OPTIONAL_CALL(swctl_platform_ip_mcast_next), arguments, context);
  if (is_chosen(arguments, kFamilies[1]))
    add_entries(answer, SWSH_OPTIONAL_CALL(swctl_platform_ip6_mcast_next), arguments, context);
  return answer;
}

bool is_address(uint32_t found, const Address &wanted) {
  return found == wanted.number;
}

bool is_address(const chip_ip6_address &found, const Address &wanted) {
  return memcmp(found.bytes, wanted.bytes, sizeof wanted.bytes) == 0;
}

// Also true where the platform cannot tell.
template <typename Next>
bool is_there(const Next &next, const Context &context, const Entry &entry) {
  bool there = next.find() == nullptr;
  if (there) return true;
  each_record(next, "entry", context.unit, 0, [&](const auto &found) {
    there |= found.entry.vid == entry.vid && is_address(found.entry.address_b, entry.group) &&
             is_address(found.entry.address_a, entry.source);
  });
  return there;
}

template <typename Act>
void act_on_entry(const Context &context, const Entry &entry, Act act) {
  act_on("entry", entry.text, act, [&] {
    return entry.group.six
               ? is_there(SWSH_OPTIONAL_CALL(swctl_platform_ip6_mcast_next), context, entry)
               : is_there(SWSH_OPTIONAL_CALL(swctl_platform_ip_mcast_next), context, entry);
  });
}

Answer add_mcast_ip(const Arguments &arguments, const Context &context) {
  const Entry entry = entry_of(arguments);
  if (entry.group.six) {
    perform(SWSH_CALL(User_ip6_mcast_add), entry.text, context.unit, entry.source.bytes,
            entry.group.bytes, entry.vid, entry.ports);
  } else {
    perform(SWSH_CALL(User_ip_mcast_add), entry.text, context.unit, entry.source.number,
            entry.group.number, entry.vid, entry.ports);
  }
  return {};
}

Answer set_mcast_ip(const Arguments &arguments, const Context &context) {
  const Entry entry = entry_of(arguments);
  if (entry.group.six) {
    throw CommandError(
        wrong_usage("an IPv6 entry cannot be set", arguments.word("GROUP"), {"del and add"}));
  }
  act_on_entry(context, entry, [&] {
    perform(SWSH_CALL(User_ip_mcast_set), entry.text, context.unit, entry.source.number,
            entry.group.number, entry.vid, entry.ports);
  });
  return {};
}

void delete_entry(const Context &context, const Entry &entry) {
  if (entry.group.six) {
    perform(SWSH_CALL(User_ip6_mcast_del), entry.text, context.unit, entry.source.bytes,
            entry.group.bytes, entry.vid);
  } else {
    perform(SWSH_CALL(User_ip_mcast_del), entry.text, context.unit, entry.source.number,
            entry.group.number, entry.vid);
  }
}

Answer del_mcast_ip(const Arguments &arguments, const Context &context) {
  const Entry entry = entry_of(arguments);
  act_on_entry(context, entry, [&] { delete_entry(context, entry); });
  return {};
}

std::vector<Choice> lookups() {
  return {{"mac", 0, "By MAC address"}, {"address", 1, "By IP addresses"}};
}

uint32_t read_lookup(const Family &family, const Context &context) {
  constexpr auto kMode = SWSH_OPTIONAL_CALL(swctl_platform_ip_mcast_mode_get);
  constexpr auto kMode6 = SWSH_OPTIONAL_CALL(swctl_platform_ip6_mcast_mode_get);
  return ask(is_six(family) ? kMode6 : kMode, context, context.unit);
}

Answer show_lookup(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const Family &family : kFamilies)
    if (is_chosen(arguments, family))
      answer.records.push_back(
          Record()
              .add("family", std::string(family.word))
              .add("lookup", word_value(lookups(), read_lookup(family, context))));
  return answer;
}

Answer lookup(const Arguments &arguments, const Context &context) {
  if (!arguments.has("LOOKUP")) return show_lookup(arguments, context);
  const auto by_address = arguments.u32("LOOKUP");
  const bool six = is_six(kFamilies[arguments.number("FAMILY")]);
  constexpr auto kSet = SWSH_CALL(User_switch_ipmc_set);
  constexpr auto kSet6 = SWSH_CALL(User_switch_ip6mc_mode_set);
  perform(six ? kSet6 : kSet, context, kLead, context.unit, by_address);
  return {};
}

// One record for the ports with the same action.
void add_misses(Answer &answer, const Family &family, const Context &context) {
  const auto ports = interfaces_by(front_ports(), [&](const Port &port) {
    return ask(SWSH_OPTIONAL_CALL(swctl_platform_lookup_miss_get), port, context.unit, port.chip,
               family.lookup);
  });
  for (const auto &[action, interfaces] : ports)
    answer.records.push_back(Record()
                                 .add("family", std::string(family.word))
                                 .add("action", int64_t{action})
                                 .add("ports", interfaces));
}

Answer show_misses(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const Family &family : kFamilies)
    if (is_chosen(arguments, family)) add_misses(answer, family, context);
  return answer;
}

Answer miss_mcast_ip(const Arguments &arguments, const Context &context) {
  if (arguments.has("PORTS") != arguments.has("action")) {
    const char *missing = arguments.has("PORTS") ? "action" : "PORTS";
    throw CommandError(wrong_usage("ports and an action go together", {}, {missing}));
  }
  if (!arguments.has("action")) return show_misses(arguments, context);
  const auto action = arguments.u32("action");
  const bool six = is_six(kFamilies[arguments.number("FAMILY")]);
  constexpr auto kSet = SWSH_CALL(User_switch_ipmc_lookup_miss_action);
  constexpr auto kSet6 = SWSH_CALL(User_switch_ip6mc_lookup_miss_action);
  for_each_port(ports_given(arguments, "PORTS"),
                [&](const Port &port) { write_port(context, port, six ? kSet6 : kSet, action); });
  return {};
}

Node entry_command(const char *name, const char *help, bool with_ports, Handler run) {
  Node node = {.name = name,
               .help = help,
               .positional = {required("GROUP", text(), "Group address, IPv4 or IPv6")},
               .keywords = {required("vlan", number(kFirstVlan, kLastVlan), "VLAN of the entry"),
                            {.name = "source",
                             .type = text(),
                             .help = "Source address; every one if not given"}},
               .run = run};
  if (with_ports) {
    node.keywords.push_back(required("ports", interface_list(0), "All ports of the entry"));
  }
  return node;
}

Parameter family_parameter() {
  std::vector<Choice> choices;
  for (const Family &family : kFamilies)
    choices.push_back({family.word, static_cast<int64_t>(choices.size()), family.help});
  return {.name = "FAMILY", .type = choice(choices), .help = "Address family"};
}

Node show_entries_command() {
  return {.name = "show",
          .help = "Show entries",
          .positional = {family_parameter()},
          .keywords = {{.name = "vlan",
                        .type = number(kFirstVlan, kLastVlan),
                        .help = "Only entries of this VLAN"}},
          .run = show_entries};
}

Node lookup_command() {
  return {
      .name = "lookup",
      .help = "Show or choose how groups are looked up",
      .positional = {family_parameter(),
                     {.name = "LOOKUP", .type = choice(lookups()), .help = "What is looked up"}},
      .run = lookup};
}

Node miss_mcast_ip_command() {
  return {
      .name = "miss",
      .help = "Show or say what becomes of unknown groups",
      .positional = {family_parameter(),
                     {.name = "PORTS",
                      .type = interface_list(),
                      .help = "Ports that they come into"}},
      .keywords = {{.name = "action", .type = number(0, 0xff), .help = "The chip's action code"}},
      .run = miss_mcast_ip};
}

}  // namespace

Node mcast_ip_commands() {
  return {
      .name = "ip",
      .help = "IP multicast entries and lookups",
      .children =
          {
              show_entries_command(),
              entry_command("add", "Add an entry", true, add_mcast_ip),
              entry_command("set", "Give an IPv4 entry other ports", true, set_mcast_ip),
              entry_command("del", "Delete an entry", false, del_mcast_ip),
              lookup_command(),
              miss_mcast_ip_command(),
          },
  };
}

}  // namespace swsh
