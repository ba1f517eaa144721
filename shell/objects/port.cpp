// SPDX-License-Identifier: MIT
#include "objects/registry.h"
#include "port/commands.h"

namespace swsh {

Node port_object() {
  return {
      .name = "port",
      .help = "Ports: state, settings, counters, cables",
      .children = {port_show_command(), port_set_command(), port_stats_command(),
                   port_clear_command(), port_cable_command()},
  };
}

}  // namespace swsh
