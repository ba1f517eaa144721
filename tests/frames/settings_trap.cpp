// SPDX-License-Identifier: MIT
// Frames that are meant for the processor.
#include "settings.h"

namespace frames::trap_setting {
namespace {

void bpdu() {
  send(1, Maker(0x0180c2000000, station(1)).half(38).half(0x4242).byte(3).bytes());
}
void igmp() {
  send(1, Maker(0x01005e000016, station(1))
              .type(0x0800)
              .ip4(2, 0x0a000001, 0xe0000016, 16)
              .fill(60)
              .bytes());
}
void reserved() {
  send(1, plain(0x0180c2000004, station(1)));
}
void blocked() {
  done(rtk_trap_rmaGroupAction_set(0, 1, 2));
  done(rtk_stp_mstpState_set(0, 0, 1, 1));
}
void lacp() {
  send(1, Maker(0x0180c2000002, station(1)).type(0x8809).byte(1).bytes());
}

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_trap_portMgmtFrameAction_set, (0, 1, 19, 2), nullptr, bpdu),
      SWCTL_SETTING(rtk_trap_mgmtFrameAction_set, (0, 5, 3), nullptr, igmp),
      SWCTL_SETTING(rtk_trap_rmaGroupAction_set, (0, 2, 2), nullptr, reserved),
      SWCTL_SETTING(rtk_trap_bypassStp_set, (0, 6, 1), blocked, lacp),
  };
}

}  // namespace frames::trap_setting
