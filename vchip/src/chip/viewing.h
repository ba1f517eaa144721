// SPDX-License-Identifier: MIT
#ifndef VCHIP_CHIP_VIEWING_H
#define VCHIP_CHIP_VIEWING_H

#include <stdexcept>
#include <string>

#include "chip/chip.h"
#include "common/check.h"

namespace vchip {

// A step that has a chip or throws why there is none.
class Viewing {
 public:
  Viewing() {
    if (!chip_) throw std::runtime_error(vchip_result_text(chip_.fault()));
  }
  const Locked &locked() const { return chip_; }
  const State &state() { return chip_.state(); }
  const std::string &image_path() const { return chip_.image_path(); }
  const Unit &unit(uint32_t unit) {
    if (unit >= VCHIP_UNITS) throw std::out_of_range("no unit " + std::to_string(unit));
    return chip_.state().units[unit];
  }

 private:
  Locked chip_;
};

inline void expect_port(int32_t port) {
  if (on_port(port) != 0) throw std::out_of_range("no port " + std::to_string(port));
}

}  // namespace vchip

#endif
