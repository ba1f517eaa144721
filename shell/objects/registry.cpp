// SPDX-License-Identifier: MIT
#include "objects/registry.h"

#include "config/idempotent.h"

namespace swsh {

namespace {

Node make_table() {
  Node root = {
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
  add_replace_commands(root);
  return root;
}

}  // namespace

const Node &command_table() {
  static const Node root = make_table();
  return root;
}

}  // namespace swsh
