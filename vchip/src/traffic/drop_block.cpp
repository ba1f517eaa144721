// SPDX-License-Identifier: MIT
#include "traffic/drop_block.h"

namespace vchip {
namespace {

constexpr std::array<const char *, kFates> kFateNames = {
    "received", "forwarded", "taken", "attack", "ingress-rate", "vlan",  "filter",
    "trap",     "state",     "learn", "rule",   "lookup",       "storm", "egress",
    "port",     "length",    "queue", "loop",   "held",
};

}  // namespace

const char *fate_name(Fate fate) {
  return kFateNames[static_cast<size_t>(fate)];
}

void DropBlock::repair() {
  for (Counts &counts : ports_) {
    uint64_t sum = 0;
    for (auto fate = static_cast<size_t>(kFirstSummand); fate <= static_cast<size_t>(kLastSummand);
         ++fate)
      sum += counts[fate];
    counts[static_cast<size_t>(Fate::received)] = sum;
  }
}

}  // namespace vchip
