// SPDX-License-Identifier: MIT
#include "qos/qos_block.h"

namespace vchip {

// Power-on values differ from what management programs set, so that a missing
// initialisation shows.
void QosBlock::reset() {
  maps_ = {};
  maps_.remark_source = kMaxRemarkSource;
  for (QosPort &port : ports_) {
    port = {};
    port.group = kPriorityGroups - 1;
    port.weights.fill(kMaxQueueWeight);
  }
}

}  // namespace vchip
