// SPDX-License-Identifier: MIT
// Frames that the chip is lent: what leaves is the same, and copied only where it has to be.
#include <swctl/platform/sdk.h>

#include <algorithm>

#include "switch.h"

namespace {

using frames::Bytes;
using frames::kBroadcast;
using frames::Left;
using frames::Maker;
using frames::plain;
using frames::station;

constexpr int32_t kSlowPort = 7;  // has a limit
constexpr int32_t kTagPort = 3;   // of VLAN 1
constexpr int32_t kCopyPort = 20;
constexpr int32_t kLoopPort = 9;

class Lent : public frames::Switch {
 protected:
  static void lend(const std::vector<Bytes> &sent, int32_t port = 1) {
    ASSERT_EQ(vchip_frames_arrive_lent(0, arrivals(sent, port).data(),
                                       static_cast<uint32_t>(sent.size())),
              0);
  }
  static void give(const std::vector<Bytes> &sent, int32_t port = 1) {
    ASSERT_EQ(
        vchip_frames_arrive(0, arrivals(sent, port).data(), static_cast<uint32_t>(sent.size())), 0);
  }

 private:
  static std::vector<vchip_arrival_t> arrivals(const std::vector<Bytes> &sent, int32_t port) {
    std::vector<vchip_arrival_t> all;
    for (const Bytes &frame : sent)
      all.push_back({frame.data(), static_cast<uint32_t>(frame.size()), port});
    return all;
  }
};

TEST_F(Lent, WhatLeavesAsItCameIsNotCopiedUntilItIsKept) {
  std::vector<Bytes> sent = {plain(kBroadcast, station(1), 200)};
  lend(sent);
  sent[0][150] = 77;
  EXPECT_EQ(taken(2).at(0).bytes.at(150), 77);
  vchip_frames_keep(0);
  sent[0][150] = 99;
  const std::vector<Left> kept = taken(4);
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept[0].bytes.at(150), 77);
  EXPECT_EQ(kept[0].port_in, 1);
}

// A setting of every kind for which a frame is written, held back or copied on its way.
void set_lent_way() {
  const uint32_t members = frames::mask({1, 2, kTagPort, kSlowPort, kCopyPort, kLoopPort});
  const uint32_t untagged = members & ~frames::mask({kTagPort});
  ASSERT_EQ(rtk_vlan_port_set(0, 1, &members, &untagged), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlRate_set(0, kSlowPort, 500), 0);
  ASSERT_EQ(rtk_rate_egrBandwidthCtrlEnable_set(0, kSlowPort, 1), 0);
  ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, kLoopPort, 1), 0);
  chip_mirror_entry mirror = {};
  mirror.enable = 1;
  mirror.mirroring_port = kCopyPort;
  mirror.ingress = mirror.egress = frames::mask({1, 2});
  ASSERT_EQ(rtk_mirror_group_set(0, 0, &mirror), 0);
}

std::vector<Bytes> lent_frames() {
  std::vector<Bytes> all = {Bytes(14, 0xff), plain(kBroadcast, station(1)),
                            plain(station(2), station(1), 1500)};
  all.push_back(Maker(kBroadcast, station(1)).tag(1, 5).type(0x88b5).fill(300, 3).bytes());
  all.push_back(Maker(kBroadcast, station(1)).tag(9).type(0x88b5).fill(300, 4).bytes());
  for (uint8_t number = 0; number < 40; ++number)
    all.push_back(Maker(kBroadcast, station(1)).type(0x88b5).fill(1000, number).bytes());
  return all;
}

// All that leaves, port by port, once time has passed.
template <typename Send>
std::vector<Left> all_that_leaves(Send send) {
  frames::Switch::power_on();
  set_lent_way();
  std::vector<Bytes> sent = lent_frames();
  send(sent);
  vchip_frames_keep(0);
  for (Bytes &frame : sent) std::fill(frame.begin(), frame.end(), uint8_t{0xee});
  EXPECT_EQ(vchip_clock_advance(frames::kSecond), 0);
  std::vector<Left> all;
  for (int32_t port = 0; port < VCHIP_PORTS; ++port)
    for (Left &left : frames::Switch::taken(port)) all.push_back(std::move(left));
  return all;
}

TEST_F(Lent, WhatLeavesIsTheSame) {
  const std::vector<Left> given = all_that_leaves([](const auto &sent) { give(sent); });
  const std::vector<Left> lent = all_that_leaves([](const auto &sent) { lend(sent); });
  EXPECT_GT(given.size(), lent_frames().size() * 4);
  ASSERT_EQ(given.size(), lent.size());
  for (size_t place = 0; place < given.size(); ++place) {
    EXPECT_EQ(given[place].bytes, lent[place].bytes) << place;
    EXPECT_EQ(given[place].port_in, lent[place].port_in) << place;
    EXPECT_EQ(given[place].time, lent[place].time) << place;
  }
}

}  // namespace
