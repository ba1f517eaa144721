// SPDX-License-Identifier: MIT
// What differs between two documents of what a chip holds.
#ifndef VCHIPCTL_CHIP_DIFFERENCE_H
#define VCHIPCTL_CHIP_DIFFERENCE_H

#include <optional>
#include <string>
#include <vector>

#include "os/json.h"

namespace vchipctl {

struct ChipDifference {
  std::string path;  // "units[0].vlan.vlans[vid=7].member"
  // What each has there; nothing: it has no such place.
  std::optional<os::Json> a, b;
};

// An entry of a table is compared with that of the same key, wherever the two
// are listed.
std::vector<ChipDifference> chip_differences(const os::Json &a, const os::Json &b);

}  // namespace vchipctl

#endif
