// SPDX-License-Identifier: MIT
// Priorities, queues and remarking.
#include "settings.h"

namespace frames::qos_setting {
namespace {

constexpr uint32_t kOwnQueues[8] = {0, 1, 2, 3, 4, 5, 6, 7};
constexpr uint32_t kOuterPortFirst[5] = {0, 0, 0, 0, 7};
constexpr uint32_t kInnerPortFirst[5] = {0, 0, 0, 7, 0};
constexpr uint32_t kUnequal[8] = {1, 1, 1, 1, 1, 1, 1, 9};

// What leaves port 2 shows its internal priority in its tag.
void show_priority() {
  const uint32_t all = mask({1, 2});
  const uint32_t untagged = mask({1});
  done(rtk_vlan_port_set(0, 1, &all, &untagged));
  done(rtk_qos_1pRemarkSrcSel_set(0, 0));
  done(rtk_qos_1pRemarkEnable_set(0, 2, 1));
}
void tagged() {
  send(1, Maker(kBroadcast, station(1)).tag(1, 5).type(0x88b5).bytes());
}
void outer_tagged() {
  send(1, Maker(kBroadcast, station(1)).tag(1, 5, 0x88a8).type(0x88b5).bytes());
}
void double_tag() {
  show_priority();
  done(rtk_l2_vlanMode_set(0, 1, 1));
  done(rtk_vlan_portIgrTagKeepEnable_set(0, 1, 1, 1));
}
void outer_port_counts() {
  show_priority();
  done(rtk_qos_priSelGroup_set(0, 3, kOuterPortFirst));
}
void inner_port_of_6() {
  show_priority();
  done(rtk_qos_portInnerPri_set(0, 1, 6));
}
void group_0_by_inner_port() {
  inner_port_of_6();
  done(rtk_qos_priSelGroup_set(0, 0, kInnerPortFirst));
}
void ip() {
  send(1, Maker(kBroadcast, station(1))
              .type(0x0800)
              .ip4(17, 0x0a000001, 0x0a000002, 20, 46 << 2)
              .fill(60)
              .bytes());
}
void tagged_remap() {
  const uint32_t all = mask({1, 2});
  const uint32_t untagged = mask({1});
  done(rtk_vlan_port_set(0, 1, &all, &untagged));
  done(rtk_qos_1pPriRemap_set(0, 5, 2));
}
void remarks() {
  tagged_remap();
  done(rtk_qos_1pRemarkEnable_set(0, 2, 1));
}
void internal_is_source() {
  tagged_remap();
  done(rtk_qos_1pRemarkSrcSel_set(0, 0));
}

// Port 2 sends 2,000 bytes a second, and its bucket is empty.
void full_port() {
  done(rtk_qos_1pPriRemap_set(0, 7, 7));
  done(rtk_rate_egrBandwidthCtrlRate_set(0, 2, 1));
  done(rtk_rate_egrBandwidthCtrlEnable_set(0, 2, 1));
  for (int each = 0; each < 16; ++each) send(1, plain(kBroadcast, station(1), 1020));
  Switch::left();
}
void full_queues() {
  full_port();
  done(rtk_qos_priMap_set(0, 8, kOwnQueues));
}
// Short frames of priority 0, long ones of priority 7.
void both_queues() {
  for (int each = 0; each < 6; ++each) {
    send(1, Maker(kBroadcast, station(1)).tag(1, 0).type(0x88b5).fill(100).bytes());
    send(1, Maker(kBroadcast, station(2)).tag(1, 7).type(0x88b5).fill(500).bytes());
  }
  Switch::advance(10 * kSecond);
}

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_qos_1pPriRemap_set, (0, 5, 3), show_priority, tagged),
      SWCTL_SETTING(rtk_qos_outer1pPriRemap_set, (0, 5, 0, 3), double_tag, outer_tagged),
      SWCTL_SETTING(rtk_qos_dscpPriRemap_set, (0, 46, 3), show_priority, ip),
      SWCTL_SETTING(rtk_qos_portInnerPri_set, (0, 1, 3), show_priority, flood),
      SWCTL_SETTING(rtk_qos_portOuterPri_set, (0, 1, 3), outer_port_counts, flood),
      SWCTL_SETTING(rtk_qos_priSelGroup_set, (0, 3, kInnerPortFirst), inner_port_of_6, tagged),
      SWCTL_SETTING(rtk_qos_portPriSelGroup_set, (0, 1, 0), group_0_by_inner_port, tagged),
      SWCTL_SETTING(rtk_qos_priMap_set, (0, 8, kOwnQueues), full_port, both_queues),
      SWCTL_SETTING(rtk_qos_queueStrictEnable_set, (0, 2, 0, 1), full_queues, both_queues),
      SWCTL_SETTING(rtk_qos_schedulingAlgorithm_set, (0, 2, 1), full_queues, both_queues),
      SWCTL_SETTING(rtk_qos_schedulingQueue_set, (0, 2, kUnequal), full_queues, both_queues),
      SWCTL_SETTING(rtk_qos_1pRemarkSrcSel_set, (0, 0), remarks, tagged),
      SWCTL_SETTING(rtk_qos_1pRemarkEnable_set, (0, 2, 1), internal_is_source, tagged),
  };
}

}  // namespace frames::qos_setting
