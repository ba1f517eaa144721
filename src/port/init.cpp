// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

namespace {

constexpr uint32_t kFirstBurstType = 2;
constexpr uint32_t kLastBurstType = 4;
constexpr uint32_t kBurstSize = 100;

}  // namespace

int32_t user_port_init(uint32_t, uint32_t unit) {
  rtk_switch_maxPktLenTagLenCntIncEnable_set(unit, 0);
  rtk_rate_stormControlRateMode_set(unit, 0);
  for (uint32_t type = kFirstBurstType; type <= kLastBurstType; ++type) {
    rtk_rate_stormControlBurstSize_set(unit, type, kBurstSize);
  }
  return 0;
}
