// SPDX-License-Identifier: MIT
/**
 * @file qos_view.h
 * @brief A view of priorities and queues: what the chip holds. See
 *        view.h.
 */
#ifndef SWCTL_VCHIP_QOS_VIEW_H
#define SWCTL_VCHIP_QOS_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// What holds for all ports of a unit. Each list is indexed by the priority,
// code point or group that its name begins with.
struct QosView {
  std::vector<uint32_t> outer_internal;           // tags that may not be dropped
  std::vector<uint32_t> outer_eligible_internal;  // tags that may (dei set)
  std::vector<uint32_t> inner_internal;
  std::vector<uint32_t> dscp_internal;
  std::vector<uint32_t> internal_queue;
  std::vector<std::vector<uint32_t>> group_weights;
  uint32_t remark_source;

  bool operator==(const QosView &) const = default;
};
SWCTL_API QosView qos(uint32_t unit);

// One port. Lists are indexed by queue.
struct QosPortView {
  uint32_t outer_priority;
  uint32_t inner_priority;
  uint32_t group;
  uint32_t algorithm;
  std::vector<uint32_t> weights;
  std::vector<uint32_t> strict;  // 1 or 0
  bool remarks;

  bool operator==(const QosPortView &) const = default;
};
SWCTL_API QosPortView qos_port(uint32_t unit, int32_t port);

}  // namespace vchip

#endif
