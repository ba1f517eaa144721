// SPDX-License-Identifier: MIT
#include <swctl-vchip/mirror_trunk_view.h>

#include <cstring>

#include "chip/viewing.h"

namespace vchip {
namespace {

static_assert(sizeof(chip_mirror_entry) == kMirrorWords * sizeof(uint32_t));

}  // namespace

std::vector<std::vector<uint32_t>> mirror_groups(uint32_t unit) {
  Viewing chip;
  const MirrorBlock &block = chip.unit(unit).mirror;
  std::vector<std::vector<uint32_t>> all;
  for (uint32_t group = 0; group < kMirrorGroups; ++group) {
    std::vector<uint32_t> words(kMirrorWords);
    memcpy(words.data(), &block.group(group), sizeof(chip_mirror_entry));
    all.push_back(words);
  }
  return all;
}

TrunkView trunks(uint32_t unit) {
  Viewing chip;
  const TrunkBlock &block = chip.unit(unit).trunk;
  return {{block.members().begin(), block.members().end()},
          {block.hash_fields().begin(), block.hash_fields().end()}};
}

}  // namespace vchip
