// SPDX-License-Identifier: MIT
// The steps that user_port_speed_get and user_port_duplex_get share. Each test
// runs for both; the decision from advertised abilities is tested apart.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::Lines;

constexpr uint32_t kUntouched = 0xDEAD;

constexpr const char *kModeLink = "rtk_port_link_get";
constexpr const char *kMode = "rtk_port_speedDuplex_get";
constexpr const char *kAuto = "rtk_port_phyAutoNegoEnable_get";
constexpr const char *kForced = "rtk_port_phyForceModeAbility_get";
constexpr const char *kAbility = "rtk_port_phyAutoNegoAbility_get";

struct Reader {
  const char *name;
  int32_t (*function)(uint32_t, uint32_t, int32_t, uint32_t *);
  const char *output;  // which of the SDK's outputs is the caller's variable
  uint32_t at_100_half;
  uint32_t at_1000_full;
};

class PortModeGet : public swctl_test::LibraryTest, public testing::WithParamInterface<Reader> {
 protected:
  int32_t read(uint32_t *value, uint32_t unit = 1, int32_t port = 5, uint32_t lead = 0) {
    return GetParam().function(lead, unit, port, value);
  }
  void link_up() { chip_answers(kModeLink, 0, {{"link", 1}}); }
  void forced() {
    chip_answers(kModeLink, 0, {{"link", 0}});
    chip_answers(kAuto, 0, {{"enable", 0}});
  }
  void negotiating() {
    chip_answers(kModeLink, 0, {{"link", 0}});
    chip_answers(kAuto, 0, {{"enable", 1}});
  }
  // Runs the reader, which must fail, and compares everything it leaves.
  void expect_failure(int32_t result, uint32_t left, const std::string &output,
                      const std::string &error) {
    uint32_t value = kUntouched;
    int32_t answered = 0;
    const auto run = [&] { answered = read(&value); };
    EXPECT_PRINTED(swctl_test::printed_by(run), output, error);
    EXPECT_EQ(answered, result);
    EXPECT_EQ(value, left);
  }
};

TEST_P(PortModeGet, LinkUpReadsTheModeInOperation) {
  const vchip_partner_t partner = {1, USER_ABILITY_100_HALF};
  ASSERT_EQ(vchip_cable_plug(1, 5, &partner), 0);
  uint32_t value = kUntouched;
  EXPECT_EQ(read(&value), 0);
  EXPECT_EQ(value, GetParam().at_100_half);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=5, link=>1) = 0",
               "rtk_port_speedDuplex_get(unit=1, port=5, speed=>1, duplex=>0) = 0");
}

TEST_P(PortModeGet, LinkDownAndNotNegotiatingReadsTheForcedMode) {
  ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(1, 5, 0), 0);
  ASSERT_EQ(rtk_port_phyForceModeAbility_set(1, 5, 1, 0, 1), 0);
  swprobe::forget();
  uint32_t value = kUntouched;
  EXPECT_EQ(read(&value), 0);
  EXPECT_EQ(value, GetParam().at_100_half);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=5, link=>0) = 0",
               "rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>0) = 0",
               "rtk_port_phyForceModeAbility_get(unit=1, port=5, speed=>1, duplex=>0, "
               "flow_control=>1) = 0");
}

TEST_P(PortModeGet, LinkDownAndNegotiatingReadsTheAbilitiesOfUnitZero) {
  const uint32_t on_unit_0 = USER_ABILITY_1000_FULL;
  const uint32_t on_unit_1 = USER_ABILITY_10_HALF;
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, 5, &on_unit_0), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(1, 5, &on_unit_1), 0);
  swprobe::forget();
  uint32_t value = kUntouched;
  EXPECT_EQ(read(&value), 0);
  EXPECT_EQ(value, GetParam().at_1000_full);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=5, link=>0) = 0",
               "rtk_port_phyAutoNegoEnable_get(unit=1, port=5, enable=>1) = 0",
               "rtk_port_phyAutoNegoAbility_get(unit=0, port=5, ability=>0x4000000) = 0");
}

TEST_P(PortModeGet, OnlyLinkOneIsUp) {
  for (int64_t link : {2, -1, 0x100}) {
    swprobe::clear_plan();
    chip_answers(kModeLink, 0, {{"link", link}});
    swprobe::forget();
    uint32_t value = kUntouched;
    EXPECT_EQ(read(&value), 0);
    EXPECT_EQ(swprobe::take().at(1).name, kAuto) << "link " << link;
  }
}

