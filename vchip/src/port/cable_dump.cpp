// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "document/dump.h"
#include "port/cable_block.h"

namespace vchip {
namespace {

std::vector<std::string> fault_names(uint32_t faults) {
  constexpr const char *kNames[] = {"open", "short", "mismatch", "crosstalk"};
  std::vector<std::string> names;
  for (uint32_t fault = 0; fault < 4; ++fault)
    if ((faults >> fault & 1) != 0) names.emplace_back(kNames[fault]);
  return names;
}

void dump_pairs(Dump &entry, const char *name, const WirePair (&pairs)[VCHIP_PAIRS]) {
  entry.objects(name, VCHIP_PAIRS, [&](Dump &pair, size_t index) {
    pair.texts("faults", fault_names(pairs[index].faults));
    pair.number("length_cm", pairs[index].length);
  });
}

}  // namespace

void CableBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_CPU_PORT, [this](Dump &entry, size_t port) {
    entry.number("port", static_cast<int64_t>(port));
    dump_pairs(entry, "pairs", ports_[port].pairs);
    if (ports_[port].tested == 0) return entry.null("found");
    dump_pairs(entry, "found", ports_[port].found);
  });
}

}  // namespace vchip
