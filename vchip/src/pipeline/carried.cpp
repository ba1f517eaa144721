// SPDX-License-Identifier: MIT
#include "pipeline/carried.h"

#include "chip/chip.h"
#include "pipeline/run.h"

namespace vchip {
namespace {

// Made with the first frame and never destroyed: a call may come from another
// library's destructor.
UnitTraffic *units = nullptr;

// Frames that wait leave when a setting lets them go, and are lost with their
// link, at the very change: later it may have been taken back.
void settings_changed(State &state, uint32_t unit) {
  if (units[unit].waiting_ports != 0) Run(state, unit, units[unit]).settle();
}

void chip_gone() {
  for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) units[unit] = UnitTraffic();
}

constexpr FrameKeeper kKeeper = {settings_changed, chip_gone};

}  // namespace

UnitTraffic &carried(uint32_t unit) {
  if (units == nullptr) {
    units = new UnitTraffic[VCHIP_UNITS];
    set_frame_keeper(&kKeeper);
  }
  return units[unit];
}

}  // namespace vchip
