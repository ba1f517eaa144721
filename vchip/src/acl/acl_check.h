// SPDX-License-Identifier: MIT
// Looks at the arguments of the access-control calls; see common/check.h.
#ifndef VCHIP_ACL_ACL_CHECK_H
#define VCHIP_ACL_ACL_CHECK_H

#include <swctl-vchip/vchip.h>

#include "common/check.h"

namespace vchip {

// There is one rule table, and one set of burst sizes.
constexpr int32_t on_table(uint32_t table) {
  return below(table, 1);
}

constexpr int32_t on_rule(int32_t rule) {
  return rule < 0 ? VCHIP_E_INDEX : below(static_cast<uint32_t>(rule), VCHIP_ACL_RULES);
}

}  // namespace vchip

#endif
