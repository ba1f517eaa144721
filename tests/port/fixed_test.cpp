// SPDX-License-Identifier: MIT
#include <swctl/frame.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using PortFixed = swctl_test::LibraryTest;

TEST_F(PortFixed, SpeedMaxWritesAThousandWithoutACall) {
  for (uint32_t lead : {0u, 0xFFFFFFFFu}) {
    uint32_t speed = 7;
    EXPECT_EQ(user_port_speed_max(lead, 99, -5, &speed), 0);
    EXPECT_EQ(speed, 1000u);
  }
  EXPECT_NO_CALLS();
}

TEST_F(PortFixed, PrintNothing) {
  const auto all = [] {
    uint32_t speed = 0;
    user_port_speed_max(0, 0, 0, &speed);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
