// SPDX-License-Identifier: MIT
#include <swctl/port.h>

#include <optional>

#include "chip/ports.h"
#include "fault.h"
#include "number_list.h"
#include "objects/registry.h"

namespace swsh {
namespace {

constexpr uint32_t kLead = 0;

constexpr PortGetter kLinkGet = {"user_port_link_status_get", user_port_link_status_get};
constexpr PortGetter kSpeedGet = {"user_port_speed_get", user_port_speed_get};
constexpr PortGetter kDuplexGet = {"user_port_duplex_get", user_port_duplex_get};
constexpr PortGetter kMediumGet = {"user_port_media_type_get", user_port_media_type_get};
constexpr PortGetter kLoopbackGet = {"user_port_loopback_get", user_port_loopback_get};
constexpr PortGetter kSpeedMax = {"user_port_speed_max", user_port_speed_max};
constexpr PortSetter kLoopbackSet = {"user_port_loopback_set", user_port_loopback_set};

void add_speed(Record &record, uint32_t speed) {
  if (speed == USER_SPEED_UNKNOWN) {
    record.add("speed", nullptr, "unknown");
  } else {
    record.add("speed", int64_t{speed});
  }
}

std::string duplex_text(uint32_t duplex) {
  switch (duplex) {
    case USER_DUPLEX_HALF: return "half";
    case USER_DUPLEX_FULL: return "full";
    case USER_DUPLEX_BOTH: return "both";
    default: return std::to_string(duplex);
  }
}

Record port_record(const Context &context, const Port &port) {
  const auto read = [&](const PortGetter &getter) { return read_port(context, port, getter); };
  const bool loopback = read(kLoopbackGet) != 0;
  Record record;
  record.add("port", port.interface);
  record.add("link", std::string(read(kLinkGet) != 0 ? "up" : "down"));
  add_speed(record, read(kSpeedGet));
  record.add("duplex", duplex_text(read(kDuplexGet)));
  record.add("medium", std::string(read(kMediumGet) == USER_MEDIUM_FIBRE ? "fibre" : "copper"));
  record.add("loopback", loopback, loopback ? "on" : "off");
  record.add_detail("max_speed", int64_t{read(kSpeedMax)});
  record.add_detail("chip_port", int64_t{port.chip});
  return record;
}

Answer show(const Arguments &arguments, const Context &context) {
  const bool chosen = arguments.has("PORTS");
  const auto ports = chosen ? ports_of(arguments.numbers("PORTS")) : front_ports();
  Answer answer;
  for (const Port &port : ports) answer.records.push_back(port_record(context, port));
  answer.shape = chosen && ports.size() == 1 ? Shape::detail : Shape::table;
  return answer;
}

// What port set is to do with one port.
struct Plan {
  Port port;
  uint32_t speed = USER_SPEED_UNKNOWN;
  uint32_t duplex = USER_DUPLEX_FULL;
};

uint32_t present_duplex(const Context &context, const Port &port) {
  const uint32_t duplex = read_port(context, port, kDuplexGet);
  // A port that advertises both modes would settle on full if it could.
  return duplex == USER_DUPLEX_BOTH ? USER_DUPLEX_FULL : duplex;
}

uint32_t present_speed(const Context &context, const Port &port) {
  const uint32_t speed = read_port(context, port, kSpeedGet);
  if (speed != USER_SPEED_UNKNOWN) return speed;
  const std::string number = std::to_string(port.interface);
  throw CommandError(wrong_usage("the present speed of port " + number + " is not known", number,
                                 {"speed beside duplex"}));
}

Plan plan_for(const Arguments &arguments, const Context &context, const Port &port) {
  Plan plan = {.port = port};
  const bool speed = arguments.has("speed");
  const bool duplex = arguments.has("duplex");
  if (speed) plan.speed = static_cast<uint32_t>(arguments.number("speed"));
  if (duplex) plan.duplex = static_cast<uint32_t>(arguments.number("duplex"));
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

void apply(const Arguments &arguments, const Context &context, const Plan &plan) {
  const Port &port = plan.port;
  if (arguments.has("speed")) {
    check_result(user_port_speed_set(kLead, context.unit, port.chip, plan.speed, plan.duplex),
                 "user_port_speed_set", port.interface);
  } else if (arguments.has("duplex")) {
    check_result(
        user_port_duplex_set(kLead, context.unit, port.chip, plan.duplex, speed_code(plan.speed)),
        "user_port_duplex_set", port.interface);
  }
  if (arguments.has("loopback")) {
    write_port(context, port, kLoopbackSet, static_cast<uint32_t>(arguments.number("loopback")));
  }
}

Answer set(const Arguments &arguments, const Context &context) {
  std::vector<Plan> plans;
  for (const Port &port : ports_of(arguments.numbers("PORTS"))) {
    plans.push_back(plan_for(arguments, context, port));
  }
  std::vector<int64_t> done;
  try {
    for (const Plan &plan : plans) {
      apply(arguments, context, plan);
      done.push_back(plan.port.interface);
    }
  } catch (const CommandError &error) {
    if (done.empty()) throw;
    Fault fault = error.fault();
    fault.message += "; already set: " + number_list_text(done);
    throw CommandError(fault);
  }
  return {};
}

Node show_command() {
  return {
      .name = "show",
      .help = "Show the state of ports",
      .positional = {{.name = "PORTS", .type = interface_list(), .help = "Ports to show"}},
      .details =
          "Without PORTS, all front ports in a table; a single port in detail.\n"
          "Speed and duplex are those in operation; with the link down, those forced or,\n"
          "under autonegotiation, those advertised: several speeds or none are unknown,\n"
          "duplex both stands for both or neither.\n",
      .run = show,
  };
}

Node set_command() {
  return {
      .name = "set",
      .help = "Force speed and duplex, switch the loopback",
      .positional = {{.name = "PORTS",
                      .type = interface_list(),
                      .help = "Ports to change",
                      .required = true}},
      .keywords = {{.name = "speed",
                    .type = choice({{"10", 10, "10 Mbit/s"},
                                    {"100", 100, "100 Mbit/s"},
                                    {"1000", 1000, "1 Gbit/s"},
                                    {"10000", 10000, "10 Gbit/s"}}),
                    .help = "Forced speed in Mbit/s; without duplex, the present one stays"},
                   {.name = "duplex",
                    .type = choice({{"half", USER_DUPLEX_HALF, "One direction at a time"},
                                    {"full", USER_DUPLEX_FULL, "Both directions at once"}}),
                    .help = "Forced duplex; without speed, the present one stays"},
                   {.name = "loopback",
                    .type = on_off(),
                    .help = "Whether the MAC sends its own frames back to itself"}},
      .needs_keyword = true,
      .details =
          "speed and duplex switch autonegotiation off and force the mode; flow control\n"
          "stays as it is. Every port is checked before the first one is changed.\n",
      .run = set,
  };
}

}  // namespace

Node port_object() {
  return {
      .name = "port",
      .help = "Ports: link, speed, duplex, medium, loopback",
      .children = {show_command(), set_command()},
  };
}

}  // namespace swsh
