// SPDX-License-Identifier: MIT
// The engine of the walk deletes: which entries a callback removes, and how.
#ifndef SWCTL_SRC_L2_REMOVE_H
#define SWCTL_SRC_L2_REMOVE_H

#include <swctl/l2.h>

namespace swctl {

// What of an entry is held against the match.
enum class Vlan { any, equal, equal_unless_0, equal_16_bits };
struct Keys {
  Vlan vlan = Vlan::any;
  bool port = false;
  bool trunk = false;
  bool mac = false;
};

enum class Kind { all, dynamic_only, static_only };

// What becomes of an entry whose keys fit.
struct Removal {
  Kind kind;
  // Only if the adapter has a logical interface for the entry's port.
  bool on_interface_only;
  // A log line for an entry that is static.
  bool logged;
};

struct Rule {
  const char *callback;
  int line;
  Keys keys;
  Removal removal;
};

bool fits(const Keys &keys, const chip_l2_ucast_entry &entry, const chip_l2_ucast_entry &match);

// Removes an entry that fits, if its kind and its interface allow it.
void remove(const Rule &rule, const chip_l2_ucast_entry &entry);

}  // namespace swctl

#endif
