// SPDX-License-Identifier: MIT
// The steps of the way, by the file that has them. pipeline.cpp has their order.
#ifndef VCHIP_PIPELINE_STEPS_H
#define VCHIP_PIPELINE_STEPS_H

#include "pipeline/way.h"

namespace vchip {

// ingress.cpp: the port and what its MAC does.
Verdict port_step(Way &way);
Verdict length_step(Way &way);
Verdict received_step(Way &way);
Verdict mirror_in_step(Way &way);
Verdict mac_control_step(Way &way);
Verdict ingress_rate_step(Way &way);

// attack.cpp
Verdict attack_step(Way &way);

// classify.cpp: which VLAN it is in, which priority it has, and whether it may
// come in.
Verdict vlan_step(Way &way);
Verdict filter_step(Way &way);

// trap.cpp: what is meant for the processor.
Verdict trap_step(Way &way);

// learn.cpp: the state of the port, and the source address.
Verdict state_step(Way &way);
Verdict learn_step(Way &way);

// rule.cpp
Verdict rule_step(Way &way);

// lookup.cpp
Verdict lookup_step(Way &way);
Verdict storm_step(Way &way);

// egress.cpp
Verdict egress_step(Way &way);

}  // namespace vchip

#endif
