// SPDX-License-Identifier: MIT
#include <swctl/port.h>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/ports.h"
#include "objects/registry.h"

namespace swsh {
namespace {

Answer show_flood(const Arguments &, const Context &context) {
  const user_pbmp_t ports = ask(SWSH_CALL(user_ulf_flood_ports_get), context, kLead, context.unit);
  Record record;
  record.add("unknown_unicast", interfaces_in(ports));
  return {Shape::detail, {record}, ""};
}

Answer set_flood(const Arguments &arguments, const Context &context) {
  const user_pbmp_t ports = bitmap_of(interfaces_given(arguments, "PORTS"));
  perform(SWSH_CALL(user_ulf_flood_ports_set), context, kLead, context.unit, ports);
  return {};
}

void change(const Arguments &arguments, const Context &context, uint32_t add) {
  for_each_port(ports_given(arguments, "PORTS"), [&](const Port &port) {
    write_port(context, port, SWSH_CALL(user_ulf_flood_port_add_remove), add);
  });
}

Answer add_flood(const Arguments &arguments, const Context &context) {
  change(arguments, context, 1);
  return {};
}

Answer remove_flood(const Arguments &arguments, const Context &context) {
  change(arguments, context, 0);
  return {};
}

Node command(const char *name, const char *help, Type type, Handler run) {
  return {.name = name,
          .help = help,
          .positional = {required("PORTS", std::move(type), "Ports, 0 the CPU")},
          .run = run};
}

}  // namespace

Node flood_object() {
  return {
      .name = "flood",
      .help = "Flooding: ports that get frames to unknown unicast addresses",
      .children = {{.name = "show",
                    .help = "Show the ports",
                    .details = "Ports that are on no interface are left out.\n",
                    .run = show_flood},
                   command("set", "Flood these ports and no others", interface_list_or_none(0),
                           set_flood),
                   command("add", "Flood these ports too", interface_list(0), add_flood),
                   command("remove", "Do not flood these ports", interface_list(0), remove_flood)},
  };
}

}  // namespace swsh
