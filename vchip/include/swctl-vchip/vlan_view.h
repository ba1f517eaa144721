// SPDX-License-Identifier: MIT
/**
 * @file vlan_view.h
 * @brief A view of VLANs: what the chip holds. See view.h.
 */
#ifndef SWCTL_VCHIP_VLAN_VIEW_H
#define SWCTL_VCHIP_VLAN_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// One VLAN. In a mask, bit p is chip port p.
struct VlanView {
  uint32_t vid;
  uint32_t member;
  uint32_t untagged;
  uint32_t stg;

  bool operator==(const VlanView &) const = default;
};
// Every VLAN that exists, by rising ID.
SWCTL_API std::vector<VlanView> vlans(uint32_t unit);

// The inner default VLAN of each chip port.
SWCTL_API std::vector<uint32_t> pvids(uint32_t unit);

// A valid entry of the egress conversion table.
struct EgressView {
  uint32_t index;
  bool ignores_vid;
  uint32_t vid;
  bool ignores_second_key;
  uint32_t second_key;
  bool ignores_port;
  uint32_t port;  // chip port
  uint32_t new_vid;
  std::vector<uint32_t> other_fields;  // those without a name, in order

  bool operator==(const EgressView &) const = default;
};
SWCTL_API std::vector<EgressView> egress_entries(uint32_t unit);

// The mode of each ingress conversion block.
SWCTL_API std::vector<uint32_t> ingress_block_modes(uint32_t unit);

}  // namespace vchip

#endif
