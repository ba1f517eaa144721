// SPDX-License-Identifier: MIT
#ifndef VCHIP_CHIP_NOBODY_INSIDE_H
#define VCHIP_CHIP_NOBODY_INSIDE_H

#include <swctl-vchip/vchip.h>

#include <stdexcept>

#include "chip/process.h"
#include "chip/settings.h"

namespace vchip {

// Closing any descriptor of a file loses this process's record lock on it.
class NobodyInside {
 public:
  NobodyInside() : inside_(uses_record_lock()) {
    if (!inside_) return;
    Patience patience(wait_setting);
    if (!lock_threads(patience)) throw std::runtime_error(vchip_result_text(VCHIP_E_BUSY));
  }
  ~NobodyInside() {
    if (inside_) unlock_threads();
  }
  NobodyInside(const NobodyInside &) = delete;
  NobodyInside &operator=(const NobodyInside &) = delete;

 private:
  const bool inside_;
};

}  // namespace vchip

#endif
