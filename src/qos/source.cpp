// SPDX-License-Identifier: MIT
// Which of the priorities that a frame has is followed, and which is written.
#include <swctl/platform/sdk.h>
#include <swctl/qos.h>

#include "frame/front_ports.h"

namespace {

constexpr uint32_t kInternalPriority = 0;  // remark source
constexpr uint32_t kOn = 1;

// Weights of the priorities that a frame can have; the SDK's order.
constexpr uint32_t kTrustGroups[][5] = {
    {0, 0, 0, 1, 1},
    {0, 2, 2, 1, 1},
    {3, 2, 2, 1, 1},
};
constexpr int32_t kTrustGroupCount = sizeof kTrustGroups / sizeof kTrustGroups[0];

}  // namespace

int32_t user_qos_remark_inner_tag_src_init(void) {
  rtk_qos_1pRemarkSrcSel_set(0, kInternalPriority);
  swctl::every_front_port([](int32_t port) { return rtk_qos_1pRemarkEnable_set(0, port, kOn); });
  return 0;
}

int32_t user_qos_trust_sel_group_set(int32_t group) {
  if (group < 0 || group >= kTrustGroupCount) return -1;
  return rtk_qos_priSelGroup_set(0, static_cast<uint32_t>(group), kTrustGroups[group]);
}

int32_t user_qos_trust_sel_group_init(void) {
  for (int32_t group = 0; group < kTrustGroupCount; ++group) user_qos_trust_sel_group_set(group);
  return 0;
}

int32_t user_qos_port_trust_mode_set(int32_t port, uint32_t group) {
  return rtk_qos_portPriSelGroup_set(0, port, group);
}
