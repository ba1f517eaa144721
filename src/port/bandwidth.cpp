// SPDX-License-Identifier: MIT
// Limits of what a port sends and takes in.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

namespace {

// The caller's rate unit in the SDK's.
constexpr int32_t kRateUnit = 16;

constexpr int32_t generic_rate(int32_t sdk_rate) {
  return static_cast<int32_t>(static_cast<uint32_t>(sdk_rate) * uint32_t{kRateUnit});
}

}  // namespace

int32_t user_port_egress_rate_set(uint32_t, uint32_t unit, int32_t port, int32_t rate) {
  rtk_rate_egrBandwidthCtrlEnable_set(unit, port, 1);
  return rtk_rate_egrBandwidthCtrlRate_set(unit, port, rate / kRateUnit);
}

int32_t user_port_ingress_rate_set(uint32_t, uint32_t unit, int32_t port, int32_t rate) {
  rtk_rate_igrBandwidthCtrlEnable_set(unit, port, 1);
  return rtk_rate_igrBandwidthCtrlRate_set(unit, port, rate / kRateUnit);
}

int32_t user_port_egress_rate_get(uint32_t, uint32_t unit, int32_t port, int32_t *rate) {
  int32_t sdk_rate = 0;
  const int32_t result = rtk_rate_egrBandwidthCtrlRate_get(unit, port, &sdk_rate);
  *rate = generic_rate(sdk_rate);
  return result;
}

int32_t user_port_ingress_rate_get(uint32_t, uint32_t unit, int32_t port, int32_t *rate) {
  int32_t sdk_rate = 0;
  const int32_t result = rtk_rate_igrBandwidthCtrlRate_get(unit, port, &sdk_rate);
  *rate = generic_rate(sdk_rate);
  return result;
}
