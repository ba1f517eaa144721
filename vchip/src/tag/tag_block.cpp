// SPDX-License-Identifier: MIT
#include "tag/tag_block.h"

namespace vchip {
namespace {

// IEEE 802.1Q customer tags and 802.1ad service tags.
constexpr uint32_t kCustomerTpid = 0x8100;
constexpr uint32_t kServiceTpid = 0x88a8;

}  // namespace

void TagBlock::reset() {
  PortTags power_on = {};
  power_on.outer_pvid = 1;
  power_on.ingress_inner_tpids = 1;
  for (PortTags &port : ports_) port = power_on;
  inner_.fill(kCustomerTpid);
  outer_.fill(kServiceTpid);
}

}  // namespace vchip
