// SPDX-License-Identifier: MIT
// The functions that are one SDK call: the leading argument is dropped, the
// rest goes through unchanged, the result comes back unchanged.
#include <swctl-vchip/view.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using PassThrough = swctl_test::LibraryTest;
using swctl_test::chip_answers;

using Getter = int32_t (*)(uint32_t, uint32_t, int32_t, uint32_t *);
struct GetterCase {
  const char *name;
  Getter function;
  const char *call;
  const char *output;
};
const GetterCase kGetters[] = {
    {"user_fiberport_link_status_get", user_fiberport_link_status_get, "rtk_port_link_get", "link"},
    {"user_port_loopback_get", user_port_loopback_get, "rtk_diag_portMacLocalLoopbackEnable_get",
     "enable"},
};

TEST_F(PassThrough, GettersHandTheCallersAddressOn) {
  for (const GetterCase &test : kGetters) {
    for (int64_t result : {0, 3, -1, -1002, INT32_MIN, INT32_MAX}) {
      SCOPED_TRACE(test.name);
      swprobe::clear_plan();
      chip_answers(test.call, result, {{test.output, 41}});
      swprobe::forget();
      uint32_t value = 7;
      EXPECT_EQ(test.function(99, 1, 5, &value), result);
      EXPECT_EQ(value, 41u);
      const auto calls = swprobe::take();
      ASSERT_EQ(calls.size(), 1u);
      EXPECT_EQ(calls[0].name, test.call);
      EXPECT_EQ(calls[0].in("unit"), 1);
      EXPECT_EQ(calls[0].in("port"), 5);
    }
  }
}

TEST_F(PassThrough, GettersLeaveTheOutputAloneWhenTheSdkDoes) {
  for (const GetterCase &test : kGetters) {
    SCOPED_TRACE(test.name);
    uint32_t value = 7;
    EXPECT_EQ(test.function(0, VCHIP_UNITS, 5, &value), VCHIP_E_UNIT);
    EXPECT_EQ(test.function(0, 0, VCHIP_PORTS, &value), VCHIP_E_PORT);
    EXPECT_EQ(test.function(0, 0, -1, &value), VCHIP_E_PORT);
    EXPECT_EQ(value, 7u);
  }
}

TEST_F(PassThrough, FibreLinkStatusIsTheLinkWhateverTheMedium) {
  const vchip_partner_t partner = {1, USER_ABILITY_1000_FULL};
  ASSERT_EQ(vchip_medium_set(1, 24, USER_MEDIUM_FIBRE), 0);
  ASSERT_EQ(vchip_cable_plug(1, 24, &partner), 0);
  uint32_t status = 7;
  EXPECT_EQ(user_fiberport_link_status_get(0, 1, 24, &status), 0);
  EXPECT_EQ(status, 1u);
  EXPECT_EQ(user_fiberport_link_status_get(0, 0, 24, &status), 0);
  EXPECT_EQ(status, 0u);
  EXPECT_CALLS("rtk_port_link_get(unit=1, port=24, link=>1) = 0",
               "rtk_port_link_get(unit=0, port=24, link=>0) = 0");
}

TEST_F(PassThrough, LoopbackSetReachesTheChip) {
  EXPECT_EQ(user_port_loopback_set(0, 1, 5, 1), 0);
  EXPECT_CALLS("rtk_diag_portMacLocalLoopbackEnable_set(unit=1, port=5, enable=1) = 0");
  EXPECT_TRUE(vchip::port(1, 5).loopback);
  EXPECT_FALSE(vchip::port(0, 5).loopback);
  EXPECT_FALSE(vchip::port(1, 4).loopback);
  EXPECT_EQ(user_port_loopback_set(0, 1, 5, 0), 0);
  EXPECT_FALSE(vchip::port(1, 5).loopback);
}

TEST_F(PassThrough, LoopbackGetReadsTheChip) {
  user_port_loopback_set(0, 1, 5, 1);
  uint32_t enable = 7;
  EXPECT_EQ(user_port_loopback_get(0, 1, 5, &enable), 0);
  EXPECT_EQ(enable, 1u);
  EXPECT_EQ(user_port_loopback_get(0, 0, 5, &enable), 0);
  EXPECT_EQ(enable, 0u);
}

TEST_F(PassThrough, LoopbackSetPassesAnyValueAndAnyResult) {
  for (int64_t result : {0, 9, -1, -5, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers("rtk_diag_portMacLocalLoopbackEnable_set", result);
    swprobe::forget();
    EXPECT_EQ(user_port_loopback_set(0, 0xFFFFFFFF, -3, 0x80000001), result);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(static_cast<uint32_t>(calls[0].in("unit")), 0xFFFFFFFFu);
    EXPECT_EQ(calls[0].in("port"), -3);
    EXPECT_EQ(static_cast<uint32_t>(calls[0].in("enable")), 0x80000001u);
  }
}

TEST_F(PassThrough, PrintNothingOnFailure) {
  const auto all = [] {
    uint32_t value = 0;
    for (const GetterCase &test : kGetters) test.function(0, VCHIP_UNITS, 0, &value);
    user_port_loopback_set(0, VCHIP_UNITS, 0, 1);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
