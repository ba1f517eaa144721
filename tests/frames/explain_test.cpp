// SPDX-License-Identifier: MIT
// explain() is the way itself: it changes nothing, and what it says happens.
#include <swctl-vchip/explain.h>
#include <swctl-vchip/memory.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <random>

#include "random_settings.h"
#include "rule_maker.h"

namespace {

using frames::Bytes;

class Explain : public frames::Switch {
 protected:
  static vchip::Explanation explained(int32_t port, const Bytes &frame) {
    return vchip::explain(0, port, frame.data(), static_cast<uint32_t>(frame.size()));
  }
  static Bytes memory() {
    const vchip::Memory chip = vchip::memory();
    const auto *bytes = static_cast<const uint8_t *>(chip.start);
    return {bytes, bytes + chip.size};
  }
};

TEST_F(Explain, SaysWhatThenHappensAndChangesNothing) {
  size_t left = 0;
  for (uint32_t seed = 1; seed <= 12; ++seed) {
    power_on();
    std::mt19937 random(seed);
    frames::set_at_random(random);
    for (int each = 0; each < 60; ++each) {
      const Bytes frame = frames::frame_at_random(random);
      const auto port = static_cast<int32_t>(random() % VCHIP_PORTS);
      const Bytes before = each % 20 == 0 ? memory() : Bytes();
      const vchip::Explanation explanation = explained(port, frame);
      if (!before.empty()) {
        EXPECT_TRUE(memory() == before) << "seed " << seed;
      }
      arrive(port, frame);
      size_t place = 0;
      for (int32_t out = 0; out < VCHIP_PORTS; ++out)
        for (const frames::Left &sent : taken(out)) {
          ASSERT_LT(place, explanation.out.size()) << "seed " << seed << " frame " << each;
          EXPECT_EQ(explanation.out[place].port, out);
          EXPECT_EQ(explanation.out[place].bytes, sent.bytes);
          EXPECT_EQ(explanation.out[place].reason, sent.reason);
          ++place;
        }
      EXPECT_EQ(place, explanation.out.size());
      EXPECT_FALSE(explanation.steps.empty());
      left += place;
    }
  }
  EXPECT_GT(left, 500u);
}

// The counters of vchip_drops_t, by the names that the dump has.
constexpr const char *kDropNames[] = {"received", "forwarded", "taken", "attack", "ingress-rate",
                                      "vlan",     "filter",    "trap",  "state",  "learn",
                                      "rule",     "lookup",    "storm", "egress", "port",
                                      "length",   "queue",     "loop",  "held"};

TEST_F(Explain, NamesTheStepThatCounts) {
  constexpr size_t kFirstReason = 3;
  constexpr size_t kReasons = 16;  // those at the port of exit have no step of the frame's
  std::array<bool, std::size(kDropNames)> seen = {};
  for (uint32_t seed = 30; seed < 50; ++seed) {
    SetUp();
    std::mt19937 random(seed);
    frames::set_at_random(random);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, port, port == 3 ? 1 : 0), 0);
    // Port 0 has spent what it may receive.
    ASSERT_EQ(rtk_rate_igrBandwidthCtrlRate_set(0, 0, 0), 0);
    ASSERT_EQ(rtk_rate_igrBandwidthCtrlEnable_set(0, 0, 1), 0);
    for (int each = 0; each < 80; ++each)
      arrive(0, frames::plain(frames::station(1), frames::station(2), 280));
    for (int each = 0; each < 60; ++each) {
      const Bytes frame = frames::frame_at_random(random);
      const auto port = static_cast<int32_t>(random() % (each % 2 == 0 ? VCHIP_PORTS : 4));
      const vchip::Explanation explanation = explained(port, frame);
      ASSERT_EQ(vchip_drops_clear(0, port), 0);
      arrive(port, frame);
      const vchip_drops_t drops_after = drops(port);
      const auto *counts = reinterpret_cast<const uint64_t *>(&drops_after);
      for (size_t place = kFirstReason; place < kReasons; ++place) {
        // What turns at port 3 comes in there too.
        if (port == 3 || counts[place] == 0) continue;
        EXPECT_TRUE(explanation.dropped);
        EXPECT_EQ(explanation.dropped_at, kDropNames[place]) << "seed " << seed;
        seen[place] = true;
      }
      if (explanation.dropped && port != 3) {
        EXPECT_EQ(drops_after.forwarded + drops_after.taken, 0u);
      }
    }
  }
  for (size_t place = kFirstReason; place < kReasons; ++place)
    EXPECT_TRUE(seen[place]) << kDropNames[place];
}

