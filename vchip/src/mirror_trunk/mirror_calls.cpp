// SPDX-License-Identifier: MIT
// The SDK's calls on mirror groups.
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace vchip {
namespace {

// Words without a name are kept as they come.
int32_t possible(const chip_mirror_entry *entry) {
  if (entry == nullptr) return 0;
  const uint32_t beyond = ~kAllPorts;
  if (entry->mirroring_port >= VCHIP_PORTS) return VCHIP_E_PORT;
  if (((entry->ingress | entry->egress) & beyond) != 0) return VCHIP_E_PORT;
  const bool flags =
      entry->enable <= 1 && entry->field7 <= 1 && entry->field12 <= 1 && entry->field15 <= 1;
  return flags ? 0 : VCHIP_E_VALUE;
}

}  // namespace
}  // namespace vchip

int32_t rtk_mirror_group_get(uint32_t unit, uint32_t group, chip_mirror_entry *entry) {
  return vchip::look(unit, {vchip::not_null(entry), vchip::below(group, vchip::kMirrorGroups)},
                     [=](const vchip::Unit &chip) {
                       *entry = chip.mirror.group(group);
                       return 0;
                     });
}

int32_t rtk_mirror_group_set(uint32_t unit, uint32_t group, const chip_mirror_entry *entry) {
  return vchip::change(
      unit,
      {vchip::not_null(entry), vchip::below(group, vchip::kMirrorGroups), vchip::possible(entry)},
      [=](vchip::Unit &chip) { chip.mirror.set_group(group, *entry); });
}
