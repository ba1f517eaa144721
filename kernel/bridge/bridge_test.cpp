// SPDX-License-Identifier: MIT
// The virtual chip forwards as the bridge of the Linux kernel does, where both
// have the same setting: IEEE 802.1Q, clause 8, is the same for both.
#include <swctl-vchip/vchip.h>

#include <gtest/gtest.h>
#include <optional>
#include <random>

#include "twins.h"

namespace {

using bridge::bit;
using bridge::Bytes;
using bridge::kAllPorts;
using bridge::State;

constexpr uint64_t kBroadcast = 0xffffffffffff;
constexpr uint64_t kGroup = 0x010000000007;
constexpr uint64_t kIpGroup = 0x01005e010203;
constexpr uint64_t kIp6Group = 0x333300010203;

// Far apart, so that the chip keeps few of them in one bucket.
constexpr uint64_t host(uint32_t number) {
  return 0x020000000000 | number * 0x1357bu;
}

struct Tag {
  uint32_t vid;
  uint32_t priority = 0;
  uint32_t type = 0x8100;
};

// Long enough that nothing is padded, also when a tag is taken.
Bytes frame(uint64_t to, uint64_t from, const std::vector<Tag> &tags = {}, size_t payload = 60) {
  static uint32_t number = 0;
  Bytes bytes;
  const auto put = [&](uint64_t value, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
      bytes.push_back(static_cast<uint8_t>(value >> shift));
  };
  put(to, 6);
  put(from, 6);
  for (const Tag &tag : tags) {
    put(tag.type, 2);
    put(tag.priority << 13 | tag.vid, 2);
  }
  put(0x88b5, 2);
  put(++number, 4);
  bytes.resize(bytes.size() + payload);
  return bytes;
}

class Bridge : public testing::Test {
 protected:
  // Where the frame goes, the same in both.
  uint32_t out(int port, const Bytes &frame) {
    std::string difference;
    uint32_t ports = 0;
    for (const auto &[heard, bytes] : twins_->send(port, frame, difference)) ports |= bit(heard);
    EXPECT_EQ(difference, "");
    return ports;
  }
  static uint32_t others(int port) { return kAllPorts & ~bit(port); }

