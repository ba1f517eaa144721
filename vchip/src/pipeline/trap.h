// SPDX-License-Identifier: MIT
// Frames that are meant for the processor, and what is set for their kind.
#ifndef VCHIP_PIPELINE_TRAP_H
#define VCHIP_PIPELINE_TRAP_H

#include "common/frame_action.h"
#include "pipeline/way.h"

namespace vchip {

// A kind of frame by its address and type, as it is asked for before the state
// of the port, after it, or after learning.
enum class Asked : uint32_t { never, before_state, after_state };

struct Trap {
  Asked asked;
  FrameAction action;
  uint32_t reason;   // VCHIP_TO_CPU_*
  bool past_filter;  // it comes in whatever its VLAN
  const char *name;
  const char *setting;
};

// Of reserved addresses and their protocols; the others are of no such kind.
Trap reserved_trap(const Way &way);
// Whether it goes to the processor alone or is dropped there, so that its VLAN
// does not matter.
bool ends_at_trap(const Way &way);
// For what is asked after the state: Verdict::end if that ends the way.
Verdict trap_after_state(Way &way);
// IGMP, MLD and the own addresses, after learning.
Verdict trap_protocols(Way &way);

}  // namespace vchip

#endif