TEST_F(Explain, SaysTheInternalPriority) {
  ASSERT_EQ(rtk_qos_1pPriRemap_set(0, 5, 3), 0);
  const auto says = [&](const char *what) {
    const Bytes frame =
        frames::Maker(frames::station(1), frames::station(2)).tag(1, 5).type(0x88b5).bytes();
    const vchip::Explanation explanation = explained(2, frame);
    return std::ranges::any_of(explanation.steps, [&](const vchip::ExplainedStep &step) {
      return step.why.find(what) != std::string::npos;
    });
  };
  EXPECT_TRUE(says("internal priority 3 by the inner tag"));
  frames::BoardRule(ADP_FP_ENTITY_MAC_VLAN, 0).priority(6).add();
  EXPECT_TRUE(says("internal priority 6"));
  frames::Rule(5).from(frames::mask({2})).priority(7).enable();
  EXPECT_TRUE(says("internal priority 7"));
}

TEST_F(Explain, NamesTheStepAndTheSettingThatDropped) {
  ASSERT_EQ(rtk_vlan_portIgrFilter_set(0, 2, 1), 0);
  ASSERT_EQ(rtk_vlan_create(0, 20), 0);
  const Bytes frame =
      frames::Maker(frames::station(1), frames::station(2)).tag(20).type(0x88b5).bytes();
  const vchip::Explanation explanation = explained(2, frame);
  EXPECT_TRUE(explanation.dropped);
  EXPECT_EQ(explanation.dropped_at, "filter");
  EXPECT_EQ(explanation.dropped_why, "port 3 is no member of VLAN 20");
  EXPECT_EQ(explanation.steps.back().setting, "rtk_vlan_portIgrFilter_set");
  EXPECT_TRUE(explanation.out.empty());
}

TEST_F(Explain, RefusesWhatIsNotThere) {
  const Bytes frame = frames::plain(frames::station(1), frames::station(2));
  EXPECT_THROW(vchip::explain(2, 1, frame.data(), 60), std::out_of_range);
  EXPECT_THROW(vchip::explain(0, 29, frame.data(), 60), std::out_of_range);
  EXPECT_THROW(vchip::explain(0, 1, frame.data(), 13), std::invalid_argument);
}

// One heard frame.
struct Heard {
  int32_t port;
  bool outbound;
  Bytes bytes;
  std::string step;
  std::string why;
};

class Losses : public Explain {
 protected:
  Losses() {
    vchip::hear_losses(0, [this](const vchip::LostFrame &lost) {
      heard.push_back(
          {lost.port, lost.outbound, {lost.bytes, lost.bytes + lost.length}, lost.step, lost.why});
    });
  }
  ~Losses() override { vchip::hear_losses(0, nullptr); }
  std::vector<Heard> heard;
};

TEST_F(Losses, AreWhatExplainForetells) {
  size_t dropped = 0;
  for (uint32_t seed = 1; seed <= 4; ++seed) {
    power_on();
    std::mt19937 random(seed);
    frames::set_at_random(random);
    for (int each = 0; each < 60; ++each) {
      const Bytes frame = frames::frame_at_random(random);
      const auto port = static_cast<int32_t>(random() % VCHIP_PORTS);
      const vchip::Explanation explanation = explained(port, frame);
      heard.clear();
      arrive(port, frame);
      std::erase_if(heard, [](const Heard &one) { return one.outbound; });
      if (!explanation.dropped) continue;
      ASSERT_FALSE(heard.empty()) << "seed " << seed << " frame " << each;
      EXPECT_EQ(heard[0].port, port);
      EXPECT_EQ(heard[0].bytes, frame);
      EXPECT_EQ(heard[0].step, explanation.dropped_at);
      EXPECT_EQ(heard[0].why, explanation.dropped_why);
      ++dropped;
    }
  }
  EXPECT_GT(dropped, 40u);
}

TEST_F(Losses, OfAFullQueueAreOutbound) {
  rtk_rate_egrBandwidthCtrlRate_set(0, 1, 1);
  rtk_rate_egrBandwidthCtrlEnable_set(0, 1, 1);
  const Bytes frame =
      frames::Maker(frames::kBroadcast, frames::station(1)).type(0x88b5).fill(1000).bytes();
  for (int each = 0; each < 1020; ++each) arrive(0, frame);
  ASSERT_FALSE(heard.empty());
  EXPECT_EQ(heard[0].port, 1);
  EXPECT_TRUE(heard[0].outbound);
  EXPECT_EQ(heard[0].bytes, frame);
  EXPECT_EQ(heard[0].step, "queue");
  heard.clear();
  vchip::hear_losses(0, nullptr);
  arrive(0, frame);
  EXPECT_TRUE(heard.empty());
}

}  // namespace
