// SPDX-License-Identifier: MIT
#include "pipeline/pipeline.h"

#include <cstddef>
#include <utility>

#include "pipeline/steps.h"

namespace vchip {
namespace {

struct Step {
  const char *name;
  Verdict (*run)(Way &way);
};

// The way of a frame. A step that ends it is the last.
constexpr Step kSteps[] = {
    {"port", port_step},
    {"length", length_step},
    {"received", received_step},
    {"mirror-in", mirror_in_step},
    {"mac-control", mac_control_step},
    {"ingress-rate", ingress_rate_step},
    {"attack", attack_step},
    {"vlan", vlan_step},
    {"filter", filter_step},
    {"trap", trap_step},
    {"state", state_step},
    {"learn", learn_step},
    {"rule", rule_step},
    {"lookup", lookup_step},
    {"storm", storm_step},
    {"egress", egress_step},
};
// Then, for each port that it leaves by: tags (edit.cpp), queue, mirror-out and
// sent (run.cpp).

template <size_t... place>
void run_steps(Way &way, std::index_sequence<place...>) {
  (void)((kSteps[place].run(way) == Verdict::go_on) && ...);
}

}  // namespace

void walk(Way &way) {
  run_steps(way, std::make_index_sequence<std::size(kSteps)>());
}

}  // namespace vchip
