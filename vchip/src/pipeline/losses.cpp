// SPDX-License-Identifier: MIT
#include "pipeline/losses.h"

#include <swctl-vchip/explain.h>

#include <cstring>
#include <stdexcept>

#include "chip/chip.h"

namespace vchip {
namespace {

class LossListener : public Listener {
 public:
  explicit LossListener(std::function<void(const LostFrame &)> hear) : hear_(std::move(hear)) {}
  void see(int32_t port, bool outbound, const uint8_t *bytes, uint32_t length) override {
    port_ = port;
    outbound_ = outbound;
    bytes_ = bytes;
    length_ = length;
  }
  void hear(const Told &told) override {
    if (strcmp(told.decision, "drop") == 0 && (told.deciding || outbound_))
      hear_({port_, outbound_, bytes_, length_, told.step, told.why});
  }

 private:
  const std::function<void(const LostFrame &)> hear_;
  int32_t port_ = 0;
  bool outbound_ = false;
  const uint8_t *bytes_ = nullptr;
  uint32_t length_ = 0;
};

// Never destroyed: a call may come from another library's destructor.
Listener *listeners[VCHIP_UNITS] = {};

}  // namespace

Listener *loss_listener(uint32_t unit) {
  return listeners[unit];
}

void hear_losses(uint32_t unit, std::function<void(const LostFrame &)> hear) {
  if (unit >= VCHIP_UNITS) throw std::out_of_range("no unit " + std::to_string(unit));
  const LockedProcess own;
  delete listeners[unit];
  listeners[unit] = hear ? new LossListener(std::move(hear)) : nullptr;
}

}  // namespace vchip
