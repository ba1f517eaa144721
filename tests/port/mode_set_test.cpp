// SPDX-License-Identifier: MIT
// user_port_speed_set and user_port_duplex_set. What they share runs for both;
// what sets them apart has its own tests.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::Lines;

constexpr const char *kSetAuto = "rtk_port_phyAutoNegoEnable_get";
constexpr const char *kSetForced = "rtk_port_phyForceModeAbility_get";
constexpr const char *kSetAbility = "rtk_port_phyAutoNegoAbility_get";
constexpr const char *kAutoOff = "rtk_port_phyAutoNegoEnable_set";
constexpr const char *kForce = "rtk_port_phyForceModeAbility_set";

struct Setter {
  const char *name;
  // Asks for 100 Mbit/s, half duplex, each in its own way.
  int32_t (*set_100_half)(uint32_t lead, uint32_t unit, int32_t port);
  const char *said_when_autonegotiation_stays;
};

int32_t speed_set(uint32_t lead, uint32_t unit, int32_t port) {
  return user_port_speed_set(lead, unit, port, 100, 0);
}
int32_t duplex_set(uint32_t lead, uint32_t unit, int32_t port) {
  return user_port_duplex_set(lead, unit, port, 0, 1);
}

class PortModeSet : public swctl_test::LibraryTest, public testing::WithParamInterface<Setter> {
 protected:
  static int32_t set(uint32_t unit = 1, int32_t port = 5, uint32_t lead = 0) {
    return GetParam().set_100_half(lead, unit, port);
  }
  static void stop_negotiating(uint32_t flow_control) {
    ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(1, 5, 0), 0);
    ASSERT_EQ(rtk_port_phyForceModeAbility_set(1, 5, 2, 1, flow_control), 0);
    swprobe::forget();
  }
  static void advertise(uint32_t unit, uint32_t ability) {
    ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(unit, 5, &ability), 0);
    swprobe::forget();
  }
  static void expect_failure(int32_t result, const std::string &output) {
    int32_t answered = 0;
    EXPECT_PRINTED(swctl_test::printed_by([&] { answered = set(); }), output, "");
    EXPECT_EQ(answered, result);
  }
};

#define EXPECT_FORCED(unit, port_number, speed_code, duplex_value, flow_control) \
  do {                                                                           \
    const vchip::PortView view_ = vchip::port((unit), (port_number));            \
    EXPECT_FALSE(view_.autonegotiation);                                         \
    EXPECT_EQ(view_.forced_speed, (speed_code));                                 \
    EXPECT_EQ(view_.forced_duplex, (duplex_value));                              \
    EXPECT_EQ(view_.forced_flow_control, (flow_control));                        \
  } while (false)

TEST_P(PortModeSet, ForcesTheModeAndKeepsForcedFlowControl) {
  for (uint32_t flow_control : {0u, 1u}) {
    stop_negotiating(flow_control);
    EXPECT_EQ(set(), 0);
    EXPECT_FORCED(1, 5, 1u, 0u, flow_control);
    const std::string flow = std::to_string(flow_control);
    EXPECT_CALLS("rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>0) = 0",
                 "rtk_port_phyForceModeAbility_get(unit=1, port=5, speed=>2, duplex=>1, "
                 "flow_control=>" +
                     flow + ") = 0",
                 "rtk_port_phyAutoNegoEnable_set(unit=1, port=5, enable=0) = 0",
                 "rtk_port_phyForceModeAbility_set(unit=1, port=5, speed=1, duplex=0, "
                 "flow_control=" +
                     flow + ") = 0");
  }
}

TEST_P(PortModeSet, ForcesTheModeAndKeepsAdvertisedPause) {
  advertise(1, USER_ABILITY_100_FULL | USER_ABILITY_PAUSE);
  advertise(0, USER_ABILITY_100_FULL);
  EXPECT_EQ(set(), 0);
  EXPECT_FORCED(1, 5, 1u, 0u, 1u);
  EXPECT_CALLS("rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>1) = 0",
               "rtk_port_phyAutoNegoAbility_get(unit=1, port=5, ability=>0x12000000) = 0",
               "rtk_port_phyAutoNegoEnable_set(unit=1, port=5, enable=0) = 0",
               "rtk_port_phyForceModeAbility_set(unit=1, port=5, speed=1, duplex=0, "
               "flow_control=1) = 0");
}

