// SPDX-License-Identifier: MIT
#include <swctl/frame.h>
#include <swctl/port.h>

#include <cstring>

#include "support/library_test.h"

namespace {

using PortFixed = swctl_test::LibraryTest;

using Fixed = int32_t (*)(uint32_t, ...);
const struct {
  const char *name;
  Fixed function;
} kZero[] = {
    {"user_port_master_get", user_port_master_get},
    {"user_port_master_set", user_port_master_set},
    {"user_port_stp_get", user_port_stp_get},
    {"user_port_stp_set", user_port_stp_set},
    {"user_port_bpdu_enable_get", user_port_bpdu_enable_get},
    {"user_port_bpdu_enable_set", user_port_bpdu_enable_set},
};

TEST_F(PortFixed, AnswerZeroAndTouchNothing) {
  for (const auto &test : kZero) {
    uint32_t value = 0x12345678;
    for (uint32_t lead : {0u, 1u, 0xFFFFFFFFu}) {
      EXPECT_EQ(test.function(lead, 9u, -1, &value, &value), 0) << test.name;
    }
    EXPECT_EQ(value, 0x12345678u) << test.name;
  }
  EXPECT_NO_CALLS();
}

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
    for (const auto &test : kZero) test.function(0u, 0u, 0, &speed);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
