// SPDX-License-Identifier: MIT
#include <swctl-vchip/stp_view.h>

#include "chip/viewing.h"

namespace vchip {

std::vector<StpView> stp_instances(uint32_t unit) {
  Viewing chip;
  const StpBlock &block = chip.unit(unit).stp;
  std::vector<StpView> all;
  for (uint32_t instance = 0; instance < kInstances; ++instance) {
    if (!block.exists(instance)) continue;
    StpView view = {instance, {}};
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      view.states.push_back(block.state(instance, port));
    all.push_back(view);
  }
  return all;
}

}  // namespace vchip
