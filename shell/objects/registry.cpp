// SPDX-License-Identifier: MIT
#include "objects/registry.h"

namespace swsh {

const Node &command_table() {
  static const Node root = {
      .name = "swctl",
      .help = "Shows and changes a switch chip through libswctl",
      .children =
          {
#define SWCTL_OBJECT(name) name##_object(),
#include "objects/objects.def"
#undef SWCTL_OBJECT
          },
      .details =
          "Objects, commands and keywords may be abbreviated; values are written in full.\n"
          "Without a command, swctl reads commands: from a terminal with history and\n"
          "completion, from a file or pipe as a batch.\n",
  };
  return root;
}

}  // namespace swsh
