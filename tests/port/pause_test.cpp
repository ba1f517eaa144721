// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "fail_each.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::printed_by;

constexpr const char *kPauseAuto = "rtk_port_phyAutoNegoEnable_get";
constexpr const char *kPauseAbility = "rtk_port_phyAutoNegoAbility_get";
constexpr const char *kPauseForced = "rtk_port_phyForceModeAbility_get";
constexpr const char *kState = "rtk_port_flowctrl_get";

class Pause : public swctl_test::LibraryTest {
 protected:
  static void force(uint32_t flow_control) {
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(1, 5, 0), 0);
    ASSERT_EQ(rtk_port_phyForceModeAbility_set(1, 5, 2, 1, flow_control), 0);
    swprobe::forget();
  }
  static uint32_t configured() {
    uint32_t pause = 7;
    EXPECT_EQ(user_port_pause_get(0, 1, 5, &pause), 0);
    return pause;
  }
};

TEST_F(Pause, SetReachesTheChip) {
  EXPECT_EQ(user_port_pause_set(0, 1, 5, 1), 0);
  EXPECT_CALLS("rtk_port_flowCtrlEnable_set(unit=1, port=5, enable=1) = 0");
  EXPECT_EQ(vchip::port(1, 5).forced_flow_control, 1u);
  EXPECT_EQ(vchip::port(1, 5).advertised & 0x03000000u, 0x03000000u);
  EXPECT_EQ(vchip::port(0, 5).forced_flow_control, 0u);
  EXPECT_EQ(user_port_pause_set(0, 1, 5, 0), 0);
  EXPECT_EQ(vchip::port(1, 5).forced_flow_control, 0u);
  EXPECT_EQ(vchip::port(1, 5).advertised & 0x03000000u, 0u);
}

TEST_F(Pause, SetHandsAnyValueOn) {
  chip_answers("rtk_port_flowCtrlEnable_set", 4);
  int32_t result = 0;
  EXPECT_PRINTED(printed_by([&] { result = user_port_pause_set(9, 3, -2, 0x80000005); }), "", "");
  EXPECT_EQ(result, 4);
  const auto call = swprobe::take().at(0);
  EXPECT_EQ(call.in("unit"), 3);
  EXPECT_EQ(call.in("port"), -2);
  EXPECT_EQ(static_cast<uint32_t>(call.in("enable")), 0x80000005u);
}

TEST_F(Pause, SetSaysThatItFailed) {
  chip_answers("rtk_port_flowCtrlEnable_set", -4);
  int32_t result = 0;
  EXPECT_PRINTED(printed_by([&] { result = user_port_pause_set(0, 1, 5, 1); }),
                 "set flowcontorl failed !!!\n", "");
  EXPECT_EQ(result, -4);
}

TEST_F(Pause, AdvertisedIsReadOnUnitZero) {
  const uint32_t both = 0x13000000;
  const uint32_t none = 0x10000000;
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, 5, &both), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(1, 5, &none), 0);
  swprobe::forget();
  EXPECT_EQ(configured(), 1u);
  EXPECT_CALLS("rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>1) = 0",
               "rtk_port_phyAutoNegoAbility_get(unit=0, port=5, ability=>0x13000000) = 0");
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, 5, &none), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(1, 5, &both), 0);
  EXPECT_EQ(configured(), 0u);
}

// The autonegotiation bit that decides is the caller's unit's all the same.
TEST_F(Pause, AutonegotiationIsReadOnTheCallersUnit) {
  ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(0, 5, 0), 0);
  swprobe::forget();
  configured();
  EXPECT_EQ(swprobe::take().at(1).name, kPauseAbility);
}

TEST_F(Pause, BothBitsOfEveryAbilityWordOfTheTenTopBitsDecide) {
  for (uint32_t top = 0; top < 1024; ++top) {
    const uint32_t word = top << 22 | 0x00155555;
    swprobe::clear_plan();
    chip_answers(kPauseAuto, 0, {{"enable", 1}});
    chip_answers(kPauseAbility, 0, {{"ability", word}});
    const bool pause = (word >> 25) % 2 == 1;
    const bool asymmetric = (word >> 24) % 2 == 1;
    EXPECT_EQ(configured(), pause && asymmetric ? 1u : 0u) << std::hex << word;
  }
}

TEST_F(Pause, AnyNonZeroAutonegotiationReadsTheAbilities) {
  chip_answers(kPauseAuto, 0, {{"enable", 0x100}});
  chip_answers(kPauseAbility, 0, {{"ability", 0x03000000}});
  EXPECT_EQ(configured(), 1u);
}

TEST_F(Pause, AbilityCountsAsZeroIfTheSdkWritesNone) {
  chip_answers(kPauseAuto, 0, {{"enable", 1}});
  chip_answers(kPauseAbility, 0);
  EXPECT_EQ(configured(), 0u);
}

TEST_F(Pause, ForcedIsReadOnTheCallersUnit) {
  for (uint32_t flow_control : {1u, 0u}) {
    force(flow_control);
    EXPECT_EQ(configured(), flow_control);
    EXPECT_CALLS("rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>0) = 0",
                 "rtk_port_phyForceModeAbility_get(unit=1, port=5, speed=>2, duplex=>1, "
                 "flow_control=>" +
                     std::to_string(flow_control) + ") = 0");
  }
}

