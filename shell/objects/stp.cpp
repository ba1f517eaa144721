// SPDX-License-Identifier: MIT
#include "objects/registry.h"
#include "stp/commands.h"

namespace swsh {

Node stp_object() {
  return {
      .name = "stp",
      .help = "Spanning tree: instances, VLANs, port states",
      .children = {stp_show_command(), stp_set_command(), stp_instance_commands(),
                   stp_vlan_commands()},
  };
}

}  // namespace swsh
