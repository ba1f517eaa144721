// SPDX-License-Identifier: MIT
// Limits of ports and storm control.
#include "settings.h"

namespace frames::rate_setting {
namespace {

// More than a bucket of 16,384 bytes holds.
void burst() {
  for (int each = 0; each < 20; ++each) send(1, plain(kBroadcast, station(1), 1020));
}
void short_burst() {
  for (int each = 0; each < 20; ++each) flood();
}
void rate_in() {
  done(rtk_rate_igrBandwidthCtrlRate_set(0, 1, 0));
}
void limited_in() {
  done(rtk_rate_igrBandwidthCtrlEnable_set(0, 1, 1));
  burst();
  Switch::left();
}
void rate_out() {
  done(rtk_rate_egrBandwidthCtrlRate_set(0, 2, 0));
}
void limited_out() {
  done(rtk_rate_egrBandwidthCtrlEnable_set(0, 2, 1));
}
void one_second_later() {
  Switch::advance(kSecond);
  burst();
}
void burst_and_one_second() {
  burst();
  Switch::advance(kSecond);
}
void storm_rate() {
  done(rtk_rate_stormControlRate_set(0, 1, 2, 0));
}
void controlled() {
  done(rtk_rate_stormControlEnable_set(0, 1, 2, 1));
}
void controlled_at_0() {
  storm_rate();
  controlled();
}
void controlled_and_spent() {
  controlled();
  burst();
  Switch::left();
}

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_rate_igrBandwidthCtrlEnable_set, (0, 1, 1), rate_in, burst),
      SWCTL_SETTING(rtk_rate_igrBandwidthCtrlRate_set, (0, 1, 0), limited_in, one_second_later),
      SWCTL_SETTING(rtk_rate_egrBandwidthCtrlEnable_set, (0, 2, 1), rate_out, burst),
      SWCTL_SETTING(rtk_rate_egrBandwidthCtrlRate_set, (0, 2, 1), limited_out,
                    burst_and_one_second),
      SWCTL_SETTING(rtk_rate_stormControlEnable_set, (0, 1, 2, 1), storm_rate, burst),
      SWCTL_SETTING(rtk_rate_stormControlRate_set, (0, 1, 2, 0), controlled_and_spent,
                    one_second_later),
      SWCTL_SETTING(rtk_rate_stormControlBurstSize_set, (0, 2, 5), controlled_at_0, burst),
      SWCTL_SETTING(rtk_rate_stormControlRateMode_set, (0, 0), controlled_at_0, short_burst),
  };
}

}  // namespace frames::rate_setting
