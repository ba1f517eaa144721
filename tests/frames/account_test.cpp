// SPDX-License-Identifier: MIT
// Every frame is accounted for, whatever the settings.
#include <swctl/platform/sdk.h>

#include <random>

#include "random_settings.h"
#include "switch.h"

namespace {

using frames::Bytes;

class Account : public frames::Switch {
 protected:
  static uint64_t parts(const vchip_drops_t &all) {
    return all.forwarded + all.taken + all.attack + all.ingress_rate + all.vlan + all.filter +
           all.trap + all.state + all.learn + all.rule + all.lookup + all.storm + all.egress;
  }
  static uint64_t counter(int32_t port, uint32_t which) {
    user_counter_t value = {};
    EXPECT_EQ(rtk_stat_port_get(0, port, which, &value), 0);
    return static_cast<uint64_t>(value.high) << 32 | value.low;
  }
};

TEST_F(Account, ReceivedIsForwardedAndTakenAndTheReasons) {
  std::array<bool, 19> seen = {};
  for (uint32_t seed = 1; seed <= 40; ++seed) {
    power_on();
    std::mt19937 random(seed);
    frames::set_at_random(random);
    for (int each = 0; each < 400; ++each) {
      const Bytes frame = frames::frame_at_random(random);
      // Some ports get more, so that their limits show.
      arrive(static_cast<int32_t>(random() % (each % 2 == 0 ? VCHIP_PORTS : 3)), frame);
      if (random() % 20 == 0) advance(random() % frames::kSecond);
    }
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      const vchip_drops_t all = drops(port);
      EXPECT_EQ(all.received, parts(all)) << "seed " << seed << " port " << port;
      const uint64_t counted = counter(port, CHIP_COUNTER_RX_UNICAST) +
                               counter(port, CHIP_COUNTER_RX_MULTICAST) +
                               counter(port, CHIP_COUNTER_RX_BROADCAST);
      EXPECT_EQ(all.received, counted);
      const auto *each = reinterpret_cast<const uint64_t *>(&all);
      for (size_t place = 0; place < seen.size(); ++place)
        seen[place] = seen[place] || each[place] != 0;
    }
  }
  // Full queues and lost links have tests of their own.
  seen[16] = seen[18] = true;
  for (size_t place = 0; place < seen.size(); ++place) EXPECT_TRUE(seen[place]) << place;
}

TEST_F(Account, IsSetTo0) {
  arrive(1, frames::plain(frames::station(1), frames::station(2)));
  EXPECT_EQ(drops(1).received, 1u);
  ASSERT_EQ(vchip_drops_clear(0, 1), 0);
  EXPECT_EQ(drops(1).received, 0u);
  EXPECT_EQ(vchip_drops_clear(0, 29), VCHIP_E_PORT);
  EXPECT_EQ(vchip_drops_clear(2, 1), VCHIP_E_UNIT);
}

TEST_F(Account, AResetAndACloseEmptyTheQueues) {
  for (const bool close : {false, true}) {
    SetUp();
    ASSERT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, 2, 1), 0);
    ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, 2, 1), 0);
    for (int each = 0; each < 30; ++each)
      arrive(1, frames::plain(frames::kBroadcast, frames::station(2), 1000));
    advance(1);
    EXPECT_NE(vchip_clock_next(), UINT64_MAX) << "some wait";
    if (close)
      vchip_close();
    else
      ASSERT_EQ(vchip_reset(), 0);
    EXPECT_EQ(vchip_frames_ready(0), 0u);
    EXPECT_EQ(vchip_clock_next(), UINT64_MAX);
    EXPECT_EQ(vchip_clock(), 0u) << "a private chip is gone when it is closed";
  }
}

}  // namespace
