// SPDX-License-Identifier: MIT
/**
 * @file l2_view.h
 * @brief A view of layer-2 addresses: what the chip holds. See view.h.
 */
#ifndef SWCTL_VCHIP_L2_VIEW_H
#define SWCTL_VCHIP_L2_VIEW_H

#include <swctl/types.h>

#include <string>
#include <vector>

namespace vchip {

// One unicast entry.
struct AddressView {
  int32_t index;  // place in the table, in which order it is scanned
  uint32_t vid;
  std::string mac;  // "02:00:5e:00:00:01"
  int32_t port;     // chip port
  int32_t trunk;
  uint32_t flags;
  uint32_t state;
  uint32_t aux;
  uint32_t extra;
  uint32_t age;  // seconds since its address was last seen

  bool operator==(const AddressView &) const = default;
};
// In scan order.
SWCTL_API std::vector<AddressView> addresses(uint32_t unit);

// One multicast group.
struct GroupView {
  int32_t index;
  uint32_t vid;
  std::string mac;
  uint32_t portmask;    // bit p is chip port p
  uint32_t forwarding;  // index of its port mask

  bool operator==(const GroupView &) const = default;
};
// In scan order.
SWCTL_API std::vector<GroupView> groups(uint32_t unit);

// What may be learned, and what was.
struct LearnView {
  bool limited;
  int32_t limit;
  uint32_t learned;

  bool operator==(const LearnView &) const = default;
};
SWCTL_API LearnView learning(uint32_t unit, int32_t port);

// Seconds after which an address that is not seen is dropped; 0: never.
SWCTL_API uint32_t aging(uint32_t unit);

}  // namespace vchip

#endif
