// SPDX-License-Identifier: MIT
// A layer-2 group, for the tests of the two families that write groups.
#ifndef SWCTL_TESTS_SUPPORT_GROUP_H
#define SWCTL_TESTS_SUPPORT_GROUP_H

#include <swctl/types.h>

#include <cstdint>
#include <cstring>

namespace swctl_test {

inline constexpr uint8_t kGroup[SWCTL_MAC_BYTES] = {0x01, 0x00, 0x5e, 0x00, 0x00, 0x05};
inline constexpr const char *kGroupText = "01:00:5e:00:00:05";
inline constexpr const char *kGroupGet = "rtk_l2_mcastAddr_get";
inline constexpr const char *kGroupAdd = "rtk_l2_mcastAddr_add";
inline constexpr const char *kGroupDel = "rtk_l2_mcastAddr_del";

// The group's record in a VLAN. All that is not to be read is set; ports from 32
// on never reach the chip.
template <typename Record>
Record group_record(uint16_t vid, uint32_t ports) {
  Record record;
  memset(&record, 0x5A, sizeof record);
  memcpy(record.mac, kGroup, sizeof record.mac);
  record.vid = vid;
  record.pbmp = {{ports, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u, ~0u}};
  return record;
}

}  // namespace swctl_test

#endif
