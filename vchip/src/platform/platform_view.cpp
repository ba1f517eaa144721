// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>

#include "chip/viewing.h"

namespace vchip {

PlatformView platform() {
  Viewing chip;
  const PlatformBlock &block = chip.state().platform;
  PlatformView view = {};
  view.trace_on = block.trace() != 0;
  view.log_lines = block.log_lines();
  block.each_record([&](const char *location, const char *message) {
    view.trace.push_back({location, message});
  });
  return view;
}

}  // namespace vchip
