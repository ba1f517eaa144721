// SPDX-License-Identifier: MIT
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

#include "frame/mcast_entry.h"
#include "frame/port_mask.h"

using swctl::bitmap_of;
using swctl::mask_of;
using swctl::mcast_entry;

int32_t user_mac_mcast_addr_add(uint32_t, user_l2_addr_t addr) {
  const uint32_t ports = mask_of(addr.pbmp);
  chip_l2_mcast_entry entry = mcast_entry(addr.mac, addr.vid, ports);
  if (rtk_l2_mcastAddr_get(0, &entry) < 0) {
    // What a failed read left in the entry must not reach the chip.
    entry = mcast_entry(addr.mac, addr.vid, ports);
  } else {
    entry.portmask |= ports;
    rtk_l2_mcastAddr_del(0, entry.vid, entry.mac);
  }
  return rtk_l2_mcastAddr_add(0, &entry);
}

int32_t user_mac_mcast_addr_get(uint32_t, const uint8_t *mac, uint32_t vid, user_l2_addr_t *out) {
  chip_l2_mcast_entry entry = mcast_entry(mac, vid);
  const int32_t result = rtk_l2_mcastAddr_get(0, &entry);
  out->pbmp = bitmap_of(entry.portmask);
  return result;
}

int32_t user_mac_mcast_addr_delete(uint32_t, const uint8_t *mac, uint32_t vid) {
  return rtk_l2_mcastAddr_del(0, static_cast<uint16_t>(vid), mac);
}

int32_t user_mac_mcast_add_with_portmask(const uint8_t *mac, uint32_t vid, user_pbmp_t pbmp) {
  const chip_l2_mcast_entry entry = mcast_entry(mac, vid, mask_of(pbmp));
  return rtk_l2_mcastAddr_add(0, &entry);
}

int32_t user_mac_mcast_get_fwd_index(const uint8_t *mac, uint32_t vid, uint32_t *index) {
  chip_l2_mcast_entry entry = mcast_entry(mac, vid);
  const int32_t result = rtk_l2_mcastAddr_get(0, &entry);
  *index = entry.fwdIndex;
  return result;
}
