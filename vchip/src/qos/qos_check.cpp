// SPDX-License-Identifier: MIT
#include "document/findings.h"
#include "qos/qos_block.h"

namespace vchip {

void QosBlock::check(Findings &findings) const {
  findings.each("outer", maps_.outer, [&](const auto &map, size_t) {
    findings.each_at_most("priority", map, kPriorities - 1);
  });
  findings.each_at_most("inner", maps_.inner, kPriorities - 1);
  findings.each_at_most("dscp", maps_.dscp, kPriorities - 1);
  findings.each_at_most("queue", maps_.queue, kQueues - 1);
  findings.each("groups", maps_.groups, [&](const auto &weights, size_t) {
    findings.each_at_most("weight", weights, kMaxSourceWeight);
  });
  findings.at_most("remark_source", maps_.remark_source, kMaxRemarkSource);
  findings.each("ports", ports_, [&](const QosPort &port, size_t) {
    findings.at_most("outer_priority", port.outer_priority, kPriorities - 1);
    findings.at_most("inner_priority", port.inner_priority, kPriorities - 1);
    findings.at_most("group", port.group, kPriorityGroups - 1);
    findings.at_most("algorithm", port.algorithm, kMaxAlgorithm);
    findings.each_at_most("weights", port.weights, kMaxQueueWeight);
    findings.each_at_most("strict", port.strict, 1);
    findings.flag("remarks", port.remarks);
  });
}

}  // namespace vchip
