// SPDX-License-Identifier: MIT
// Limits of both directions; what they share runs for both.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

struct Way {
  const char *name;
  int32_t (*set)(uint32_t, uint32_t, int32_t, int32_t);
  int32_t (*get)(uint32_t, uint32_t, int32_t, int32_t *);
  std::string prefix;  // of its SDK calls

  std::string enable() const { return prefix + "Enable_set"; }
  std::string rate_set() const { return prefix + "Rate_set"; }
  std::string rate_get() const { return prefix + "Rate_get"; }
  bool limited(uint32_t unit) const {
    const vchip::PortRateView view = vchip::port_rates(unit, 5);
    return prefix == "rtk_rate_egrBandwidthCtrl" ? view.egress_limited : view.ingress_limited;
  }
  int32_t rate(uint32_t unit) const {
    const vchip::PortRateView view = vchip::port_rates(unit, 5);
    return prefix == "rtk_rate_egrBandwidthCtrl" ? view.egress_rate : view.ingress_rate;
  }
};

class Bandwidth : public swctl_test::LibraryTest, public testing::WithParamInterface<Way> {};

TEST_P(Bandwidth, SetSwitchesTheLimitOnAndWritesASixteenth) {
  EXPECT_EQ(GetParam().set(0, 1, 5, 31), 0);
  EXPECT_CALLS(GetParam().enable() + "(unit=1, port=5, enable=1) = 0",
               GetParam().rate_set() + "(unit=1, port=5, rate=1) = 0");
  EXPECT_TRUE(GetParam().limited(1));
  EXPECT_EQ(GetParam().rate(1), 1);
  EXPECT_FALSE(GetParam().limited(0));
}

TEST_P(Bandwidth, ZeroIsALimitToo) {
  EXPECT_EQ(GetParam().set(0, 1, 5, 0), 0);
  EXPECT_TRUE(GetParam().limited(1));
  EXPECT_EQ(GetParam().rate(1), 0);
}

TEST_P(Bandwidth, DivisionRoundsTowardsZero) {
  const std::pair<int32_t, int32_t> cases[] = {{15, 0},
                                               {16, 1},
                                               {17, 1},
                                               {31, 1},
                                               {32, 2},
                                               {-1, 0},
                                               {-15, 0},
                                               {-16, -1},
                                               {-17, -1},
                                               {-31, -1},
                                               {-32, -2},
                                               {INT32_MAX, 134217727},
                                               {INT32_MIN, -134217728}};
  chip_answers(GetParam().rate_set(), 0);
  for (const auto &[given, written] : cases) {
    swprobe::forget();
    EXPECT_EQ(GetParam().set(0, 1, 5, given), 0);
    EXPECT_EQ(swprobe::take().at(1).in("rate"), written) << given;
  }
}

TEST_P(Bandwidth, ARefusedSwitchIsIgnored) {
  chip_answers(GetParam().enable(), -7);
  EXPECT_EQ(GetParam().set(0, 1, 5, 160), 0);
  EXPECT_EQ(GetParam().rate(1), 10);
}

TEST_P(Bandwidth, TheResultIsThatOfTheRate) {
  for (int64_t result : {-7, 5}) {
    swprobe::clear_plan();
    chip_answers(GetParam().rate_set(), result);
    EXPECT_EQ(GetParam().set(0, 1, 5, 160), result);
  }
  swprobe::clear_plan();
  EXPECT_EQ(GetParam().set(0, 1, 5, -17), VCHIP_E_VALUE) << "written as -1";
}

TEST_P(Bandwidth, GetMultipliesBySixteen) {
  ASSERT_EQ(GetParam().set(0, 1, 5, 1000), 0);
  swprobe::forget();
  int32_t rate = 7;
  EXPECT_EQ(GetParam().get(0, 1, 5, &rate), 0);
  EXPECT_EQ(rate, 992);
  EXPECT_CALLS(GetParam().rate_get() + "(unit=1, port=5, rate=>62) = 0");
}

TEST_P(Bandwidth, GetWrapsAround) {
  const std::pair<int64_t, int32_t> cases[] = {
      {-1, -16}, {0x0FFFFFFF, -16}, {0x08000000, INT32_MIN}, {0x7FFFFFFF, -16}};
  for (const auto &[sdk, read] : cases) {
    swprobe::clear_plan();
    chip_answers(GetParam().rate_get(), 0, {{"rate", sdk}});
    int32_t rate = 7;
    EXPECT_EQ(GetParam().get(0, 1, 5, &rate), 0);
    EXPECT_EQ(rate, read) << sdk;
  }
}

TEST_P(Bandwidth, GetWritesWhateverTheResult) {
  for (int64_t result : {-7, 5}) {
    swprobe::clear_plan();
    chip_answers(GetParam().rate_get(), result, {{"rate", 3}});
    int32_t rate = 7;
    EXPECT_EQ(GetParam().get(0, 1, 5, &rate), result);
    EXPECT_EQ(rate, 48);
  }
}

TEST_P(Bandwidth, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    int32_t rate = 7;
    EXPECT_EQ(GetParam().set(lead, 1, 5, 320), 0);
    EXPECT_EQ(GetParam().get(lead, 1, 5, &rate), 0);
    EXPECT_EQ(rate, 320);
  }
}

INSTANTIATE_TEST_SUITE_P(
    BothWays, Bandwidth,
    testing::Values(Way{"egress", user_port_egress_rate_set, user_port_egress_rate_get,
                        "rtk_rate_egrBandwidthCtrl"},
                    Way{"ingress", user_port_ingress_rate_set, user_port_ingress_rate_get,
                        "rtk_rate_igrBandwidthCtrl"}),
    [](const auto &way) { return way.param.name; });

}  // namespace
