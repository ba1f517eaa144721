// SPDX-License-Identifier: MIT
/**
 * @file tag_view.h
 * @brief A view of the handling of VLAN tags. See view.h.
 */
#ifndef SWCTL_VCHIP_TAG_VIEW_H
#define SWCTL_VCHIP_TAG_VIEW_H

#include <swctl/types.h>

#include <vector>

namespace vchip {

// Which tags of a frame stay as they are.
struct TagKeepView {
  bool inner;
  bool outer;

  bool operator==(const TagKeepView &) const = default;
};
struct PortTagView {
  uint32_t outer_pvid;
  bool ingress_filter;
  bool double_tag;
  TagKeepView ingress_keep;
  TagKeepView egress_keep;
  uint32_t outer_tag_status;
  uint32_t ingress_inner_tpids;  // a bit per entry
  uint32_t egress_inner_tpid;    // index of an entry
  uint32_t egress_outer_tpid;

  bool operator==(const PortTagView &) const = default;
};
SWCTL_API PortTagView tags(uint32_t unit, int32_t port);

// The tables of tag protocol identifiers.
struct TpidView {
  std::vector<uint32_t> inner;
  std::vector<uint32_t> outer;
};
SWCTL_API TpidView tpids(uint32_t unit);

}  // namespace vchip

#endif