TEST_F(Pause, ForcedIsHandedOverUnchanged) {
  force(1);
  chip_answers(kPauseForced, 0, {{"flow_control", 0xFFFFFFFE}});
  EXPECT_EQ(configured(), 0xFFFFFFFEu);
}

struct Failure {
  const char *call;
  bool negotiates;
  const char *output;
  const char *error;
};

TEST_F(Pause, EveryFailingReadIsReportedAndWritesNothing) {
  const Failure failures[] = {
      {kPauseAuto, true, "rtk get error[-77]\n", ""},
      {kPauseAbility, true, "", "user_port_pause_get:get port autonego ability failed\n"},
      {kPauseForced, false, "rtk get error[-77]\n", ""},
  };
  for (const Failure &failure : failures) {
    SCOPED_TRACE(failure.call);
    swprobe::clear_plan();
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(1, 5, failure.negotiates ? 1 : 0), 0);
    chip_answers(failure.call, -77);
    uint32_t pause = 7;
    int32_t result = 0;
    EXPECT_PRINTED(printed_by([&] { result = user_port_pause_get(0, 1, 5, &pause); }),
                   failure.output, failure.error);
    EXPECT_EQ(result, -77);
    EXPECT_EQ(pause, 7u);
  }
}

TEST_F(Pause, TheFirstFailureEndsTheRead) {
  for (const bool negotiates : {true, false}) {
    const auto prepare = [=] { rtk_port_phyAutoNegoEnable_set(1, 5, negotiates ? 1 : 0); };
    uint32_t pause = 0;
    swctl_test::fail_each(
        prepare,
        [&] {
          int32_t result = 0;
          printed_by([&] { result = user_port_pause_get(0, 1, 5, &pause); });
          return result;
        },
        swctl_test::expect_end);
  }
}

TEST_F(Pause, PositiveResultsAreSuccess) {
  chip_answers(kPauseAuto, 3, {{"enable", 1}});
  chip_answers(kPauseAbility, 4, {{"ability", 0x03000000}});
  uint32_t pause = 7;
  int32_t result = 0;
  EXPECT_PRINTED(printed_by([&] { result = user_port_pause_get(0, 1, 5, &pause); }), "", "");
  EXPECT_EQ(result, 4);
  EXPECT_EQ(pause, 1u);
  chip_answers(kPauseAuto, 3, {{"enable", 0}});
  chip_answers(kPauseForced, 5, {{"flow_control", 1}});
  EXPECT_EQ(user_port_pause_get(0, 1, 5, &pause), 5);
}

TEST_F(Pause, StateIsTheAndOfBothDirections) {
  const std::vector<std::vector<uint32_t>> cases = {
      {0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 1}, {6, 3, 2}, {0xFFFFFFFF, 0x80000000, 0x80000000}};
  for (const auto &words : cases) {
    swprobe::clear_plan();
    chip_answers(kState, 2, {{"transmit", words[0]}, {"receive", words[1]}});
    uint32_t pause = 7;
    EXPECT_EQ(user_port_pause_get_stat(0, 1, 5, &pause), 2);
    EXPECT_EQ(pause, words[2]);
  }
}

TEST_F(Pause, StateOfALinkThatNegotiatedPause) {
  const uint32_t pausing = USER_ABILITY_100_FULL | USER_ABILITY_PAUSE;
  const vchip_partner_t partner = {1, pausing};
  ASSERT_EQ(vchip_cable_plug(1, 5, &partner), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(1, 5, &pausing), 0);
  swprobe::forget();
  uint32_t pause = 7;
  EXPECT_EQ(user_port_pause_get_stat(0, 1, 5, &pause), 0);
  EXPECT_EQ(pause, 1u);
  EXPECT_EQ(user_port_pause_get_stat(0, 0, 5, &pause), 0);
  EXPECT_EQ(pause, 0u);
  EXPECT_CALLS("rtk_port_flowctrl_get(unit=1, port=5, transmit=>1, receive=>1) = 0",
               "rtk_port_flowctrl_get(unit=0, port=5, transmit=>0, receive=>0) = 0");
}

TEST_F(Pause, StateStaysAloneWhenItsReadFails) {
  chip_answers(kState, -9, {{"transmit", 1}, {"receive", 1}});
  uint32_t pause = 7;
  int32_t result = 0;
  EXPECT_PRINTED(printed_by([&] { result = user_port_pause_get_stat(0, 1, 5, &pause); }),
                 "rtk get error[-9]\n", "");
  EXPECT_EQ(result, -9);
  EXPECT_EQ(pause, 7u);
}

TEST_F(Pause, StateCountsAsOffIfTheSdkWritesNone) {
  chip_answers(kState, 0);
  uint32_t pause = 7;
  EXPECT_EQ(user_port_pause_get_stat(0, 1, 5, &pause), 0);
  EXPECT_EQ(pause, 0u);
}

TEST_F(Pause, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {0u, 1u, 0xFFFFFFFFu}) {
    uint32_t pause = 7;
    EXPECT_EQ(user_port_pause_set(lead, 1, 5, 1), 0);
    EXPECT_EQ(user_port_pause_get(lead, 1, 5, &pause), 0);
    EXPECT_EQ(user_port_pause_get_stat(lead, 1, 5, &pause), 0);
    EXPECT_EQ(swprobe::take().size(), 4u);
  }
}

}  // namespace
