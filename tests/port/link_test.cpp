// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

constexpr uint32_t kUnit = 1;
constexpr int32_t kCombo = 24;
constexpr int32_t kCopper = 3;

constexpr const char *kLink = "rtk_port_link_get";
constexpr const char *kMedium = "rtk_port_phyComboPortMedia_get";
constexpr const char *kAdmin = "rtk_port_adminEnable_get";

class PortLinkStatus : public swctl_test::LibraryTest {
 protected:
  void plug(int32_t port) {
    const vchip_partner_t partner = {1, USER_ABILITY_1000_FULL | USER_ABILITY_100_FULL};
    ASSERT_EQ(vchip_cable_plug(kUnit, port, &partner), 0);
  }
  void fibre_up() {
    ASSERT_EQ(vchip_medium_set(kUnit, kCombo, USER_MEDIUM_FIBRE), 0);
    plug(kCombo);
  }
  // The chip's answers for a fibre port, written so that nothing but the
  // library decides.
  void fibre_answers(int64_t link_result, int64_t link) {
    chip_answers(kLink, link_result, {{"link", link}});
    chip_answers(kMedium, 0, {{"media", 1}});
  }
};

TEST_F(PortLinkStatus, CopperPortReportsItsLink) {
  plug(kCopper);
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCopper, &status), 0);
  EXPECT_EQ(status, 1u);
  EXPECT_EQ(user_port_link_status_get(0, 0, kCopper, &status), 0);
  EXPECT_EQ(status, 0u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=3, link=>1) = 0",
               "rtk_port_phyComboPortMedia_get(unit=1, port=3, media=>0) = 0",
               "rtk_port_link_get(unit=0, port=3, link=>0) = 0",
               "rtk_port_phyComboPortMedia_get(unit=0, port=3, media=>0) = 0");
}

TEST_F(PortLinkStatus, FibrePortThatIsUpReportsItsAdministrativeState) {
  fibre_up();
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 1u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24, link=>1) = 0",
               "rtk_port_phyComboPortMedia_get(unit=1, port=24, media=>1) = 0",
               "rtk_port_adminEnable_get(unit=1, port=24, enable=>1) = 0");
}

TEST_F(PortLinkStatus, FibrePortThatIsUpButDisabledReportsDown) {
  fibre_up();
  ASSERT_EQ(rtk_port_adminEnable_set(kUnit, kCombo, 0), 0);
  swprobe::forget();
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 0u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24, link=>1) = 0",
               "rtk_port_phyComboPortMedia_get(unit=1, port=24, media=>1) = 0",
               "rtk_port_adminEnable_get(unit=1, port=24, enable=>0) = 0");
}

TEST_F(PortLinkStatus, FibrePortThatIsDownIsNotAskedForItsAdministrativeState) {
  ASSERT_EQ(vchip_medium_set(kUnit, kCombo, USER_MEDIUM_FIBRE), 0);
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 0u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24, link=>0) = 0",
               "rtk_port_phyComboPortMedia_get(unit=1, port=24, media=>1) = 0");
}

TEST_F(PortLinkStatus, AnyAdministrativeValueReplacesAnyNonZeroStatus) {
  fibre_answers(0, 5);
  chip_answers(kAdmin, 0, {{"enable", 9}});
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 9u);
}

TEST_F(PortLinkStatus, AdministrativeStateIsZeroIfTheSdkWritesNone) {
  fibre_answers(0, 1);
  chip_answers(kAdmin, 0);
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 0u);
}

TEST_F(PortLinkStatus, OnlyMediumOneIsFibre) {
  for (int64_t medium : {0, 2, 3, -1}) {
    swprobe::clear_plan();
    chip_answers(kLink, 0, {{"link", 1}});
    chip_answers(kMedium, 0, {{"media", medium}});
    swprobe::forget();
    uint32_t status = 7;
    EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
    EXPECT_EQ(status, 1u);
    EXPECT_EQ(swprobe::take().size(), 2u) << "medium " << medium;
  }
}

TEST_F(PortLinkStatus, FailedLinkReadDoesNotStopTheFunction) {
  fibre_answers(-5, 1);
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), -5);
  EXPECT_EQ(status, 1u) << "the chip's port is enabled";
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24) = -5 !",
               "rtk_port_phyComboPortMedia_get(unit=1, port=24, media=>1) = 0 !",
               "rtk_port_adminEnable_get(unit=1, port=24, enable=>1) = 0");
}

TEST_F(PortLinkStatus, FailedLinkReadThatWroteNothingUsesTheCallersValue) {
  chip_answers(kLink, -5);
  chip_answers(kMedium, 0, {{"media", 1}});
  chip_answers(kAdmin, 0, {{"enable", 1}});
  uint32_t down = 0;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &down), -5);
  EXPECT_EQ(down, 0u);
  EXPECT_EQ(swprobe::take().size(), 2u);
  uint32_t up = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &up), -5);
  EXPECT_EQ(up, 1u);
  EXPECT_EQ(swprobe::take().size(), 3u);
}

TEST_F(PortLinkStatus, FailedMediumReadLeavesTheLink) {
  chip_answers(kLink, 0, {{"link", 1}});
  chip_answers(kMedium, -1, {{"media", 1}});
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 1u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24, link=>1) = 0 !",
               "rtk_port_phyComboPortMedia_get(unit=1, port=24) = -1 !");
}

TEST_F(PortLinkStatus, FailedAdministrativeReadLeavesTheLink) {
  fibre_answers(0, 1);
  chip_answers(kAdmin, -1, {{"enable", 0}});
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 0);
  EXPECT_EQ(status, 1u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24, link=>1) = 0 !",
               "rtk_port_phyComboPortMedia_get(unit=1, port=24, media=>1) = 0 !",
               "rtk_port_adminEnable_get(unit=1, port=24) = -1 !");
}

TEST_F(PortLinkStatus, PositiveResultsAreSuccess) {
  chip_answers(kLink, 3, {{"link", 1}});
  chip_answers(kMedium, 4, {{"media", 1}});
  chip_answers(kAdmin, 5, {{"enable", 0}});
  uint32_t status = 7;
  EXPECT_EQ(user_port_link_status_get(0, kUnit, kCombo, &status), 3)
      << "the result is that of the link read";
  EXPECT_EQ(status, 0u);
}

TEST_F(PortLinkStatus, IgnoresTheLeadingArgument) {
  fibre_up();
  for (uint32_t lead : {0u, 1u, 0x80000000u, 0xFFFFFFFFu}) {
    swprobe::forget();
    uint32_t status = 7;
    EXPECT_EQ(user_port_link_status_get(lead, kUnit, kCombo, &status), 0);
    EXPECT_EQ(status, 1u);
    EXPECT_EQ(swprobe::take().size(), 3u);
  }
}

TEST_F(PortLinkStatus, PrintsNothingOnFailure) {
  for (const char *name : {kLink, kMedium, kAdmin}) chip_answers(name, -1);
  uint32_t status = 7;
  const auto read = [&] { user_port_link_status_get(0, kUnit, kCombo, &status); };
  EXPECT_PRINTED(swctl_test::printed_by(read), "", "");
}

}  // namespace