  std::optional<bridge::Twins> twins_{std::in_place};
};

TEST_F(Bridge, FloodsWhatItDoesNotKnow) {
  EXPECT_EQ(out(1, frame(host(9), host(1))), others(1));
  EXPECT_EQ(out(2, frame(kBroadcast, host(2))), others(2));
  EXPECT_EQ(out(3, frame(kGroup, host(3))), others(3));
  EXPECT_EQ(out(3, frame(kIpGroup, host(3))), others(3));
  EXPECT_EQ(out(3, frame(kIp6Group, host(3))), others(3));
}

TEST_F(Bridge, LearnsAndMoves) {
  out(1, frame(kBroadcast, host(1)));
  EXPECT_EQ(out(2, frame(host(1), host(2))), bit(1));
  EXPECT_EQ(out(1, frame(host(2), host(1))), bit(2));
  EXPECT_EQ(out(2, frame(host(2), host(3))), 0u);  // to where it came from
  out(4, frame(kBroadcast, host(1)));
  EXPECT_EQ(out(2, frame(host(1), host(2))), bit(4));
}

TEST_F(Bridge, LearnsInEachVlanApart) {
  twins_->vlan(2, kAllPorts, 0);
  out(1, frame(kBroadcast, host(1), {{2}}));
  EXPECT_EQ(out(2, frame(host(1), host(2), {{2}})), bit(1));
  EXPECT_EQ(out(2, frame(host(1), host(2))), others(2));
}

TEST_F(Bridge, DoesNotLearnWhereLearningIsOff) {
  twins_->learning(1, false);
  out(1, frame(kBroadcast, host(1)));
  EXPECT_EQ(out(2, frame(host(1), host(2))), others(2));
  twins_->learning(1, true);
  out(1, frame(kBroadcast, host(1)));
  EXPECT_EQ(out(2, frame(host(1), host(2))), bit(1));
}

TEST_F(Bridge, AgesEntries) {
  twins_->ageing(2);
  out(1, frame(kBroadcast, host(1)));
  EXPECT_EQ(out(2, frame(host(1), host(2))), bit(1));
  twins_->pass(1000);
  out(1, frame(kBroadcast, host(1)));  // keeps it young
  EXPECT_EQ(out(2, frame(host(1), host(2))), bit(1));
  twins_->pass(1400);
  EXPECT_EQ(out(2, frame(host(1), host(2))), bit(1));
  twins_->pass(2600);
  EXPECT_EQ(out(2, frame(host(1), host(2))), others(2));
}

TEST_F(Bridge, TagsByMembership) {
  twins_->vlan(2, bit(1) | bit(2) | bit(3), bit(2));
  EXPECT_EQ(out(1, frame(kBroadcast, host(1), {{2, 5}})), bit(2) | bit(3));
  EXPECT_EQ(out(4, frame(kBroadcast, host(1), {{2}})), 0u);  // no member
  EXPECT_EQ(out(1, frame(kBroadcast, host(1), {{3}})), 0u);  // no such VLAN
  twins_->default_vlan(2, 2);
  EXPECT_EQ(out(2, frame(kBroadcast, host(2))), bit(1) | bit(3));
}

TEST_F(Bridge, PutsPriorityTagsIntoTheDefaultVlan) {
  twins_->vlan(2, bit(1) | bit(2) | bit(3), bit(2));
  twins_->default_vlan(1, 2);
  EXPECT_EQ(out(1, frame(kBroadcast, host(1), {{0, 6}})), bit(2) | bit(3));
}

TEST_F(Bridge, CarriesInnerTags) {
  twins_->vlan(2, kAllPorts, bit(2));
  EXPECT_EQ(out(1, frame(kBroadcast, host(1), {{2}, {77, 3}})), others(1));
}

// A tag of another type is no tag: the frame is in the default VLAN.
TEST_F(Bridge, TakesAServiceTagAsPayload) {
  twins_->vlan(2, bit(1) | bit(3), 0);
  twins_->vlan(3, bit(1) | bit(2), bit(1) | bit(2));
  twins_->default_vlan(1, 3);
  EXPECT_EQ(out(1, frame(host(9), host(1), {{2, 0, 0x88a8}})), bit(2));
}

TEST_F(Bridge, DropsWhenAVlanGoes) {
  twins_->vlan(2, kAllPorts, 0);
  EXPECT_EQ(out(1, frame(kBroadcast, host(1), {{2}})), others(1));
  twins_->vlan(2, 0, 0);
  EXPECT_EQ(out(1, frame(kBroadcast, host(1), {{2}})), 0u);
  EXPECT_EQ(out(1, frame(kBroadcast, host(1))), others(1));
}

TEST_F(Bridge, FloodsByKind) {
  twins_->flood(others(2), others(3), others(4));
  EXPECT_EQ(out(1, frame(host(9), host(1))), others(1) & ~bit(2));
  EXPECT_EQ(out(1, frame(kGroup, host(1))), others(1) & ~bit(3));
  EXPECT_EQ(out(1, frame(kIpGroup, host(1))), others(1) & ~bit(3));
  EXPECT_EQ(out(1, frame(kBroadcast, host(1))), others(1) & ~bit(4));
  // A station that is known is reached on a port that is not flooded.
  out(2, frame(kBroadcast, host(2)));
  EXPECT_EQ(out(1, frame(host(2), host(1))), bit(2));
}

TEST_F(Bridge, KeepsIsolatedPortsApart) {
  twins_->isolated(bit(1) | bit(2));
  // Flooded, broadcast, and between stations that are known.
  EXPECT_EQ(out(1, frame(host(9), host(1))), others(1) & ~bit(2));
  EXPECT_EQ(out(2, frame(kBroadcast, host(2))), others(2) & ~bit(1));
  EXPECT_EQ(out(3, frame(kBroadcast, host(3))), others(3));
  EXPECT_EQ(out(1, frame(host(2), host(1))), 0u);
  EXPECT_EQ(out(1, frame(host(3), host(1))), bit(3));
  EXPECT_EQ(out(3, frame(host(1), host(3))), bit(1));
}

TEST_F(Bridge, KeepsAStaticStationWhereItIs) {
  twins_->station(host(1), 1, 1);
  out(2, frame(kBroadcast, host(1)));
  EXPECT_EQ(out(3, frame(host(1), host(3))), bit(1));
}

TEST_F(Bridge, ForwardsByPortState) {
  twins_->begin_states();
  EXPECT_EQ(out(1, frame(kBroadcast, host(1))), others(1));
  for (const State state : {State::kDisabled, State::kBlocking, State::kLearning}) {
    twins_->state(2, state);
    EXPECT_EQ(out(2, frame(kBroadcast, host(2))), 0u);
    EXPECT_EQ(out(1, frame(kBroadcast, host(1))), others(1) & ~bit(2));
    // Learned from the learning port alone, and not reached there.
    EXPECT_EQ(out(1, frame(host(2), host(1))),
              state == State::kLearning ? 0u : others(1) & ~bit(2));
  }
  twins_->state(2, State::kForwarding);
  EXPECT_EQ(out(1, frame(host(2), host(1))), bit(2));
}

TEST_F(Bridge, ForwardsToGroups) {
  twins_->begin_groups();
  twins_->vlan(2, kAllPorts, 0);
  twins_->group(kGroup, 1, bit(2) | bit(3));
  EXPECT_EQ(out(1, frame(kGroup, host(1))), bit(2) | bit(3));
  EXPECT_EQ(out(2, frame(kGroup, host(2))), bit(3));
  EXPECT_EQ(out(1, frame(kGroup, host(1), {{2}})), others(1));
  twins_->group(kGroup, 1, bit(3));
  EXPECT_EQ(out(1, frame(kGroup, host(1))), bit(3));
  twins_->group(kGroup, 1, 0);
  out(1, frame(kBroadcast, host(1)));
  twins_->pass(500);  // the kernel ends a group without members a moment later
  EXPECT_EQ(out(1, frame(kGroup, host(1))), others(1));
}

// Settings of every kind and frames between a few stations, until a port of one
// of the two says something else.
class Walk {
 public:
  Walk(bridge::Twins &twins, uint32_t seed) : twins_(twins), random_(seed) {}