TEST_P(PortModeSet, NoAdvertisedPauseIsNoFlowControl) {
  for (uint32_t ability : {0x10000000u, 0xFDFFFFFFu}) {
    swprobe::clear_plan();
    chip_answers(kSetAuto, 0, {{"enable", 1}});
    chip_answers(kSetAbility, 0, {{"ability", ability}});
    EXPECT_EQ(set(), 0);
    EXPECT_EQ(vchip::port(1, 5).forced_flow_control, 0u) << std::hex << ability;
  }
}

TEST_P(PortModeSet, FlowControlIsThePauseBitAlone) {
  chip_answers(kSetAuto, 0, {{"enable", 1}});
  chip_answers(kSetAbility, 0, {{"ability", 0x02000000}});
  EXPECT_EQ(set(), 0);
  EXPECT_EQ(vchip::port(1, 5).forced_flow_control, 1u);
}

TEST_P(PortModeSet, AnyNonZeroAutonegotiationIsOn) {
  chip_answers(kSetAuto, 0, {{"enable", 6}});
  EXPECT_EQ(set(), 0);
  EXPECT_EQ(swprobe::take().at(1).name, kSetAbility);
}

TEST_P(PortModeSet, ForcedFlowControlIsPassedOnAsRead) {
  chip_answers(kSetAuto, 0, {{"enable", 0}});
  chip_answers(kSetForced, 0, {{"speed", 3}, {"duplex", 9}, {"flow_control", 77}});
  chip_answers(kForce, 0);
  EXPECT_EQ(set(), 0);
  const auto calls = swprobe::take();
  EXPECT_EQ(calls.at(3).in("flow_control"), 77);
  EXPECT_EQ(calls.at(3).in("speed"), 1) << "the speed read is discarded";
  EXPECT_EQ(calls.at(3).in("duplex"), 0) << "the duplex read is discarded";
}

TEST_P(PortModeSet, LocalsStartAtZeroIfTheSdkWritesNothing) {
  chip_answers(kSetAuto, 0);
  chip_answers(kSetForced, 0);
  chip_answers(kForce, 0);
  EXPECT_EQ(set(), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_EQ(calls[1].name, kSetForced) << "autonegotiation starts at 0";
  EXPECT_EQ(calls[3].in("flow_control"), 0);
}

TEST_P(PortModeSet, FailedAutonegotiationReadIsPrintedAndReturned) {
  chip_answers(kSetAuto, -5, {{"enable", 1}});
  expect_failure(-5, "rtk get error[-5]\n");
  EXPECT_CALLS("rtk_port_phyAutoNegoEnable_get(unit=1, port=5) = -5 !");
}

TEST_P(PortModeSet, FailedForcedModeReadIsPrintedAndReturned) {
  chip_answers(kSetAuto, 0, {{"enable", 0}});
  chip_answers(kSetForced, -6, {{"flow_control", 1}});
  expect_failure(-6, "rtk get error[-6]\n");
  EXPECT_EQ(swprobe::take().size(), 2u);
  EXPECT_TRUE(vchip::port(1, 5).autonegotiation);
}

TEST_P(PortModeSet, FailedAbilityReadMeansNoFlowControl) {
  chip_answers(kSetAbility, -7, {{"ability", 0xFFFFFFFF}});
  int32_t result = -1;
  EXPECT_PRINTED(swctl_test::printed_by([&] { result = set(); }), "", "");
  EXPECT_EQ(result, 0);
  EXPECT_FORCED(1, 5, 1u, 0u, 0u);
  EXPECT_EQ(swprobe::take().size(), 4u);
}

TEST_P(PortModeSet, FailureToStopNegotiatingIsReturned) {
  chip_answers(kAutoOff, -8);
  expect_failure(-8, GetParam().said_when_autonegotiation_stays);
  EXPECT_EQ(swprobe::take().size(), 3u) << "the mode is not forced";
}

TEST_P(PortModeSet, FailureToForceIsReturnedSilently) {
  chip_answers(kForce, -9);
  expect_failure(-9, "");
  EXPECT_EQ(swprobe::take().size(), 4u);
  EXPECT_FALSE(vchip::port(1, 5).autonegotiation) << "steps already done stay done";
}

TEST_P(PortModeSet, PositiveResultsAreSuccess) {
  chip_answers(kSetAuto, 1, {{"enable", 0}});
  chip_answers(kSetForced, 2, {{"flow_control", 1}});
  chip_answers(kAutoOff, 3);
  chip_answers(kForce, 4);
  int32_t result = 0;
  EXPECT_PRINTED(swctl_test::printed_by([&] { result = set(); }), "", "");
  EXPECT_EQ(result, 4);
  swprobe::forget();

  chip_answers(kSetAuto, 1, {{"enable", 1}});
  chip_answers(kSetAbility, 5, {{"ability", 0x02000000}});
  EXPECT_EQ(set(), 4);
  EXPECT_EQ(swprobe::take().at(3).in("flow_control"), 1);
}

TEST_P(PortModeSet, RefusesWhatTheChipRefuses) {
  int32_t result = 0;
  const auto bad_unit = [&] { result = set(VCHIP_UNITS, 5); };
  EXPECT_PRINTED(swctl_test::printed_by(bad_unit), "rtk get error[-1001]\n", "");
  EXPECT_EQ(result, VCHIP_E_UNIT);
  const auto bad_port = [&] { result = set(0, -1); };
  EXPECT_PRINTED(swctl_test::printed_by(bad_port), "rtk get error[-1002]\n", "");
  EXPECT_EQ(result, VCHIP_E_PORT);
}

TEST_P(PortModeSet, TouchesOnlyTheNamedPort) {
  EXPECT_EQ(set(), 0);
  EXPECT_TRUE(vchip::port(0, 5).autonegotiation);
  EXPECT_TRUE(vchip::port(1, 4).autonegotiation);
  EXPECT_TRUE(vchip::port(1, 6).autonegotiation);
}

TEST_P(PortModeSet, IgnoresTheLeadingArgument) {
  ASSERT_EQ(set(1, 5, 0), 0);
  ASSERT_EQ(set(1, 5, 0), 0);
  Lines calls = swprobe::take_lines();
  calls.erase(calls.begin(), calls.begin() + 4);
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    EXPECT_EQ(set(1, 5, lead), 0);
    EXPECT_EQ(swprobe::take_lines(), calls);
  }
}

