// SPDX-License-Identifier: MIT
// What the pipeline needs for every frame, worked out from the settings when
// they have changed. It belongs to the process; the settings stay the truth.
#ifndef VCHIP_PIPELINE_COMPILED_H
#define VCHIP_PIPELINE_COMPILED_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>
#include <vector>

#include "mirror_trunk/mirror_block.h"
#include "mirror_trunk/trunk_block.h"
#include "pipeline/rule_index.h"
#include "rules/rule_block.h"
#include "stp/stp_block.h"

namespace vchip {

struct Unit;

inline constexpr uint8_t kTrunkless = 0xff;

// Where a frame's priority may come from, in the order in which equal weights
// count.
inline constexpr uint32_t kDscpSource = 0;
inline constexpr uint32_t kInnerTagSource = 1;
inline constexpr uint32_t kOuterTagSource = 2;
inline constexpr uint32_t kInnerPortSource = 3;
inline constexpr uint32_t kOuterPortSource = 4;

// Finds a place of a small table by a hash of its key. The table is asked
// whether the place is the right one.
class PlaceIndex {
 public:
  void start(uint32_t places);
  void add(uint32_t hash, uint32_t place);
  // The place for which `is_it(place)` holds; -1 if there is none.
  template <typename IsIt>
  int32_t find(uint32_t hash, IsIt is_it) const {
    for (uint32_t slot = hash & mask_; slots_[slot] != 0; slot = (slot + 1) & mask_)
      if (is_it(slots_[slot] - 1u)) return slots_[slot] - 1;
    return -1;
  }
  size_t bytes() const { return slots_.capacity() * sizeof slots_[0]; }

 private:
  std::vector<uint16_t> slots_;  // place + 1; 0: free
  uint32_t mask_ = 0;
};
uint32_t hash_of(uint32_t vid, uint64_t address);
uint32_t hash_of(uint32_t vid, const uint8_t *group, uint32_t group_bytes, const uint8_t *source);

// The source of a frame's priority, by which of the first three it has.
using PrioritySources = std::array<uint8_t, 8>;

// One unit's.
struct Compiled {
  // Ports, a bit each.
  uint32_t live = 0;  // enabled, with a link
  uint32_t enabled = 0;
  uint32_t linked = 0;
  uint32_t looped = 0;
  uint32_t gigabit = 0;  // of the upper speed class
  uint32_t obeys_pause = 0;
  uint32_t trunked = 0;  // members of a trunk
  uint32_t mirrored_in = 0;
  uint32_t mirrored_out = 0;
  uint32_t converted = 0;                          // egress conversion has an entry for them
  std::array<uint32_t, VCHIP_PORTS> quantum = {};  // nanoseconds of 512 bit times
  std::array<uint8_t, VCHIP_PORTS> trunk = {};
  std::array<uint32_t, VCHIP_PORTS> group = {};      // the port, or its whole trunk
  std::array<uint32_t, VCHIP_PORTS> may_reach = {};  // isolation
  std::array<uint8_t, VCHIP_PORTS> storms = {};      // controlled types, a bit each
  std::array<PrioritySources, VCHIP_PORTS> priority_source = {};
  std::array<uint32_t, kInstances> forwarding = {};
  std::array<uint32_t, kInstances> learning = {};  // learns: learning or forwarding

  std::vector<uint16_t> conversions;  // valid entries, lowest first
  std::vector<uint16_t> classifiers;  // places of the adapter's rules, in order of precedence
  std::vector<uint16_t> double_tags;
  PlaceIndex groups;
  PlaceIndex ip_groups;
  PlaceIndex ip6_groups;
  RuleIndex rules;

  // A mask that names a member names the whole trunk.
  uint32_t expand(uint32_t ports) const {
    return (ports & trunked) == 0 ? ports : expand_trunks(ports);
  }
  uint32_t expand_trunks(uint32_t ports) const;
  // What the tables take in memory.
  size_t bytes() const;
};

void compile_ports(Compiled &to, const Unit &unit);
void compile_groups(Compiled &to, const Unit &unit);
void compile_conversions(Compiled &to, const Unit &unit);
void compile_classifiers(Compiled &to, const RuleBlock &rules);

}  // namespace vchip

#endif