  void set() {
    for (uint32_t vid = 2; vid < 6; ++vid) {
      const uint32_t members = ports() | ports();
      twins_.vlan(vid, members, members & ports());
    }
    for (int port = 1; port <= bridge::kPorts; ++port) twins_.default_vlan(port, 1);
    twins_.vlan(5, kAllPorts, ports());  // as VLAN 1, so that a port can have either as its default
    for (int port = 1; port <= bridge::kPorts; ++port)
      if (one_in(3)) twins_.default_vlan(port, 5);
    for (int port = 1; port <= bridge::kPorts; ++port) {
      twins_.state(port, one_in(4) ? static_cast<State>(below(4)) : State::kForwarding);
      twins_.learning(port, !one_in(5));
    }
    twins_.isolated(one_in(2) ? ports() & ports() : 0);
    twins_.flood(ports() | ports(), ports() | ports(), ports() | ports());
    twins_.station(host(below(4)), one_in(2) ? 1 : 5, any_port());
  }

  int any_port() { return 1 + static_cast<int>(below(bridge::kPorts)); }
  Bytes any_frame() {
    constexpr uint64_t kMany[] = {kBroadcast, kGroup, kIpGroup, kIp6Group};
    const uint64_t to = one_in(3) ? kMany[below(4)] : host(below(14));
    std::vector<Tag> tags;
    if (one_in(2)) tags.push_back({below(7), below(8), one_in(8) ? 0x88a8u : 0x8100u});
    if (one_in(6)) tags.push_back({below(7), below(8)});
    return frame(to, host(below(12)), tags, 60 + below(1400));
  }

 private:
  uint32_t below(uint32_t end) { return static_cast<uint32_t>(random_() % end); }
  bool one_in(uint32_t number) { return below(number) == 0; }
  uint32_t ports() { return static_cast<uint32_t>(random_()) & kAllPorts; }

  bridge::Twins &twins_;
  std::mt19937 random_;
};

// 10,000 frames in five parts, of which ./dev test takes the first: its machine is emulated.
class RandomFrames : public Bridge, public testing::WithParamInterface<uint32_t> {};

TEST_P(RandomFrames, Are2000WithTheSameEnd) {
  constexpr uint32_t kSettings = 5;
  constexpr int kFrames = 400;
  size_t left = 0;
  const uint32_t first = GetParam() * kSettings + 1;
  for (uint32_t seed = first; seed < first + kSettings; ++seed) {
    twins_.emplace();
    twins_->begin_states();
    Walk walk(*twins_, seed);
    walk.set();
    for (int each = 0; each < kFrames; ++each) {
      const int port = walk.any_port();
      std::string difference;
      left += twins_->send(port, walk.any_frame(), difference, std::chrono::milliseconds{0}).size();
      ASSERT_EQ(difference, "") << "seed " << seed << ", frame " << each;
    }
    ASSERT_EQ(twins_->surplus(std::chrono::milliseconds{20}), "") << "seed " << seed;
  }
  EXPECT_GT(left, 500u);  // settings that let nothing through would agree too
}

INSTANTIATE_TEST_SUITE_P(Parts, RandomFrames, testing::Range(0u, 5u));

}  // namespace