TEST_P(PortModeGet, AnyNonZeroAutonegotiationIsOn) {
  for (int64_t enable : {1, 2, -1}) {
    swprobe::clear_plan();
    chip_answers(kModeLink, 0, {{"link", 0}});
    chip_answers(kAuto, 0, {{"enable", enable}});
    swprobe::forget();
    uint32_t value = kUntouched;
    EXPECT_EQ(read(&value), 0);
    EXPECT_EQ(swprobe::take().at(2).name, kAbility) << "enable " << enable;
  }
}

TEST_P(PortModeGet, AbilityStartsAtZero) {
  negotiating();
  chip_answers(kAbility, 0);
  uint32_t nothing = kUntouched;
  EXPECT_EQ(read(&nothing), 0);
  swprobe::clear_plan();
  negotiating();
  chip_answers(kAbility, 0, {{"ability", 0}});
  uint32_t zero = kUntouched;
  EXPECT_EQ(read(&zero), 0);
  EXPECT_EQ(nothing, zero);
}

TEST_P(PortModeGet, FailedLinkReadIsPrintedAndReturned) {
  chip_answers(kModeLink, -5, {{"link", 1}});
  expect_failure(-5, kUntouched, "rtk get error[-5]\n", "");
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=5) = -5 !");
}

TEST_P(PortModeGet, FailedReadOfTheModeInOperationIsPrintedAndReturned) {
  link_up();
  chip_answers(kMode, -6);
  expect_failure(-6, kUntouched, "rtk get error[-6]\n", "");
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=5, link=>1) = 0 !",
               "rtk_port_speedDuplex_get(unit=1, port=5) = -6 !");
}

TEST_P(PortModeGet, FailedAutonegotiationReadIsPrintedAndReturned) {
  chip_answers(kModeLink, 0, {{"link", 0}});
  chip_answers(kAuto, -7, {{"enable", 1}});
  expect_failure(-7, kUntouched, "rtk get error[-7]\n", "");
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=5, link=>0) = 0 !",
               "rtk_port_phyAutoNegoEnable_get(unit=1, port=5) = -7 !");
}

TEST_P(PortModeGet, FailedReadOfTheForcedModeIsPrintedAndReturned) {
  forced();
  chip_answers(kForced, INT32_MIN);
  expect_failure(INT32_MIN, kUntouched, "rtk get error[-2147483648]\n", "");
  EXPECT_EQ(swprobe::take().size(), 3u);
}

TEST_P(PortModeGet, FailedAbilityReadIsNamedOnStandardErrorOnly) {
  negotiating();
  chip_answers(kAbility, -8, {{"ability", USER_ABILITY_1000_FULL}});
  expect_failure(-8, kUntouched, "",
                 std::string(GetParam().name) + ":get port autonego ability failed\n");
  EXPECT_EQ(swprobe::take().size(), 3u);
}

TEST_P(PortModeGet, WhatAFailedReadOfTheModeLeftIsNotTranslated) {
  link_up();
  chip_answers(kMode, -6, {{GetParam().output, 2}});
  expect_failure(-6, 2, "rtk get error[-6]\n", "");
  swprobe::clear_plan();
  forced();
  chip_answers(kForced, -9, {{GetParam().output, 3}});
  expect_failure(-9, 3, "rtk get error[-9]\n", "");
}

TEST_P(PortModeGet, PositiveResultsAreSuccess) {
  uint32_t value = kUntouched;
  chip_answers(kModeLink, 1, {{"link", 1}});
  chip_answers(kMode, 2, {{"speed", 2}, {"duplex", 1}});
  EXPECT_EQ(read(&value), 2);
  EXPECT_EQ(value, GetParam().at_1000_full);

  value = kUntouched;
  swprobe::clear_plan();
  chip_answers(kModeLink, 1, {{"link", 0}});
  chip_answers(kAuto, 3, {{"enable", 0}});
  chip_answers(kForced, 4, {{"speed", 2}, {"duplex", 1}});
  EXPECT_EQ(read(&value), 4);
  EXPECT_EQ(value, GetParam().at_1000_full);

  value = kUntouched;
  swprobe::clear_plan();
  chip_answers(kModeLink, 1, {{"link", 0}});
  chip_answers(kAuto, 3, {{"enable", 1}});
  chip_answers(kAbility, 5, {{"ability", USER_ABILITY_1000_FULL}});
  int32_t result = 0;
  EXPECT_PRINTED(swctl_test::printed_by([&] { result = read(&value); }), "", "");
  EXPECT_EQ(result, 5);
  EXPECT_EQ(value, GetParam().at_1000_full);
}

