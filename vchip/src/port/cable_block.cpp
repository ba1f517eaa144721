// SPDX-License-Identifier: MIT
#include "port/cable_block.h"

#include <string>
#include <vector>

#include "core/dump.h"

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

constexpr uint32_t has(uint32_t faults, uint32_t fault) {
  return (faults & fault) != 0 ? 1 : 0;
}

}  // namespace

void CableBlock::reset() {
  for (Port &port : ports_) port = {};
}

void CableBlock::set_pair(int32_t port, uint32_t pair, const WirePair &wires) {
  ports_[port].pairs[pair] = wires;
}

void CableBlock::test(int32_t port, bool plugged) {
  Port &own = ports_[port];
  for (int pair = 0; pair < VCHIP_PAIRS; ++pair)
    own.found[pair] = plugged ? own.pairs[pair] : WirePair{VCHIP_FAULT_OPEN, 0};
  own.tested = 1;
}

chip_cable_test_t CableBlock::result(int32_t port) const {
  chip_cable_test_t result = {};
  for (int pair = 0; pair < VCHIP_PAIRS; ++pair) {
    const WirePair &found = ports_[port].found[pair];
    result.open[pair] = has(found.faults, VCHIP_FAULT_OPEN);
    result.shorted[pair] = has(found.faults, VCHIP_FAULT_SHORT);
    result.mismatch[pair] = has(found.faults, VCHIP_FAULT_MISMATCH);
    result.crosstalk[pair] = has(found.faults, VCHIP_FAULT_CROSSTALK);
    result.length[pair] = found.length;
  }
  return result;
}

void CableBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_CPU_PORT, [this](Dump &entry, size_t port) {
    entry.number("port", static_cast<int64_t>(port));
    dump_pairs(entry, "pairs", ports_[port].pairs);
    if (ports_[port].tested == 0) return entry.null("found");
    dump_pairs(entry, "found", ports_[port].found);
  });
}

}  // namespace vchip
