// SPDX-License-Identifier: MIT
// Looks at the arguments of the access-control calls; see common/check.h.
#ifndef VCHIP_ACL_ACL_CHECK_H
#define VCHIP_ACL_ACL_CHECK_H

#include <swctl-vchip/vchip.h>

namespace vchip {

constexpr int32_t on_index(uint32_t index, uint32_t count) {
  return index < count ? 0 : VCHIP_E_INDEX;
}

// There is one rule table, and one set of burst sizes.
constexpr int32_t on_table(uint32_t table) {
  return on_index(table, 1);
}

constexpr int32_t on_rule(int32_t rule) {
  return rule < 0 ? VCHIP_E_INDEX : on_index(static_cast<uint32_t>(rule), VCHIP_ACL_RULES);
}

}  // namespace vchip

#endif
