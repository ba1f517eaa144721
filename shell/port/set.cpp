// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include <optional>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "config/description.h"
#include "fault.h"
#include "port/commands.h"
#include "port/mode.h"

namespace swsh {
namespace {

// What port set is to do with the mode of one port.
struct Plan {
  Port port;
  uint32_t speed = USER_SPEED_UNKNOWN;
  uint32_t duplex = USER_DUPLEX_FULL;
};

uint32_t present_duplex(const Context &context, const Port &port) {
  const uint32_t duplex = read_duplex(context, port);
  // A port that advertises both modes would settle on full if it could.
  return duplex == USER_DUPLEX_BOTH ? USER_DUPLEX_FULL : duplex;
}

uint32_t present_speed(const Context &context, const Port &port) {
  const uint32_t speed = read_speed(context, port);
  if (speed != USER_SPEED_UNKNOWN) return speed;
  const std::string number = std::to_string(port.interface);
  throw CommandError(wrong_usage("the present speed of port " + number + " is not known", number,
                                 {"speed beside duplex"}));
}

Plan plan_for(const Arguments &arguments, const Context &context, const Port &port) {
  Plan plan = {.port = port};
  const bool speed = arguments.has("speed");
  const bool duplex = arguments.has("duplex");
  if (speed) plan.speed = arguments.u32("speed");
  if (duplex) plan.duplex = arguments.u32("duplex");
  if (speed && !duplex) plan.duplex = present_duplex(context, port);
  if (duplex && !speed) plan.speed = present_speed(context, port);
  return plan;
}

// user_port_duplex_set() takes the speed as the SDK's code.
uint32_t speed_code(uint32_t speed) {
  switch (speed) {
    case USER_SPEED_10: return 0;
    case USER_SPEED_100: return 1;
    case USER_SPEED_1000: return 2;
    case USER_SPEED_10000: return 3;
    default: return 4;
  }
}

void apply_mode(const Arguments &arguments, const Context &context, const Plan &plan) {
  const Port &port = plan.port;
  if (arguments.has("speed")) {
    perform(SWSH_CALL(user_port_speed_set), port, kLead, context.unit, port.chip, plan.speed,
            plan.duplex);
  } else if (arguments.has("duplex")) {
    perform(SWSH_CALL(user_port_duplex_set), port, kLead, context.unit, port.chip, plan.duplex,
            speed_code(plan.speed));
  }
}

// A keyword that needs no other, and what to do about it.
struct Setting {
  Parameter keyword;
  void (*apply)(const Arguments &, const Context &, const Port &);
};

#define APPLY_NUMBER(keyword, function)                                        \
  [](const Arguments &arguments, const Context &context, const Port &port) {   \
    write_port(context, port, SWSH_CALL(function), arguments.number(keyword)); \
  }

void apply_advertise(const Arguments &arguments, const Context &context, const Port &port) {
  const uint32_t ability = arguments.u32("advertise");
  write_port(context, port, SWSH_CALL(user_port_ability_advert_set), &ability);
}

void apply_isolation(const Arguments &arguments, const Context &context, const Port &port) {
  perform(SWSH_CALL(user_port_egress_set), port, kLead, context.unit, port.chip, 0,
          bitmap_of(interfaces_given(arguments, "isolation")));
}

void apply_tpid(const Arguments &arguments, const Context &context, const Port &port) {
  const uint32_t entry = arguments.has("entry") ? arguments.u32("entry") : 0;
  perform(SWSH_CALL(user_port_tpid_set), port, kLead, context.unit, port.chip,
          arguments.u32("tpid"), entry);
}

void apply_outer(const Arguments &arguments, const Context &context, const Port &port) {
  const uint32_t entry = arguments.has("entry") ? arguments.u32("entry") : 0;
  perform(SWSH_CALL(user_tpid_entry_set), port, kLead, context.unit, entry, arguments.u32("outer"));
}

void apply_description(const Arguments &arguments, const Context &context, const Port &port) {
  set_description(context.unit, port.interface, arguments.word("description"));
}

// The library switches a limit on and never off: the highest rate is none.
#define APPLY_RATE(keyword, function, limit)                                   \
  [](const Arguments &arguments, const Context &context, const Port &port) {   \
    write_port(context, port, SWSH_CALL(function), arguments.number(keyword)); \
    if (arguments.number(keyword) == kLastRate)                                \
      perform(SWSH_CALL(limit), port, context.unit, port.chip, 0u);            \
  }

Type learning_type() {
  return choice({{"on", USER_LEARN_ON, "Learn and forward"},
                 {"off", USER_LEARN_DISCARD, "Drop frames from unknown addresses"},
                 {"forward", USER_LEARN_FORWARD, "Forward without learning"},
                 {"cpu", USER_LEARN_TO_CPU, "Leave learning to the processor"},
                 {"copy", USER_LEARN_COPY_CPU, "Learn, and copy to the processor"},
                 {"restore", USER_LEARN_RESTORE, "What the last change found"}});
}

Type mdix_type() {
  return choice({{"auto", USER_MDIX_AUTO, ""},
                 {"straight", USER_MDIX_STRAIGHT, ""},
                 {"crossed", USER_MDIX_CROSSED, ""}});
}

// In the order in which they are carried out.
const std::vector<Setting> &settings() {
  const Type limit = stepped(bandwidth(0, kLastRate), kRateStep);
  static const std::vector<Setting> all = {
      {{.name = "admin", .type = on_off(), .help = "Whether the port is switched on"},
       APPLY_NUMBER("admin", user_port_enable_set)},
      {{.name = "advertise",
        .type = choice_list(ability_choices()),
        .help = "What autonegotiation offers, such as 100-full,pause"},
       apply_advertise},
      {{.name = "autoneg", .type = on_off(), .help = "Autonegotiation"},
       APPLY_NUMBER("autoneg", user_port_autoneg_set)},
      {{.name = "pause", .type = on_off(), .help = "Flow control"},
       APPLY_NUMBER("pause", user_port_pause_set)},
      {{.name = "backpressure",
        .type = on_off(),
        .help = "Flow control by collisions, in half duplex"},
       APPLY_NUMBER("backpressure", user_port_backpressure_set)},
      {{.name = "mdix", .type = mdix_type(), .help = "Which pairs the port sends on"},
       APPLY_NUMBER("mdix", user_port_mdix_set)},
      {{.name = "eee", .type = on_off(), .help = "Energy-efficient Ethernet"},
       APPLY_NUMBER("eee", user_eee_portEnable_set)},
      {{.name = "loopback",
        .type = on_off(),
        .help = "Whether the MAC sends its own frames back to itself"},
       APPLY_NUMBER("loopback", user_port_loopback_set)},
      {{.name = "mtu",
        .type = number(64, 16383, "bytes"),
        .help = "Longest frame, for all ports of the unit"},
       APPLY_NUMBER("mtu", user_port_jumboframe_set)},
      {{.name = "learning", .type = learning_type(), .help = "What new source addresses lead to"},
       APPLY_NUMBER("learning", user_port_learn_set)},
      {{.name = "isolation",
        .type = interface_list_or_none(0),
        .help = "Isolation: ports it may send to, 0 the CPU"},
       apply_isolation},
      {{.name = "vlan",
        .type = number(kFirstVlan, kLastVlan),
        .help = "PVID, the VLAN of untagged frames"},
       APPLY_NUMBER("vlan", user_port_untagged_vlan_set)},
      {{.name = "filter",
        .type = on_off(),
        .help = "Ingress filtering: drop frames of other VLANs"},
       APPLY_NUMBER("filter", user_port_ifilter_set)},
      {{.name = "dtag", .type = on_off(), .help = "Double-tag mode"},
       APPLY_NUMBER("dtag", user_port_dtag_mode_set)},
      {{.name = "tpid", .type = number(0, 0xffff), .help = "Tag protocol identifier"}, apply_tpid},
      {{.name = "entry",
        .type = number(0, kLastTpidEntry),
        .help = "Place of tpid in the switch's tables; 0 if not given"},
       nullptr},
      {{.name = "outer",
        .type = number(0, 0xffff),
        .help = "Tag protocol identifier of outer tags; tpid if not given"},
       apply_outer},
      {{.name = "ingress", .type = limit, .help = "Ingress rate limit"},
       APPLY_RATE("ingress", user_port_ingress_rate_set, rtk_rate_igrBandwidthCtrlEnable_set)},
      {{.name = "egress", .type = limit, .help = "Egress rate limit"},
       APPLY_RATE("egress", user_port_egress_rate_set, rtk_rate_egrBandwidthCtrlEnable_set)},
      {{.name = "description",
        .type = text(),
        .help = "What the port is called; \"\" is no description"},
       apply_description},
  };
  return all;
}

void apply(const Arguments &arguments, const Context &context, const Plan &plan) {
  apply_mode(arguments, context, plan);
  for (const Setting &setting : settings()) {
    if (setting.apply != nullptr && arguments.has(setting.keyword.name))
      setting.apply(arguments, context, plan.port);
  }
}

// What one word alone does not show. Nothing is changed yet.
void check_together(const Arguments &arguments, const Context &context) {
  const bool mode = arguments.has("speed") || arguments.has("duplex");
  if (mode && arguments.has("autoneg") && arguments.number("autoneg") != 0)
    throw CommandError(
        wrong_usage("speed and duplex are forced, not negotiated", "autoneg", {"autoneg off"}));
  if (arguments.has("entry") && !arguments.has("tpid"))
    throw CommandError(wrong_usage("entry belongs to tpid", "entry", {"tpid"}));
  if (arguments.has("outer") && !arguments.has("tpid"))
    throw CommandError(wrong_usage("outer belongs to tpid", "outer", {"tpid"}));
  if (arguments.has("description")) expect_description(arguments.word("description"));
  if (arguments.has("learning")) expect_unit_zero(context, "learning");
  if (arguments.has("isolation")) bitmap_of(interfaces_given(arguments, "isolation"));
}

Answer set(const Arguments &arguments, const Context &context) {
  check_together(arguments, context);
  std::vector<Plan> plans;
  for (const Port &port : ports_given(arguments, "PORTS")) {
    plans.push_back(plan_for(arguments, context, port));
  }
  for_each_of(
      plans, [](const Plan &plan) { return plan.port.interface; },
      [&](const Plan &plan) { apply(arguments, context, plan); });
  return {};
}

std::vector<Parameter> keywords() {
  std::vector<Parameter> all = {
      {.name = "speed",
       .type = choice({{"10", 10, "10 Mbit/s"},
                       {"100", 100, "100 Mbit/s"},
                       {"1000", 1000, "1 Gbit/s"},
                       {"10000", 10000, "10 Gbit/s"}}),
       .help = "Forced speed in Mbit/s; without duplex, the present one stays"},
      {.name = "duplex",
       .type = choice({{"half", USER_DUPLEX_HALF, "One direction at a time"},
                       {"full", USER_DUPLEX_FULL, "Both directions at once"}}),
       .help = "Forced duplex; without speed, the present one stays"}};
  for (const Setting &setting : settings()) all.push_back(setting.keyword);
  return all;
}

}  // namespace

Node port_set_command() {
  return {
      .name = "set",
      .help = "Change settings of ports",
      .positional = {ports_to_change()},
      .keywords = keywords(),
      .needs_keyword = true,
      .details =
          "speed and duplex switch autonegotiation off and force the mode; flow control\n"
          "stays as it is. Everything is checked before the first port is changed; then\n"
          "the settings are made in the order shown here, port by port.\n",
      .run = set,
  };
}

}  // namespace swsh
