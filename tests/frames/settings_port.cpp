// SPDX-License-Identifier: MIT
// Ports, lengths, attacks, isolation, mirrors and trunks.
#include "settings.h"

namespace frames::port_setting {
namespace {

constexpr uint32_t kNoAbility = 0;
constexpr uint32_t kSpeed100 = 1;
constexpr uint32_t kMembers = mask({2, 3, 4, 5});

void short_below_1000() {
  done(rtk_switch_maxPktLenLinkSpeed_set(0, 0, 100));
}
void forced_mode_of_100() {
  short_below_1000();
  done(rtk_port_phyForceModeAbility_set(0, 1, kSpeed100, 1, 0));
}
void forced() {
  short_below_1000();
  done(rtk_port_phyAutoNegoEnable_set(0, 1, 0));
}
void long_frame() {
  send(1, plain(kBroadcast, station(1), 300));
}
void long_tagged_frame() {
  send(1, Maker(kBroadcast, station(1)).tag(1).type(0x88b5).fill(1518).bytes());
}
void pause_then_frame() {
  send(2, Maker(0x0180c2000001, station(2)).type(0x8808).half(1).half(1000).bytes());
  flood();
}

void attack_is_dropped() {
  done(rtk_sec_attackPreventAction_set(0, 0, 1));
}
void port_is_protected() {
  done(rtk_sec_portAttackPreventEnable_set(0, 1, 1));
}
void attack() {
  send(1, Maker(kBroadcast, station(1))
              .type(0x0800)
              .ip4(17, 0x0a000001, 0x0a000001, 20)
              .fill(60)
              .bytes());
}

void trunk() {
  done(rtk_trunk_port_set(0, 1, &kMembers));
}
void many_sources() {
  for (uint32_t number = 0; number < 16; ++number) send(1, plain(kBroadcast, station(number)));
}

constexpr chip_mirror_entry mirror_of_port_1() {
  chip_mirror_entry entry = {};
  entry.enable = 1;
  entry.mirroring_port = 7;
  entry.ingress = mask({1});
  return entry;
}
constexpr chip_mirror_entry kMirror = mirror_of_port_1();

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_port_adminEnable_set, (0, 2, 0), nullptr, flood),
      SWCTL_SETTING(rtk_port_phyAutoNegoEnable_set, (0, 1, 0), forced_mode_of_100, long_frame),
      SWCTL_SETTING(rtk_port_phyAutoNegoAbility_set, (0, 1, &kNoAbility), nullptr, flood),
      SWCTL_SETTING(rtk_port_phyForceModeAbility_set, (0, 1, kSpeed100, 1, 0), forced, long_frame),
      SWCTL_SETTING(rtk_port_flowCtrlEnable_set, (0, 2, 0), nullptr, pause_then_frame),
      SWCTL_SETTING(rtk_diag_portMacLocalLoopbackEnable_set, (0, 2, 1), nullptr, flood),
      SWCTL_SETTING(rtk_port_isolation_set, (0, 1, mask({2})), nullptr, flood),
      SWCTL_SETTING(rtk_switch_maxPktLenLinkSpeed_set, (0, 1, 200), nullptr, long_frame),
      SWCTL_SETTING(rtk_switch_maxPktLenTagLenCntIncEnable_set, (0, 0), nullptr, long_tagged_frame),
      SWCTL_SETTING(rtk_sec_portAttackPreventEnable_set, (0, 1, 1), attack_is_dropped, attack),
      SWCTL_SETTING(rtk_sec_attackPreventAction_set, (0, 0, 1), port_is_protected, attack),
      SWCTL_SETTING(rtk_mirror_group_set, (0, 0, &kMirror), nullptr, flood),
      SWCTL_SETTING(rtk_trunk_port_set, (0, 1, &kMembers), nullptr, flood),
      SWCTL_SETTING(rtk_trunk_distributionAlgorithmParam_set, (0, 0, 2), trunk, many_sources),
  };
}

}  // namespace frames::port_setting
