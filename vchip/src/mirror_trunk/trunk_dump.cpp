// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "document/dump.h"
#include "mirror_trunk/trunk_block.h"

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

}  // namespace

void TrunkBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t trunk = 0; trunk < kTrunkGroups; ++trunk)
    if (members_[trunk] != 0) used.push_back(trunk);
  unit.object(name, [&](Dump &block) {
    block.objects("trunks", used.size(), [&](Dump &entry, size_t place) {
      entry.number("trunk", used[place]);
      entry.ports("members", members_[used[place]]);
    });
    block.objects("algorithms", kHashAlgorithms, [this](Dump &entry, size_t algorithm) {
      entry.texts("hash", field_names(hash_fields_[algorithm]));
    });
  });
}

}  // namespace vchip
