// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "port/storm_burst.h"

namespace {

constexpr uint32_t kCountModeMask = 0xff;
constexpr uint32_t kBurstCountMode = 0;
constexpr uint32_t kScaledCountMode = 1;
constexpr uint32_t kScale = 16;

// The count mode last set with success, whatever the chip has by now.
uint32_t count_mode;

}  // namespace

int32_t user_rate_stormControlEnable_set(uint32_t, uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t enable) {
  rtk_rate_stormControlEnable_set(unit, port, type, enable != 0 ? 1 : 0);
  // Callers have always been told so, and do not look.
  return -1;
}

int32_t user_rate_stormsel_set(uint32_t, uint32_t unit, int32_t port, uint32_t type,
                               uint32_t selection) {
  return rtk_rate_stormControlTypeSel_set(unit, port, type, selection != 0 ? 1 : 0);
}

int32_t user_rate_stormsel_get(uint32_t, uint32_t unit, int32_t port, uint32_t type,
                               uint32_t *selection) {
  return rtk_rate_stormControlTypeSel_get(unit, port, type, selection);
}

int32_t user_rate_stormExceedFlag_get(uint32_t, uint32_t unit, int32_t port, uint32_t *flag,
                                      uint32_t *type) {
  for (uint32_t each = 0; each < USER_STORM_TYPES; ++each) {
    uint32_t exceeded = 0;
    rtk_rate_stormControlExceed_get(unit, port, each, &exceeded);
    if (exceeded == 0) continue;
    *flag = 1;
    *type = each;
    return 0;
  }
  *flag = 0;
  return 0;
}

int32_t user_rate_stormExceedFlag_reset(uint32_t, uint32_t unit, int32_t port) {
  for (uint32_t each = 0; each < USER_STORM_TYPES; ++each) {
    rtk_rate_stormControlExceed_reset(unit, port, each);
  }
  return 0;
}

int32_t user_rate_bandwidth_set(uint32_t, uint32_t unit, int32_t port, uint32_t type,
                                uint32_t rate) {
  rtk_rate_stormControlEnable_set(unit, port, type, rate != 0 ? 1 : 0);
  return rtk_rate_stormControlRate_set(unit, port, type, rate);
}

int32_t user_rate_bandwidth_get(uint32_t, uint32_t unit, int32_t port, uint32_t type,
                                uint32_t *rate, uint32_t *enable) {
  rtk_rate_stormControlEnable_get(unit, port, type, enable);
  const int32_t result = rtk_rate_stormControlRate_get(unit, port, type, rate);
  if (count_mode == kScaledCountMode) *rate *= kScale;
  return result;
}

int32_t user_rate_stormCountMode_set(uint32_t, uint32_t unit, uint32_t mode) {
  const uint32_t byte = mode & kCountModeMask;
  const int32_t result = rtk_rate_stormControlRateMode_set(unit, byte);
  // Unlike elsewhere a positive result is a failure here.
  if (result != 0) return result;
  count_mode = byte;
  if (byte == kBurstCountMode) swctl::set_default_bursts(unit);
  return result;
}

int32_t user_rate_stormCountMode_get(uint32_t, uint32_t unit, uint8_t *mode) {
  uint32_t sdk_mode = 0;
  const int32_t result = rtk_rate_stormControlRateMode_get(unit, &sdk_mode);
  *mode = static_cast<uint8_t>(sdk_mode);
  return result;
}
