// SPDX-License-Identifier: MIT
#include <swctl/mirror_trunk.h>

#include "chip/lead.h"
#include "chip/ports.h"
#include "chip/unit_zero.h"
#include "objects/registry.h"

namespace swsh {
namespace {

constexpr int64_t kLastTrunk = 31;

uint32_t trunk_of(const Arguments &arguments) {
  return static_cast<uint32_t>(arguments.number("TRUNK"));
}

std::string trunk_text(uint32_t trunk) {
  return "trunk " + std::to_string(trunk);
}

Answer set(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const uint32_t trunk = trunk_of(arguments);
  user_trunk_desc_t members = {};
  for (const Port &port : ports_of(arguments.numbers("PORTS")))
    members.ports[members.count++] = static_cast<uint8_t>(port.chip);
  check_call(user_trunk_set(kLead, context.unit, trunk, members), "user_trunk_set",
             trunk_text(trunk));
  return {};
}

Answer del(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const uint32_t trunk = trunk_of(arguments);
  check_call(user_trunk_destroy(kLead, context.unit, trunk), "user_trunk_destroy",
             trunk_text(trunk));
  return {};
}

Answer hash(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  check_call(user_trunk_loadbalance_set(kLead, context.unit, 0,
                                        static_cast<uint32_t>(arguments.number("FIELDS"))),
             "user_trunk_loadbalance_set", unit_text(context));
  return {};
}

Parameter trunk_parameter() {
  return {.name = "TRUNK", .type = number(0, kLastTrunk), .help = "Trunk", .required = true};
}

Type hash_fields() {
  return choice({{"none", USER_TRUNK_HASH_NONE, "Nothing"},
                 {"source-mac", USER_TRUNK_HASH_SOURCE_MAC, "Source MAC"},
                 {"destination-mac", USER_TRUNK_HASH_DESTINATION_MAC, "Destination MAC"},
                 {"macs", USER_TRUNK_HASH_MACS, "Both MACs"},
                 {"source-ip", USER_TRUNK_HASH_SOURCE_IP, "Source IP"},
                 {"destination-ip", USER_TRUNK_HASH_DESTINATION_IP, "Destination IP"},
                 {"ips", USER_TRUNK_HASH_IPS, "Both IPs"}});
}

}  // namespace

Node trunk_object() {
  return {
      .name = "trunk",
      .help = "Trunks: ports that stand for one link",
      .children =
          {
              {.name = "set",
               .help = "Give a trunk its members",
               .positional = {trunk_parameter(),
                              {.name = "PORTS",
                               .type = interface_list(),
                               .help = "All of its ports",
                               .required = true}},
               .details =
                   "Ports that are not named are no longer members. The chip cannot be asked\n"
                   "which members a trunk has.\n",
               .run = set},
              {.name = "del",
               .help = "Take every port out of a trunk",
               .positional = {trunk_parameter()},
               .run = del},
              {.name = "hash",
               .help = "Choose what spreads frames over members",
               .positional = {{.name = "FIELDS",
                               .type = hash_fields(),
                               .help = "Header fields",
                               .required = true}},
               .details = "The choice holds for all trunks.\n",
               .run = hash},
          },
  };
}

}  // namespace swsh
