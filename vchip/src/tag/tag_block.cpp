// SPDX-License-Identifier: MIT
#include "tag/tag_block.h"

#include <algorithm>

#include "common/sound.h"

namespace vchip {
namespace {

// IEEE 802.1Q customer tags and 802.1ad service tags.
constexpr uint32_t kCustomerTpid = 0x8100;
constexpr uint32_t kServiceTpid = 0x88a8;

bool is_whole_tags(const PortTags &port) {
  return port.outer_pvid < kVlanIds && port.ingress_inner_tpids <= kTpidMask &&
         port.egress_inner_tpid < kTpids && port.egress_outer_tpid < kTpids;
}

}  // namespace

void TagBlock::power_on() {
  for (PortTags &port : ports_) {
    port.outer_pvid = 1;
    port.ingress_inner_tpids = 1;
  }
  inner_.fill(kCustomerTpid);
  outer_.fill(kServiceTpid);
}

bool TagBlock::sound() const {
  return std::ranges::all_of(ports_, is_whole_tags) && are_at_most(inner_, kMaxTpid) &&
         are_at_most(outer_, kMaxTpid);
}

}  // namespace vchip