INSTANTIATE_TEST_SUITE_P(Both, PortModeSet,
                         testing::Values(Setter{"speed", speed_set, ""},
                                         Setter{"duplex", duplex_set,
                                                "set port autonego enable failed!!!\n"}),
                         [](const auto &parameter) { return std::string(parameter.param.name); });

class PortModeValues : public swctl_test::LibraryTest {
 protected:
  // The last call's speed and duplex; the chip is kept out so that any value
  // passes.
  void SetUp() override {
    LibraryTest::SetUp();
    chip_answers(kForce, 0);
  }
  static swprobe::Call last_call() {
    const auto calls = swprobe::take();
    EXPECT_EQ(calls.back().name, kForce);
    return calls.back();
  }
};

TEST_F(PortModeValues, SpeedSetTranslatesTheSpeed) {
  const struct {
    uint32_t speed;
    int64_t code;
  } pairs[] = {{10, 0}, {100, 1}, {1000, 2}, {10000, 3}, {4, 4},         {0, 4},
               {1, 4},  {2, 4},   {3, 4},    {2500, 4},  {0xFFFFFFFF, 4}};
  for (const auto &pair : pairs) {
    EXPECT_EQ(user_port_speed_set(0, 1, 5, pair.speed, 1), 0);
    EXPECT_EQ(last_call().in("speed"), pair.code) << pair.speed;
  }
}

TEST_F(PortModeValues, SpeedSetPassesTheDuplexAsItIs) {
  for (uint32_t duplex : {0u, 1u, 2u, 0xFFFFFFFFu}) {
    EXPECT_EQ(user_port_speed_set(0, 1, 5, 1000, duplex), 0);
    EXPECT_EQ(static_cast<uint32_t>(last_call().in("duplex")), duplex);
  }
}

TEST_F(PortModeValues, DuplexSetPassesBothAsTheyAre) {
  for (uint32_t value : {0u, 1u, 2u, 3u, 4u, 10u, 100u, 1000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(user_port_duplex_set(0, 1, 5, value, value + 1), 0);
    const swprobe::Call call = last_call();
    EXPECT_EQ(static_cast<uint32_t>(call.in("duplex")), value);
    EXPECT_EQ(static_cast<uint32_t>(call.in("speed")), value + 1);
  }
}

TEST_F(PortModeValues, UnknownSpeedReachesTheChipAsCodeFour) {
  swprobe::clear_plan();
  EXPECT_EQ(user_port_speed_set(0, 1, 5, 2500, 1), 0);
  EXPECT_FORCED(1, 5, 4u, 1u, 1u);
}

}  // namespace
