// SPDX-License-Identifier: MIT
// The SDK's calls on the conversion of VLAN IDs.
#include <swctl/platform/sdk.h>
#include <swctl/platform/vlan_read.h>

#include "chip/chip.h"
#include "common/check.h"
#include "common/table.h"

namespace vchip {
namespace {

// Values of a key that is ignored have no meaning and are not looked at.
int32_t possible(const chip_vlan_egress_entry *entry) {
  if (entry == nullptr) return 0;
  const bool flags = entry->valid <= 1 && entry->ignore_vid <= 1 && entry->ignore_port <= 1 &&
                     entry->ignore_second_key <= 1;
  const bool vids = (entry->ignore_vid != 0 || entry->vid < kVlanIds) && entry->new_vid < kVlanIds;
  const bool port = entry->ignore_port != 0 || entry->port < VCHIP_PORTS;
  if (!port) return VCHIP_E_PORT;
  return flags && vids ? 0 : VCHIP_E_VALUE;
}

}  // namespace
}  // namespace vchip

int32_t rtk_vlan_egrVlanCnvtEntry_set(uint32_t unit, uint32_t index,
                                      const chip_vlan_egress_entry *entry) {
  return vchip::change(
      unit,
      {vchip::not_null(entry), vchip::below(index, vchip::kEgressEntries), vchip::possible(entry)},
      [=](vchip::Unit &chip) { chip.conversion.set_egress(index, *entry); });
}

int32_t rtk_vlan_igrVlanCnvtBlkMode_set(uint32_t unit, uint32_t block, uint32_t mode) {
  return vchip::change(
      unit,
      {vchip::below(block, vchip::kIngressBlocks), vchip::at_most(mode, vchip::kMaxBlockMode)},
      [=](vchip::Unit &chip) { chip.conversion.set_mode(block, mode); });
}

int32_t swctl_platform_vlan_egress_next(uint32_t unit, int32_t from,
                                        swctl_platform_vlan_egress *egress) {
  return vchip::look(
      unit, {vchip::not_null(egress), vchip::search_from(from)}, [=](const vchip::Unit &chip) {
        *egress = {};
        egress->index = vchip::first_used(from, vchip::kEgressEntries, [&](uint32_t index) {
          return chip.conversion.egress(index).valid != 0;
        });
        if (egress->index >= 0)
          egress->entry = chip.conversion.egress(static_cast<uint32_t>(egress->index));
        return 0;
      });
}
