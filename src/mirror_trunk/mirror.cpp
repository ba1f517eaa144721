// SPDX-License-Identifier: MIT
// Mirror groups. Each function reads a group, changes a few of its fields and
// writes it back.
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>

#include <cstddef>

#include "frame/port_mask.h"

namespace {

static_assert(sizeof(chip_mirror_entry) == 15 * 4);
static_assert(offsetof(chip_mirror_entry, field7) == 6 * 4);
static_assert(offsetof(chip_mirror_entry, field12) == 11 * 4);
static_assert(offsetof(chip_mirror_entry, field15) == 14 * 4);

constexpr int32_t kCpuPort = 28;

// What a failing read leaves is used as it is.
chip_mirror_entry read_group(uint32_t group) {
  chip_mirror_entry entry = {};
  rtk_mirror_group_get(0, group, &entry);
  return entry;
}

void enable(chip_mirror_entry &entry, uint32_t mirroring_port) {
  entry.enable = 1;
  entry.mirroring_port = mirroring_port;
  entry.field7 = 1;
}

int32_t write_disabled(uint32_t group, chip_mirror_entry &entry) {
  entry.enable = 0;
  entry.mirroring_port = 0;
  return rtk_mirror_group_set(0, group, &entry);
}

void set_mode(chip_mirror_entry &entry, uint32_t bit, uint32_t mode) {
  switch (mode) {
    case USER_MIRROR_INGRESS: entry.ingress |= bit; break;
    case USER_MIRROR_EGRESS: entry.egress |= bit; break;
    case USER_MIRROR_BOTH:
      entry.ingress |= bit;
      entry.egress |= bit;
      break;
    default:
      entry.ingress &= ~bit;
      entry.egress &= ~bit;
      break;
  }
}

}  // namespace

int32_t user_mirror_port_set(uint32_t, uint32_t, int32_t port, uint32_t group,
                             uint32_t mirroring_port, uint32_t mode) {
  chip_mirror_entry entry = read_group(group);
  enable(entry, mirroring_port);
  if (port == kCpuPort) entry.field12 = 1;
  set_mode(entry, swctl::unchecked_bit_in_mask(port), mode);
  return rtk_mirror_group_set(0, group, &entry);
}

int32_t user_set_flow_mirror(uint32_t, uint32_t, uint32_t group, uint32_t mirroring_port) {
  chip_mirror_entry entry = read_group(group);
  enable(entry, mirroring_port);
  entry.field15 = 1;
  return rtk_mirror_group_set(0, group, &entry);
}

int32_t user_set_mirror_disable(uint32_t, uint32_t, uint32_t group) {
  chip_mirror_entry entry = read_group(group);
  return write_disabled(group, entry);
}

int32_t user_check_set_mirror_disable(uint32_t, uint32_t, uint32_t group) {
  chip_mirror_entry entry = read_group(group);
  if (entry.ingress != 0 || entry.egress != 0) return 0;
  return write_disabled(group, entry);
}
