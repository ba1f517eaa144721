// SPDX-License-Identifier: MIT
// The controls of the chip as a whole.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/log.h>

#include "chip/chip.h"

const char *vchip_open(void) {
  return vchip::refusal();
}

const char *swctl_platform_open(void) {
  return vchip_open();
}

void vchip_close(void) {
  vchip::close_chip();
}

int32_t vchip_reset(void) {
  vchip::Locked chip;
  if (!chip) return chip.fault();
  vchip::Writing mark(chip.state(), vchip::kResetting);
  chip.reset();
  vchip::tell_frame_keeper_of_reset();
  return 0;
}
