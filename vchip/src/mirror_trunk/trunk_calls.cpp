// SPDX-License-Identifier: MIT
// The SDK's calls on trunks.
#include <swctl/platform/sdk.h>
#include <swctl/platform/trunk_read.h>

#include "chip/chip.h"
#include "common/check.h"
#include "common/table.h"

namespace vchip {
namespace {

int32_t possible(const uint32_t *members) {
  if (members == nullptr) return 0;
  if (on_ports(*members) != 0) return VCHIP_E_PORT;
  return may_be_members(*members) ? 0 : VCHIP_E_CPU_PORT;
}

}  // namespace
}  // namespace vchip

int32_t rtk_trunk_port_set(uint32_t unit, uint32_t trunk, const uint32_t *members) {
  return vchip::change_if(unit,
                          {vchip::not_null(members), vchip::possible(members),
                           vchip::below(trunk, vchip::kTrunkGroups)},
                          [=](vchip::Unit &chip) {
                            if (chip.trunk.taken(trunk, *members)) return VCHIP_E_TRUNK_MEMBER;
                            chip.trunk.set_members(trunk, *members);
                            return 0;
                          });
}

int32_t rtk_trunk_distributionAlgorithmParam_set(uint32_t unit, uint32_t algorithm,
                                                 uint32_t fields) {
  return vchip::change(
      unit,
      {vchip::below(algorithm, vchip::kHashAlgorithms), vchip::at_most(fields, vchip::kHashFields)},
      [=](vchip::Unit &chip) { chip.trunk.set_hash_fields(algorithm, fields); });
}

int32_t swctl_platform_trunk_next(uint32_t unit, int32_t from, swctl_platform_trunk *trunk) {
  return vchip::look(
      unit, {vchip::not_null(trunk), vchip::search_from(from)}, [=](const vchip::Unit &chip) {
        const auto &members = chip.trunk.members();
        const int32_t found = vchip::first_used(
            from, vchip::kTrunkGroups, [&](uint32_t index) { return members[index] != 0; });
        *trunk = {found, found < 0 ? 0 : members[static_cast<size_t>(found)]};
        return 0;
      });
}

int32_t swctl_platform_trunk_hash_get(uint32_t unit, uint32_t algorithm, uint32_t *fields) {
  return vchip::look(unit,
                     {vchip::not_null(fields), vchip::below(algorithm, vchip::kHashAlgorithms)},
                     [=](const vchip::Unit &chip) {
                       *fields = chip.trunk.hash_fields()[algorithm];
                       return 0;
                     });
}
