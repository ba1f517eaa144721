// SPDX-License-Identifier: MIT
// This program has its own sleep(), so that the cable test takes no time.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <cstring>
#include <unistd.h>

#include "support/library_test.h"

namespace {

constexpr const char *kStart = "rtk_diag_rtctEnable_set";
constexpr const char *kRead = "rtk_diag_portRtctResult_get";

std::vector<unsigned> naps;
std::vector<std::string> calls_before_nap;

}  // namespace

unsigned sleep(unsigned seconds) {
  naps.push_back(seconds);
  calls_before_nap = swprobe::take_lines();
  return 0;
}

namespace {

using swctl_test::chip_answers;

user_cable_diag_t filled(uint32_t value) {
  user_cable_diag_t record;
  for (size_t word = 0; word < sizeof record / sizeof value; ++word)
    memcpy(reinterpret_cast<char *>(&record) + word * sizeof value, &value, sizeof value);
  return record;
}

std::vector<uint32_t> words_of(const user_cable_diag_t &record) {
  std::vector<uint32_t> words(sizeof record / sizeof(uint32_t));
  memcpy(words.data(), &record, sizeof record);
  return words;
}

using Words = std::vector<uint32_t>;

class CableTest : public swctl_test::LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    naps.clear();
    calls_before_nap.clear();
    const vchip_partner_t partner = {1, USER_ABILITY_1000_FULL};
    ASSERT_EQ(vchip_cable_plug(1, 5, &partner), 0);
  }
  static Words run(int32_t expected = 0) {
    user_cable_diag_t record = filled(0xDEADBEEF);
    EXPECT_EQ(User_port_cablediag(0, 1, 5, &record), expected);
    return words_of(record);
  }
  static void wires(uint32_t pair, uint32_t faults, uint32_t length = 0) {
    ASSERT_EQ(vchip_pair_set(1, 5, pair, faults, length), 0);
  }
};

TEST_F(CableTest, StartsWaitsThreeSecondsAndReads) {
  wires(0, VCHIP_FAULT_OPEN, 250);
  run();
  EXPECT_EQ(naps, std::vector<unsigned>{3});
  EXPECT_EQ(calls_before_nap, swctl_test::Lines{"rtk_diag_rtctEnable_set(unit=1, mask=0x20) = 0"});
  EXPECT_CALLS(
      "rtk_diag_portRtctResult_get(unit=1, port=5, result.unused=>0, result.shorted=>[0 0 0 0], "
      "result.open=>[1 0 0 0], result.mismatch=>[0 0 0 0], result.crosstalk=>[0 0 0 0], "
      "result.length=>[250 0 0 0]) = 0");
}

TEST_F(CableTest, AGoodCable) {
  for (uint32_t pair = 0; pair < 4; ++pair) wires(pair, 0, 1000 + 100 * pair);
  EXPECT_EQ(run(), (Words{0, 4, 0, 0, 0, 0, 10, 11, 12, 13, 0}));
}

TEST_F(CableTest, NoCableIsOpen) {
  ASSERT_EQ(vchip_cable_pull(1, 5), 0);
  EXPECT_EQ(run(), (Words{1, 4, 1, 1, 1, 1, 1, 1, 1, 1, 0}));
}

TEST_F(CableTest, LengthsAreHundredthsAndAtLeastOne) {
  const uint32_t lengths[] = {99, 250, 0, 100};
  for (uint32_t pair = 0; pair < 4; ++pair) wires(pair, 0, lengths[pair]);
  EXPECT_EQ(run(), (Words{0, 4, 0, 0, 0, 0, 1, 2, 1, 1, 0}));
  wires(0, 0, 0xFFFFFFFF);
  EXPECT_EQ(run().at(6), 42949672u) << "unsigned";
}

// From the SDK's flags of each pair, not from the chip's wires.
struct Flags {
  bool f1, f2, f3, f4;
};
uint32_t naive_pair(const Flags &flags) {
  if (flags.f4) return 5;
  const int set = flags.f1 + flags.f2 + flags.f3;
  if (set > 1) return 5;
  if (flags.f2) return 1;
  if (flags.f1) return 2;
  if (flags.f3) return 4;
  return 0;
}
uint32_t naive_overall(const Words &pairs) {
  if (pairs == Words{0, 0, 0, 0}) return 0;
  if (pairs == Words{1, 1, 1, 1}) return 1;
  for (const uint32_t each : pairs)
    if (each == 2) return 2;
  for (const uint32_t each : pairs)
    if (each == 4) return 4;
  return 5;
}

void answer_flags(const std::vector<Flags> &pairs, int64_t value) {
  swctl_test::Outputs outputs;
  for (size_t pair = 0; pair < pairs.size(); ++pair) {
    const std::string index = "[" + std::to_string(pair) + "]";
    if (pairs[pair].f1) outputs.emplace_back("result.shorted" + index, value);
    if (pairs[pair].f2) outputs.emplace_back("result.open" + index, value);
    if (pairs[pair].f3) outputs.emplace_back("result.mismatch" + index, value);
    if (pairs[pair].f4) outputs.emplace_back("result.crosstalk" + index, value);
  }
  outputs.emplace_back("result.unused", 0x77);
  swprobe::clear_plan();
  chip_answers(kRead, 0, outputs);
}

