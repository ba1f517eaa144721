// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "port/storm_burst.h"

int32_t user_port_init(uint32_t, uint32_t unit) {
  rtk_switch_maxPktLenTagLenCntIncEnable_set(unit, 0);
  rtk_rate_stormControlRateMode_set(unit, 0);
  swctl::set_default_bursts(unit);
  return 0;
}