TEST_P(PortModeGet, SuccessPrintsNothing) {
  uint32_t value = kUntouched;
  link_up();
  chip_answers(kMode, 0, {{"speed", 1}, {"duplex", 0}});
  EXPECT_PRINTED(swctl_test::printed_by([&] { read(&value); }), "", "");
  swprobe::clear_plan();
  EXPECT_PRINTED(swctl_test::printed_by([&] { read(&value); }), "", "");
}

TEST_P(PortModeGet, RefusesWhatTheChipRefuses) {
  uint32_t value = kUntouched;
  int32_t result = 0;
  const auto bad_unit = [&] { result = read(&value, VCHIP_UNITS, 5); };
  EXPECT_PRINTED(swctl_test::printed_by(bad_unit), "rtk get error[-1001]\n", "");
  EXPECT_EQ(result, VCHIP_E_UNIT);
  const auto bad_port = [&] { result = read(&value, 0, VCHIP_PORTS); };
  EXPECT_PRINTED(swctl_test::printed_by(bad_port), "rtk get error[-1002]\n", "");
  EXPECT_EQ(result, VCHIP_E_PORT);
  EXPECT_EQ(value, kUntouched);
}

TEST_P(PortModeGet, IgnoresTheLeadingArgument) {
  uint32_t expected = kUntouched;
  ASSERT_EQ(read(&expected, 1, 5, 0), 0);
  const Lines calls = swprobe::take_lines();
  for (uint32_t lead : {1u, 2u, 0xFFFFFFFFu}) {
    uint32_t value = kUntouched;
    EXPECT_EQ(read(&value, 1, 5, lead), 0);
    EXPECT_EQ(value, expected);
    EXPECT_EQ(swprobe::take_lines(), calls);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Both, PortModeGet,
    testing::Values(Reader{"user_port_speed_get", user_port_speed_get, "speed", 100, 1000},
                    Reader{"user_port_duplex_get", user_port_duplex_get, "duplex", 0, 1}),
    [](const auto &parameter) { return std::string(parameter.param.output); });

class PortSpeedCode : public swctl_test::LibraryTest {
 protected:
  static uint32_t translated(int64_t code, const char *call) {
    chip_answers(call, 0, {{"speed", code}});
    uint32_t speed = kUntouched;
    EXPECT_EQ(user_port_speed_get(0, 1, 5, &speed), 0);
    return speed;
  }
};

struct CodePair {
  int64_t code;
  uint32_t speed;
};
constexpr CodePair kCodes[] = {{0, 10}, {1, 100}, {2, 1000}, {3, 10000}, {4, 4},
                               {5, 4},  {10, 4},  {255, 4},  {-1, 4},    {0x80000000, 4}};

TEST_F(PortSpeedCode, IsTranslatedInOperation) {
  chip_answers(kModeLink, 0, {{"link", 1}});
  for (const CodePair &pair : kCodes) {
    EXPECT_EQ(translated(pair.code, kMode), pair.speed) << "code " << pair.code;
  }
}

TEST_F(PortSpeedCode, IsTranslatedWhenForced) {
  chip_answers(kModeLink, 0, {{"link", 0}});
  chip_answers(kAuto, 0, {{"enable", 0}});
  for (const CodePair &pair : kCodes) {
    EXPECT_EQ(translated(pair.code, kForced), pair.speed) << "code " << pair.code;
  }
}

TEST_F(PortSpeedCode, DuplexIsNotTranslated) {
  chip_answers(kModeLink, 0, {{"link", 1}});
  for (int64_t duplex : {0, 1, 2, 7}) {
    chip_answers(kMode, 0, {{"duplex", duplex}});
    uint32_t value = kUntouched;
    EXPECT_EQ(user_port_duplex_get(0, 1, 5, &value), 0);
    EXPECT_EQ(value, static_cast<uint32_t>(duplex));
  }
}

}  // namespace
