// SPDX-License-Identifier: MIT
#include "mirror_trunk/trunk_block.h"

#include <swctl-vchip/mirror_trunk_view.h>
#include <swctl/platform/sdk.h>
#include <swctl/platform/trunk_read.h>

#include <string>

#include "core/check.h"
#include "core/dump.h"
#include "core/ports_in.h"
#include "core/table.h"
#include "core/viewing.h"

namespace vchip {
namespace {

// By bit, from the lowest.
constexpr const char *kFieldNames[] = {"source-port",        "source-mac",     "destination-mac",
                                       "source-ip",          "destination-ip", "source-l4-port",
                                       "destination-l4-port"};

std::vector<std::string> field_names(uint32_t fields) {
  std::vector<std::string> names;
  for (const char *name : kFieldNames) {
    if ((fields & 1) != 0) names.push_back(name);
    fields >>= 1;
  }
  return names;
}

int32_t may_be_members(const uint32_t *members) {
  if (members == nullptr) return 0;
  if ((*members & ~kAllPorts) != 0) return VCHIP_E_PORT;
  return (*members & port_bit(VCHIP_CPU_PORT)) != 0 ? VCHIP_E_CPU_PORT : 0;
}

int32_t on_trunk(uint32_t trunk) {
  return trunk < kTrunkGroups ? 0 : VCHIP_E_INDEX;
}

}  // namespace

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void TrunkBlock::reset() {
  members_.fill(0);
  hash_fields_.fill(1);
}

bool TrunkBlock::taken(uint32_t trunk, uint32_t ports) const {
  for (uint32_t other = 0; other < kTrunkGroups; ++other)
    if (other != trunk && (members_[other] & ports) != 0) return true;
  return false;
}

void TrunkBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t trunk = 0; trunk < kTrunkGroups; ++trunk)
    if (members_[trunk] != 0) used.push_back(trunk);
  unit.object(name, [&](Dump &block) {
    block.objects("trunks", used.size(), [&](Dump &entry, size_t place) {
      entry.number("trunk", used[place]);
      entry.numbers("members", ports_in(members_[used[place]]));
    });
    block.objects("algorithms", kHashAlgorithms, [this](Dump &entry, size_t algorithm) {
      entry.texts("hash", field_names(hash_fields_[algorithm]));
    });
  });
}

TrunkView trunks(uint32_t unit) {
  Viewing chip;
  const TrunkBlock &block = chip.unit(unit).trunk;
  return {{block.members().begin(), block.members().end()},
          {block.hash_fields().begin(), block.hash_fields().end()}};
}

}  // namespace vchip

int32_t rtk_trunk_port_set(uint32_t unit, uint32_t trunk, const uint32_t *members) {
  return vchip::change_if(
      unit, {vchip::not_null(members), vchip::may_be_members(members), vchip::on_trunk(trunk)},
      [=](vchip::Unit &chip) {
        if (chip.trunk.taken(trunk, *members)) return VCHIP_E_TRUNK_MEMBER;
        chip.trunk.set_members(trunk, *members);
        return 0;
      });
}

int32_t rtk_trunk_distributionAlgorithmParam_set(uint32_t unit, uint32_t algorithm,
                                                 uint32_t fields) {
  return vchip::change(unit,
                       {algorithm < vchip::kHashAlgorithms ? 0 : VCHIP_E_INDEX,
                        (fields & ~vchip::kHashFields) == 0 ? 0 : VCHIP_E_VALUE},
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
