// SPDX-License-Identifier: MIT
#include "common/numbers.h"
#include "document/findings.h"
#include "tag/tag_block.h"

namespace vchip {

void TagBlock::check(Findings &findings) const {
  findings.each("ports", ports_, [&](const PortTags &port, size_t) {
    findings.at_most("outer_pvid", port.outer_pvid, kVlanIds - 1);
    findings.flag("ingress_filter", port.ingress_filter);
    findings.flag("double_tag", port.double_tag);
    findings.flag("ingress_keep.inner", port.ingress_keep.inner);
    findings.flag("ingress_keep.outer", port.ingress_keep.outer);
    findings.flag("egress_keep.inner", port.egress_keep.inner);
    findings.flag("egress_keep.outer", port.egress_keep.outer);
    findings.flag("outer_tag_status", port.outer_tag_status);
    findings.at_most("ingress_inner_tpids", port.ingress_inner_tpids, kTpidMask);
    findings.at_most("egress_inner_tpid", port.egress_inner_tpid, kTpids - 1);
    findings.at_most("egress_outer_tpid", port.egress_outer_tpid, kTpids - 1);
  });
  findings.each_at_most("inner", inner_, kMaxTpid);
  findings.each_at_most("outer", outer_, kMaxTpid);
}

}  // namespace vchip
