// SPDX-License-Identifier: MIT
#include "objects/mac.h"

#include <algorithm>

#include "chip/absent.h"
#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

// An entry is found by its address and its VLAN.
const Parameter kMac = required("MAC", mac_address(), "Address");
const Parameter kVlan = required("vlan", number(0, kLastVlanId), "VLAN of the address");

Answer show_mac(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const AddressFilter filter = filter_of(arguments);
  const Interfaces interfaces;
  Answer answer = {.shape = Shape::table, .records = {}, .text = ""};
  for (const user_l2_addr_t &entry : read_addresses()) {
    if (filter.fits(entry)) answer.records.push_back(address_record(interfaces, entry));
  }
  return answer;
}

// The library answers alike for an address that is not there and for a chip
// that refuses: the table can tell.
template <typename Act>
void act_on_address(const Mac &mac, int64_t vid, Act act) {
  const std::string text = entry_text(mac.data(), vid);
  const auto is_it = [&](const user_l2_addr_t &entry) {
    return entry.vid == vid && std::equal(mac.begin(), mac.end(), entry.mac);
  };
  act_on(
      "address", text, [&] { act(text); },
      [&] { return std::ranges::any_of(read_addresses(), is_it); });
}

Answer get(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const Mac mac = mac_of(arguments, "MAC");
  const int64_t vid = arguments.number("vlan");
  user_l2_addr_t entry = {};
  std::copy(mac.begin(), mac.end(), entry.mac);
  entry.vid = static_cast<uint16_t>(vid);
  act_on_address(mac, vid, [&](const std::string &text) {
    perform(SWSH_CALL(user_mac_addr_get), text, kLead, mac.data(), entry.vid, &entry);
  });
  return {Shape::detail, {address_record(Interfaces(), entry)}, ""};
}

Answer add_mac(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  if (arguments.has("static") && arguments.has("dynamic")) {
    throw CommandError(wrong_usage("static and dynamic exclude each other", "dynamic"));
  }
  const Mac mac = mac_of(arguments, "MAC");
  user_l2_addr_t entry = {};
  std::copy(mac.begin(), mac.end(), entry.mac);
  entry.vid = static_cast<uint16_t>(arguments.number("vlan"));
  entry.port = port_of(arguments.number("port")).chip;
  if (arguments.has("trunk")) entry.tgid = arguments.i32("trunk");
  entry.flags = arguments.has("dynamic") ? 0 : USER_L2_FLAG_STATIC;
  perform(SWSH_CALL(user_mac_addr_add), entry_text(mac.data(), entry.vid), kLead, entry);
  return {};
}

Answer del_mac(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const Mac mac = mac_of(arguments, "MAC");
  const auto vid = arguments.u32("vlan");
  act_on_address(mac, vid, [&](const std::string &text) {
    perform(SWSH_CALL(user_mac_addr_delete), text, kLead, mac.data(), vid);
  });
  return {};
}

// What flush removes. A request for a trunk group alone selects nothing, so
// that it would remove everything: it is not offered.
void flush_selected(const Arguments &arguments) {
  const std::string subject = "the flush";
  const uint32_t flags = arguments.has("static") ? 1 : 0;
  const auto vid = arguments.has("vlan") ? arguments.u32("vlan") : 0;
  const auto trunk = arguments.has("trunk") ? arguments.i32("trunk") : 0;
  const int32_t port = arguments.has("port") ? port_of(arguments.number("port")).chip : 0;
  if (arguments.has("vlan") && arguments.has("port")) {
    perform(SWSH_CALL(user_l2_addr_delete_by_vlan_port), subject, kLead, 0u, vid, 0u, port, flags);
  } else if (arguments.has("vlan") && arguments.has("trunk")) {
    perform(SWSH_CALL(user_l2_addr_delete_by_vlan_trunk), subject, kLead, 0u, vid, trunk, flags);
  } else if (arguments.has("vlan")) {
    perform(SWSH_CALL(user_l2_addr_delete_by_vlan), subject, kLead, 0u, vid, flags);
  } else if (arguments.has("port")) {
    perform(SWSH_CALL(user_l2_addr_delete_by_port), subject, kLead, 0u, 0u, port, flags);
  } else {
    const uint8_t ignored[SWCTL_MAC_BYTES] = {};
    perform(SWSH_CALL(user_l2_addr_delete_by_mac), subject, kLead, 0u, ignored, flags);
  }
}

Answer flush(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const bool selected = arguments.has("vlan") || arguments.has("port") || arguments.has("trunk");
  if (arguments.has("all") && selected) {
    throw CommandError(wrong_usage("all comes alone or with static", "all"));
  }
  if (!arguments.has("all") && !selected) {
    throw CommandError(wrong_usage("missing keyword", std::nullopt, {"vlan", "port", "all"}));
  }
  if (arguments.has("trunk") && (!arguments.has("vlan") || arguments.has("port"))) {
    throw CommandError(
        wrong_usage("a trunk is flushed within a VLAN", "trunk", {"vlan beside trunk"}));
  }
  flush_selected(arguments);
  return {};
}

Node show_mac_command() {
  return {
      .name = "show",
      .help = "Show the addresses in the table",
      .keywords = filter_keywords(),
      .details =
          "Addresses in VLANs that do not exist are removed from the chip, not shown.\n"
          "port is - for an address on a chip port without an interface.\n",
      .run = show_mac,
  };
}

Node add_mac_command() {
  return {
      .name = "add",
      .help = "Add an address, static unless said otherwise",
      .positional = {kMac},
      .keywords = {kVlan,
                   required("port", interface_number(0), "Port it is bound to, 0 for the CPU"),
                   {.name = "trunk",
                    .type = number(0, kLastTrunk),
                    .help = "Trunk group; 0 if not given"},
                   {.name = "static", .type = flag(), .help = "It stays until it is deleted"},
                   {.name = "dynamic", .type = flag(), .help = "It ages as if it were learned"}},
      .details = "An address that is there already is written over.\n",
      .run = add_mac,
  };
}

Node flush_command() {
  return {
      .name = "flush",
      .help = "Remove many addresses in one request to the chip",
      .keywords = {{.name = "vlan", .type = number(0, kLastVlanId), .help = "Only in this VLAN"},
                   {.name = "port", .type = interface_number(0), .help = "Only on this port"},
                   {.name = "trunk",
                    .type = number(0, kLastTrunk),
                    .help = "Only on this trunk group, within a VLAN"},
                   {.name = "all", .type = flag(), .help = "Everywhere"},
                   {.name = "static", .type = flag(), .help = "Static addresses too"}},
      .needs_keyword = true,
      .run = flush,
  };
}

}  // namespace

void expect_unit_0(const Context &context) {
  if (context.unit == 0) return;
  const std::string unit = std::to_string(context.unit);
  throw CommandError(
      wrong_usage("the library reaches the address table of unit 0 only", unit, {"unit 0"}));
}

Node mac_object() {
  Node object = {
      .name = "mac",
      .help = "The layer-2 address table",
      .children = {show_mac_command(),
                   add_mac_command(),
                   {.name = "del",
                    .help = "Delete one address",
                    .positional = {kMac},
                    .keywords = {kVlan},
                    .run = del_mac},
                   {.name = "get",
                    .help = "Show one address in detail",
                    .positional = {kMac},
                    .keywords = {kVlan},
                    .run = get},
                   flush_command()},
  };
  for (Node &node : mac_learning_commands()) object.children.push_back(std::move(node));
  for (Node &node : mac_dump_commands()) object.children.push_back(std::move(node));
  object.children.push_back(mac_monitor_command());
  return object;
}

}  // namespace swsh
