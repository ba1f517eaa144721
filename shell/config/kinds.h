// SPDX-License-Identifier: MIT
// The settings of each object, a file each.
#ifndef SWCTL_SHELL_CONFIG_KINDS_H
#define SWCTL_SHELL_CONFIG_KINDS_H

#include <vector>

#include "config/setting.h"

namespace swsh {

using Kinds = std::vector<SettingKind>;

// In the order in which a configuration loads.
#define SWSH_CONFIG_OBJECTS(OBJECT) \
  OBJECT(dos)                       \
  OBJECT(storm)                     \
  OBJECT(qos)                       \
  OBJECT(meter)                     \
  OBJECT(vlan)                      \
  OBJECT(stp)                       \
  OBJECT(port)                      \
  OBJECT(flood)                     \
  OBJECT(trunk)                     \
  OBJECT(mirror)                    \
  OBJECT(mac)                       \
  OBJECT(mcast)                     \
  OBJECT(trap)                      \
  OBJECT(acl)

#define DECLARE(object) void add_##object##_kinds(Kinds &kinds, const Board &board);
SWSH_CONFIG_OBJECTS(DECLARE)
#undef DECLARE

inline Kinds make_kinds(const Board &board) {
  Kinds all;
#define ADD(object) add_##object##_kinds(all, board);
  SWSH_CONFIG_OBJECTS(ADD)
#undef ADD
  return all;
}

}  // namespace swsh

#endif
