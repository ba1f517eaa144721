// SPDX-License-Identifier: MIT
#include <swctl/frame.h>
#include <swctl/port.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "support/library_test.h"

namespace {

// Taken before main, and so before any function of the library has run.
const struct AtLoad {
  int32_t error = ONU_ERR_CODE;
  uint32_t state = stateflag;
  std::array<uint8_t, sizeof g_tmpBuffer> scratch = std::to_array(g_tmpBuffer);
  std::array<uint8_t, sizeof sntp_cfg> clock = std::to_array(sntp_cfg);
} at_load;

bool all(const uint8_t *bytes, size_t count, uint8_t value) {
  return std::all_of(bytes, bytes + count, [=](uint8_t byte) { return byte == value; });
}

using Globals = swctl_test::LibraryTest;

TEST_F(Globals, AreZeroAtLoad) {
  EXPECT_EQ(at_load.error, 0);
  EXPECT_EQ(at_load.state, 0u);
  EXPECT_TRUE(all(at_load.scratch.data(), at_load.scratch.size(), 0));
  EXPECT_TRUE(all(at_load.clock.data(), at_load.clock.size(), 0));
}

TEST_F(Globals, HaveTheirWidths) {
  EXPECT_EQ(sizeof ONU_ERR_CODE, 4u);
  EXPECT_EQ(sizeof stateflag, 4u);
  EXPECT_EQ(at_load.scratch.size(), 512u);
  EXPECT_EQ(at_load.clock.size(), 128u);
}

void call_every_port_function(uint32_t unit) {
  uint32_t value = 0;
  user_port_init(1, unit);
  user_port_media_type_get(1, unit, 24, &value);
  user_port_link_medium_get(1, unit, 24, &value);
  user_fiberport_link_status_get(1, unit, 24, &value);
  user_port_link_status_get(1, unit, 24, &value);
  user_port_loopback_set(1, unit, 24, 1);
  user_port_loopback_get(1, unit, 24, &value);
  user_port_speed_max(1, unit, 24, &value);
  user_port_speed_get(1, unit, 24, &value);
  user_port_duplex_get(1, unit, 24, &value);
  user_port_speed_set(1, unit, 24, 100, 1);
  user_port_duplex_set(1, unit, 24, 1, 1);
}

TEST_F(Globals, AreLeftAloneByThePortFunctions) {
  ONU_ERR_CODE = 0x5A5A5A5A;
  stateflag = 0xA5A5A5A5u;
  std::memset(g_tmpBuffer, 0x5A, sizeof g_tmpBuffer);
  std::memset(sntp_cfg, 0xA5, sizeof sntp_cfg);
  swctl_test::printed_by([] {
    call_every_port_function(0);
    call_every_port_function(VCHIP_UNITS);
  });
  EXPECT_EQ(ONU_ERR_CODE, 0x5A5A5A5A);
  EXPECT_EQ(stateflag, 0xA5A5A5A5u);
  EXPECT_TRUE(all(g_tmpBuffer, sizeof g_tmpBuffer, 0x5A));
  EXPECT_TRUE(all(sntp_cfg, sizeof sntp_cfg, 0xA5));
}

TEST_F(Globals, PortFunctionsNeitherLogNorTrace) {
  ASSERT_EQ(vchip_trace_set(1), 0);
  swctl_test::printed_by([] { call_every_port_function(0); });
  for (const swprobe::Call &call : swprobe::take()) {
    EXPECT_EQ(call.name.rfind("rtk_", 0), 0u) << call.line();
  }
}

}  // namespace
