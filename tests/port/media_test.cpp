// SPDX-License-Identifier: MIT
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::LibraryTest;

constexpr const char *kCall = "rtk_port_phyComboPortMedia_get";

using Getter = int32_t (*)(uint32_t, uint32_t, int32_t, uint32_t *);

// One operation under two names.
class PortMedia : public LibraryTest, public testing::WithParamInterface<Getter> {};

TEST_P(PortMedia, ReadsTheChip) {
  ASSERT_EQ(vchip_medium_set(1, 24, USER_MEDIUM_FIBRE), 0);
  uint32_t medium = 7;
  EXPECT_EQ(GetParam()(0, 1, 24, &medium), 0);
  EXPECT_EQ(medium, USER_MEDIUM_FIBRE);
  EXPECT_EQ(GetParam()(0, 0, 24, &medium), 0);
  EXPECT_EQ(medium, 0u);
  EXPECT_CALLS("rtk_port_phyComboPortMedia_get(unit=1, port=24, media=>1) = 0",
               "rtk_port_phyComboPortMedia_get(unit=0, port=24, media=>0) = 0");
}

TEST_P(PortMedia, StoresZeroWhenTheSdkFailsAndWritesNothing) {
  uint32_t medium = 7;
  EXPECT_EQ(GetParam()(0, VCHIP_UNITS, 24, &medium), VCHIP_E_UNIT);
  EXPECT_EQ(medium, 0u);
  medium = 7;
  EXPECT_EQ(GetParam()(0, 0, -1, &medium), VCHIP_E_PORT);
  EXPECT_EQ(medium, 0u);
}

TEST_P(PortMedia, StoresWhatAFailingSdkWrote) {
  chip_answers(kCall, -5, {{"media", 1}});
  uint32_t medium = 7;
  EXPECT_EQ(GetParam()(0, 0, 24, &medium), -5);
  EXPECT_EQ(medium, 1u);
}

TEST_P(PortMedia, PassesAPositiveResultAndAnyMedium) {
  chip_answers(kCall, 6, {{"media", 0xFFFFFFFF}});
  uint32_t medium = 7;
  EXPECT_EQ(GetParam()(0, 0, 24, &medium), 6);
  EXPECT_EQ(medium, 0xFFFFFFFFu);
}

TEST_P(PortMedia, IgnoresTheLeadingArgument) {
  for (uint32_t lead : {0u, 1u, 0xFFFFFFFFu}) {
    uint32_t medium = 7;
    EXPECT_EQ(GetParam()(lead, 0, 24, &medium), 0);
    EXPECT_EQ(medium, 0u);
    EXPECT_CALLS("rtk_port_phyComboPortMedia_get(unit=0, port=24, media=>0) = 0");
  }
}

TEST_P(PortMedia, PrintsNothingOnFailure) {
  uint32_t medium = 0;
  const auto read = [&] { GetParam()(0, VCHIP_UNITS, 24, &medium); };
  EXPECT_PRINTED(swctl_test::printed_by(read), "", "");
}

INSTANTIATE_TEST_SUITE_P(BothNames, PortMedia,
                         testing::Values(user_port_media_type_get, user_port_link_medium_get));

}  // namespace
