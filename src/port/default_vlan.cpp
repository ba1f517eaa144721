// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

namespace {

constexpr uint32_t kVidMask = 0xffff;

}  // namespace

int32_t user_port_untagged_vlan_get(uint32_t, uint32_t unit, int32_t port, uint16_t *vid) {
  uint32_t value = 0;
  const int32_t result = rtk_vlan_portPvid_get(unit, port, &value);
  *vid = static_cast<uint16_t>(value);
  return result;
}

int32_t user_port_untagged_vlan_set(uint32_t, uint32_t unit, int32_t port, uint32_t vid) {
  const int32_t result = rtk_vlan_portPvid_set(unit, port, vid & kVidMask);
  if (result < 0) return result;
  return rtk_vlan_portOuterPvid_set(unit, port, vid & kVidMask);
}
