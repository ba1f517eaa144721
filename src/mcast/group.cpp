// SPDX-License-Identifier: MIT
#include <swctl/mcast_l2.h>
#include <swctl/platform/sdk.h>

#include "frame/mcast_entry.h"
#include "frame/port_mask.h"

namespace {

chip_l2_mcast_entry entry_of(const User_mcast_addr_t &record) {
  return swctl::mcast_entry(record.mac, record.vid, swctl::mask_of(record.pbmp));
}

int32_t replace(uint32_t unit, const User_mcast_addr_t &record) {
  const chip_l2_mcast_entry entry = entry_of(record);
  rtk_l2_mcastAddr_del(unit, record.vid, record.mac);
  return rtk_l2_mcastAddr_add(unit, &entry);
}

}  // namespace

int32_t User_mcast_addr_t_init(uint32_t, User_mcast_addr_t *record, const uint8_t *mac,
                               uint32_t vid) {
  *record = {};
  memcpy(record->mac, mac, sizeof record->mac);
  record->vid = static_cast<uint16_t>(vid);
  return 0;
}

int32_t User_mcast_addr_add(uint32_t, uint32_t unit, const User_mcast_addr_t *record) {
  const chip_l2_mcast_entry entry = entry_of(*record);
  return rtk_l2_mcastAddr_add(unit, &entry);
}

int32_t User_mcast_addr_remove(uint32_t, uint32_t unit, const uint8_t *mac, uint32_t vid) {
  return rtk_l2_mcastAddr_del(unit, vid, mac);
}

int32_t User_mcast_port_add(uint32_t, uint32_t unit, const User_mcast_addr_t *record) {
  return replace(unit, *record);
}

// The record holds the ports that remain, so taking a port away is the same.
int32_t User_mcast_port_remove(uint32_t, uint32_t unit, const User_mcast_addr_t *record) {
  return replace(unit, *record);
}

int32_t User_mcast_port_get(uint32_t, uint32_t unit, const uint8_t *mac, uint32_t vid,
                            User_mcast_addr_t *record) {
  chip_l2_mcast_entry entry = swctl::mcast_entry(mac, vid);
  const int32_t result = rtk_l2_mcastAddr_get(unit, &entry);
  if (result < 0) return result;
  memcpy(record->mac, entry.mac, sizeof record->mac);
  record->vid = entry.vid;
  record->pbmp = swctl::bitmap_of(entry.portmask);
  return result;
}
