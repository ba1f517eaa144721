// SPDX-License-Identifier: MIT
// Creating and destroying VLANs, and the default VLANs of the ports.
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>
#include <swctl/vlan.h>

#include "vlan/vid.h"

namespace {

using swctl::vid_of;

constexpr uint32_t kDefaultVlan = 1;
constexpr uint32_t kRestoreDefaultVlan = 1;
constexpr int32_t kInterfaces = 32;
constexpr int32_t kReadBackPort = 1;

constexpr bool is_there(int32_t result) {
  return result == 0 || result == USER_VLAN_EXISTS;
}

}  // namespace

int32_t user_vlan_create(uint32_t, uint32_t unit, uint32_t vid) {
  return rtk_vlan_create(unit, vid_of(vid));
}

int32_t user_vlan_createEx(uint32_t, uint32_t unit, uint32_t first, uint32_t last) {
  int32_t result = 0;
  for (uint32_t vid = vid_of(first); vid <= vid_of(last) && is_there(result); ++vid) {
    if (vid != kDefaultVlan) result = rtk_vlan_create(unit, vid);
  }
  return result;
}

int32_t user_vlan_destroy(uint32_t, uint32_t unit, uint32_t vid) {
  return rtk_vlan_destroy(unit, vid_of(vid));
}

int32_t user_vlan_destroyEx(uint32_t, uint32_t unit, uint32_t first, uint32_t last) {
  int32_t result = 0;
  for (uint32_t vid = vid_of(first); vid <= vid_of(last) && result == 0; ++vid) {
    result = rtk_vlan_destroy(unit, vid);
  }
  return result;
}

int32_t user_vlan_destroy_all(uint32_t, uint32_t unit) {
  return rtk_vlan_destroyAll(unit, kRestoreDefaultVlan);
}

int32_t user_vlan_default_set(uint32_t, uint32_t unit, uint32_t vid) {
  int32_t result = 0;
  for (int32_t interface = 0; interface < kInterfaces && result == 0; ++interface) {
    result = rtk_vlan_portPvid_set(unit, adp_intf_2_phy_id(interface), vid_of(vid));
  }
  return result;
}

int32_t user_vlan_default_get(uint32_t, uint32_t unit, uint16_t *vid) {
  uint32_t pvid = 0;
  const int32_t result = rtk_vlan_portPvid_get(unit, kReadBackPort, &pvid);
  *vid = vid_of(pvid);
  return result;
}
