// SPDX-License-Identifier: MIT
#include <swctl-vchip/memory.h>

#include <stdexcept>

#include "core/chip.h"

namespace vchip {

Memory memory() {
  Locked chip;
  if (!chip) throw std::runtime_error("the virtual chip's image cannot be used");
  return {&chip.state(), sizeof chip.state()};
}

}  // namespace vchip
