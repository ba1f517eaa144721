// SPDX-License-Identifier: MIT
// This program has its own user_port_link_medium_get. The library reaches it
// by its exported name, so it is this one that is called.
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

struct Seen {
  int calls;
  uint32_t lead;
  uint32_t unit;
  int32_t port;
  uint32_t medium_before;
};
Seen seen;
int32_t answer;

using Interpose = swctl_test::LibraryTest;

}  // namespace

int32_t user_port_link_medium_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *medium) {
  seen = {seen.calls + 1, lead, unit, port, *medium};
  if (answer >= 0) *medium = USER_MEDIUM_FIBRE;
  return answer;
}

namespace {

TEST_F(Interpose, LinkStatusHandsItsLeadingArgumentOn) {
  for (uint32_t lead : {0u, 42u, 0xFFFFFFFFu}) {
    seen = {};
    answer = 0;
    swctl_test::chip_answers("rtk_port_link_get", 0, {{"link", 1}});
    swprobe::forget();
    uint32_t status = 0;
    EXPECT_EQ(user_port_link_status_get(lead, 1, 6, &status), 0);
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(seen.lead, lead);
    EXPECT_EQ(seen.unit, 1u);
    EXPECT_EQ(seen.port, 6);
    EXPECT_EQ(seen.medium_before, 0xFFFFFFFFu) << "the medium starts at -1";
    EXPECT_CALLS("rtk_port_link_get(unit=1, port=6, link=>1) = 0 !",
                 "rtk_port_adminEnable_get(unit=1, port=6, enable=>1) = 0");
  }
}

TEST_F(Interpose, MediumThatStaysUnknownIsNotFibre) {
  seen = {};
  answer = -9;
  swctl_test::chip_answers("rtk_port_link_get", 0, {{"link", 1}});
  uint32_t status = 0;
  EXPECT_EQ(user_port_link_status_get(0, 1, 6, &status), 0);
  EXPECT_EQ(seen.calls, 1);
  EXPECT_EQ(status, 1u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=6, link=>1) = 0 !");
}

}  // namespace
