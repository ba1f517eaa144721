// SPDX-License-Identifier: MIT
// Where a port may send, and where frames to unknown addresses go.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "frame/port_mask.h"

namespace {

constexpr uint32_t kUnknownUnicast = 2;

struct FloodMask {
  uint32_t index;
  uint32_t mask;
};

int32_t read_flood_mask(uint32_t unit, FloodMask *flood) {
  const int32_t result =
      rtk_l2_lookupMissFloodPortMaskIdx_get(unit, kUnknownUnicast, &flood->index);
  if (result < 0) return result;
  uint32_t extra = 0;
  return rtk_l2_mcastFwdPortmask_get(unit, flood->index, &flood->mask, &extra);
}

int32_t write_flood_mask(uint32_t unit, const FloodMask &flood) {
  return rtk_l2_lookupMissFloodPortMask_set_with_idx(unit, kUnknownUnicast, flood.index,
                                                     &flood.mask);
}

}  // namespace

int32_t user_port_egress_set(uint32_t, uint32_t unit, int32_t port, uint32_t, user_pbmp_t ports) {
  return rtk_port_isolation_set(unit, port, swctl::mask_of(ports));
}

int32_t user_port_egress_get(uint32_t, uint32_t unit, int32_t port, uint32_t, user_pbmp_t *ports) {
  uint32_t mask = 0;
  const int32_t result = rtk_port_isolation_get(unit, port, &mask);
  if (result >= 0) *ports = swctl::bitmap_of(mask);
  return result;
}

int32_t user_ulf_flood_ports_set(uint32_t, uint32_t unit, user_pbmp_t ports) {
  FloodMask flood = {0, swctl::mask_of(ports)};
  const int32_t result = rtk_l2_lookupMissFloodPortMaskIdx_get(unit, kUnknownUnicast, &flood.index);
  return result < 0 ? result : write_flood_mask(unit, flood);
}

int32_t user_ulf_flood_ports_get(uint32_t, uint32_t unit, user_pbmp_t *ports) {
  FloodMask flood = {};
  const int32_t result = read_flood_mask(unit, &flood);
  if (result >= 0) *ports = swctl::bitmap_of(flood.mask);
  return result;
}

int32_t user_ulf_flood_port_add_remove(uint32_t, uint32_t unit, int32_t port, uint32_t add) {
  FloodMask flood = {};
  const int32_t result = read_flood_mask(unit, &flood);
  if (result < 0) return result;
  const uint32_t bit = swctl::bit_in_mask(port);
  flood.mask = add != 0 ? flood.mask | bit : flood.mask & ~bit;
  return write_flood_mask(unit, flood);
}

int32_t user_port_ifilter_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  return rtk_vlan_portIgrFilter_set(unit, port, enable != 0 ? 1 : 0);
}
