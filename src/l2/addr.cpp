// SPDX-License-Identifier: MIT
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

#include "frame/static_mac.h"
#include "l2/entry.h"

int32_t user_mac_addr_add(uint32_t, user_l2_addr_t addr) {
  chip_l2_ucast_entry entry = {};
  entry.vid = addr.vid;
  memcpy(entry.mac, addr.mac, sizeof entry.mac);
  entry.port = addr.port;
  entry.trunk = addr.tgid;
  entry.flags = addr.flags;
  entry.extra = addr.extra;
  const int32_t result = rtk_l2_addr_add(0, &entry);
  // The log records what was asked for, not what became of it.
  if (STATIC_ENTRY_TEST(addr.flags))
    swctl::note_static_mac(swctl::StaticMac::added, "user_mac_addr_add", __LINE__, addr.mac);
  return result;
}

int32_t user_mac_addr_get(uint32_t, const uint8_t *mac, uint32_t vid, user_l2_addr_t *out) {
  chip_l2_ucast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  memcpy(entry.mac, mac, sizeof entry.mac);
  const int32_t result = rtk_l2_addr_get(0, &entry);
  swctl::convert_values(entry, *out);
  return result;
}

int32_t user_mac_addr_delete(uint32_t, const uint8_t *mac, uint32_t vid) {
  uint8_t copy[SWCTL_MAC_BYTES];
  memcpy(copy, mac, sizeof copy);
  return rtk_l2_addr_del(0, static_cast<uint16_t>(vid), copy);
}
