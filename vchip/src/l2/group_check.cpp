// SPDX-License-Identifier: MIT
#include <array>

#include "document/findings.h"
#include "l2/group_block.h"
#include "l2/l2_check.h"

namespace vchip {

// Groups that are there differ in VLAN or address, and in their masks. Mask 0 is
// nobody's.
void GroupBlock::check(Findings &findings) const {
  std::array<bool, kPortMasks> taken = {};
  findings.each("groups", groups_, [&](const Group &group, size_t number) {
    const auto index = static_cast<int32_t>(number);
    const bool exists = group.exists != 0;
    findings.any("mac", group.mac);
    findings.flag("exists", group.exists);
    findings.in("mask", group.mask, exists ? 1 : 0, kPortMasks - 1);
    findings.at_most("vid", group.vid, kVlanIds - 1);
    if (!exists) return;
    findings.rule(on_group(group.mac) == 0, "mac", "is no group address");
    findings.rule(find(group.vid, group.mac) == index, "", "is there twice");
    if (group.mask >= kPortMasks) return;
    findings.rule(!taken[group.mask], "mask", "is that of another group");
    taken[group.mask] = true;
  });
  findings.each("masks", masks_, [&](const uint32_t &mask, size_t index) {
    findings.bits("", mask, index == 0 ? 0 : kAllPorts);
  });
}

}  // namespace vchip