Flags flags_of(unsigned bits) {
  return {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
}

TEST_F(CableTest, EverySetOfFlagsOnEveryPair) {
  for (unsigned bits = 0; bits < 16; ++bits) {
    for (size_t pair = 0; pair < 4; ++pair) {
      for (const int64_t value : {int64_t{1}, int64_t{0x80000000}}) {
        std::vector<Flags> pairs(4, Flags{});
        pairs[pair] = flags_of(bits);
        answer_flags(pairs, value);
        Words states(4, 0);
        states[pair] = naive_pair(pairs[pair]);
        const Words words = run();
        EXPECT_EQ(Words(words.begin() + 2, words.begin() + 6), states) << bits << " " << pair;
        EXPECT_EQ(words[0], naive_overall(states));
      }
    }
  }
}

// Flags that give each state that a pair can have.
TEST_F(CableTest, EveryCombinationOfPairStates) {
  const unsigned makes[] = {0, 2, 1, 4, 8};  // states 0, 1, 2, 4, 5
  for (unsigned all = 0; all < 625; ++all) {
    const unsigned digits[] = {all % 5, all / 5 % 5, all / 25 % 5, all / 125};
    std::vector<Flags> pairs;
    Words states;
    for (const unsigned digit : digits) {
      pairs.push_back(flags_of(makes[digit]));
      states.push_back(naive_pair(pairs.back()));
    }
    answer_flags(pairs, 1);
    const Words words = run();
    EXPECT_EQ(words[0], naive_overall(states)) << all;
  }
}

TEST_F(CableTest, OverallStatesByExample) {
  const std::vector<std::pair<Words, uint32_t>> cases = {
      {{1, 1, 1, 2}, 2}, {{1, 1, 1, 1}, 1}, {{1, 0, 0, 0}, 5}, {{0, 4, 0, 0}, 4},
      {{1, 1, 1, 0}, 5}, {{4, 2, 5, 1}, 2}, {{5, 5, 5, 4}, 4}};
  const uint32_t faults[] = {0, VCHIP_FAULT_OPEN,     VCHIP_FAULT_SHORT,
                             0, VCHIP_FAULT_MISMATCH, VCHIP_FAULT_CROSSTALK};
  for (const auto &[states, overall] : cases) {
    for (uint32_t pair = 0; pair < 4; ++pair) wires(pair, faults[states[pair]]);
    const Words words = run();
    EXPECT_EQ(Words(words.begin() + 2, words.begin() + 6), states);
    EXPECT_EQ(words[0], overall);
  }
}

TEST_F(CableTest, AnyResultButZeroOfTheStartEndsIt) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers(kStart, result);
    swprobe::forget();
    EXPECT_EQ(run(static_cast<int32_t>(result)), Words(11, 0xDEADBEEF));
    EXPECT_TRUE(naps.empty());
    EXPECT_EQ(swprobe::take().size(), 1u);
  }
}

TEST_F(CableTest, AFailedReadLooksLikeAGoodCable) {
  for (int64_t result : {-5, 5}) {
    swprobe::clear_plan();
    chip_answers(kRead, result);
    EXPECT_EQ(run(static_cast<int32_t>(result)), (Words{0, 4, 0, 0, 0, 0, 1, 1, 1, 1, 0}));
  }
}

TEST_F(CableTest, WhatAFailedReadWroteIsReported) {
  chip_answers(kRead, -5, {{"result.open[1]", 1}, {"result.length[1]", 300}});
  EXPECT_EQ(run(-5), (Words{5, 4, 0, 1, 0, 0, 1, 3, 1, 1, 0}));
}

TEST_F(CableTest, TheMaskHasThePortsBit) {
  chip_answers(kStart, 0);
  chip_answers(kRead, 0);
  for (int32_t port = 0; port < 32; ++port) {
    swprobe::forget();
    user_cable_diag_t record;
    EXPECT_EQ(User_port_cablediag(0, 1, port, &record), 0);
    ASSERT_EQ(calls_before_nap.size(), 1u);
    char line[80];
    snprintf(line, sizeof line, "rtk_diag_rtctEnable_set(unit=1, mask=0x%x) = 0 !",
             uint32_t{1} << port);
    EXPECT_EQ(calls_before_nap[0], line);
  }
}

TEST_F(CableTest, APortOutsideTheMaskHasNoBit) {
  chip_answers(kStart, 5);
  for (int32_t port : {32, 37, 255, 256, -1, INT32_MIN, INT32_MAX}) {
    swprobe::forget();
    user_cable_diag_t record;
    EXPECT_EQ(User_port_cablediag(0, 1, port, &record), 5);
    EXPECT_EQ(swprobe::take().at(0).in("mask"), 0) << port;
  }
}

TEST_F(CableTest, IgnoresTheLeadingArgumentAndPrintsNothing) {
  const auto all = [] {
    user_cable_diag_t record;
    EXPECT_EQ(User_port_cablediag(0xFFFFFFFF, 1, 5, &record), 0);
    EXPECT_EQ(User_port_cablediag(1, VCHIP_UNITS, 5, &record), VCHIP_E_UNIT);
    chip_answers(kRead, -5);
    EXPECT_EQ(User_port_cablediag(1, 1, 5, &record), -5);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
