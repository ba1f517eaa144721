// SPDX-License-Identifier: MIT
// The engine of the walk deletes: which entries a callback removes, and how.
#ifndef SWCTL_SRC_L2_REMOVE_H
#define SWCTL_SRC_L2_REMOVE_H

#include <swctl/l2.h>

namespace swctl {

// How an entry's VLAN is compared with that of the match.
enum class VlanMatch { any, equal, equal_unless_0, equal_16_bits };

// What of an entry is compared with the match.
struct Keys {
  VlanMatch vlan = VlanMatch::any;
  bool port = false;
  bool trunk = false;
  bool mac = false;
};

enum class EntryKind { all, dynamic_only, static_only };

// What becomes of an entry whose keys match.
struct Removal {
  EntryKind kind;
  // Only if the adapter has a logical interface for the entry's port.
  bool on_interface_only;
  // A log line for an entry that is static.
  bool logged;
};

struct DeleteRule {
  // The callback's name and where the rule is, for the trace.
  const char *callback;
  int line;
  Keys keys;
  Removal removal;
};

bool keys_match(const Keys &keys, const chip_l2_ucast_entry &entry,
                const chip_l2_ucast_entry &match);

// Removes an entry whose keys match, if its kind and its interface allow it.
void remove_entry(const DeleteRule &rule, const chip_l2_ucast_entry &entry);

}  // namespace swctl

#endif
