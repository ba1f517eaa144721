// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "document/dump.h"
#include "stp/stp_block.h"

namespace vchip {
namespace {

const char *state_name(uint32_t state) {
  constexpr const char *kNames[] = {"disabled", "blocking", "learning", "forwarding"};
  return kNames[state];
}

std::vector<uint32_t> existing(const StpBlock &block) {
  std::vector<uint32_t> instances;
  for (uint32_t instance = 0; instance < kInstances; ++instance)
    if (block.exists(instance)) instances.push_back(instance);
  return instances;
}

}  // namespace

void StpBlock::dump(const char *name, Dump &unit) const {
  const std::vector<uint32_t> instances = existing(*this);
  unit.objects(name, instances.size(), [&](Dump &entry, size_t place) {
    std::vector<std::string> names;
    for (const uint32_t state : instances_[instances[place]].states)
      names.push_back(state_name(state));
    entry.number("instance", instances[place]);
    entry.texts("states", names);
  });
}

}  // namespace vchip
