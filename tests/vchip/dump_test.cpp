// SPDX-License-Identifier: MIT
// The JSON picture says what the views say.
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include "os/json.h"
#include "private_chip.h"

namespace {

using DumpTest = vchip_test::PrivateChip;
using json = os::Json;

json dumped() {
  return os::parse_json(vchip::dump_json(-1));
}

TEST_F(DumpTest, TheWholeDocument) {
  const json document = dumped();
  EXPECT_TRUE(document["image"].is_null());
  EXPECT_EQ(document["interrupted_writes"], 0);
  EXPECT_EQ(document["platform"], os::parse_json(R"({"log_lines":0,"trace_on":false,"trace":[]})"));
  ASSERT_EQ(document["units"].size(), 2u);
  for (size_t unit = 0; unit < 2; ++unit) {
    EXPECT_EQ(document["units"][unit]["unit"], unit);
    EXPECT_EQ(document["units"][unit]["port"].size(), 29u);
    EXPECT_EQ(document["units"][unit]["switch_wide"],
              os::parse_json(R"({"tag_counts_in_length":true,"max_length":[1518,1518],
                  "cpu_format":[0,0,0,0,0,0,0,0]})"));
    json rate = document["units"][unit]["rate"];
    EXPECT_EQ(rate["ports"].size(), 29u);
    rate.erase("ports");
    EXPECT_EQ(rate, os::parse_json(
                        R"({"storm_mode":1,"storm_counts":"packets","storm_burst":[0,0,0,0,0]})"));
  }
}

TEST_F(DumpTest, APortAfterPowerOn) {
  EXPECT_EQ(dumped()["units"][1]["port"][26], os::parse_json(R"({
    "port": 26, "interface": 26, "admin": true, "link": {"up": false}, "loopback": false,
    "autonegotiation": true,
    "advertised": {"word": 4127195136,
                   "modes": ["10-half", "10-full", "100-half", "100-full", "1000-full", "pause"]},
    "forced": {"speed": 2, "duplex": 1, "flow_control": 0},
    "pause": {"transmit": false, "receive": false}, "back_pressure": false,
    "crossover": "auto", "eee": false,
    "combo": true, "medium": "copper", "partner": null})"));
}

TEST_F(DumpTest, APortWithEverythingChanged) {
  const uint32_t every = VCHIP_ABILITY_ALL;
  const vchip_partner_t partner = {0, VCHIP_ABILITY_10_HALF};
  ASSERT_EQ(rtk_port_phyAutoNegoAbility_set(0, 24, &every), 0);
  ASSERT_EQ(rtk_port_phyAutoNegoEnable_set(0, 24, 0), 0);
  ASSERT_EQ(rtk_port_phyForceModeAbility_set(0, 24, 1, 0, 1), 0);
  ASSERT_EQ(rtk_port_adminEnable_set(0, 24, 0), 0);
  ASSERT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, 24, 1), 0);
  ASSERT_EQ(rtk_port_backpressureEnable_set(0, 24, 1), 0);
  ASSERT_EQ(rtk_port_phyCrossOverMode_set(0, 24, 2), 0);
  ASSERT_EQ(rtk_eee_portEnable_set(0, 24, 1), 0);
  ASSERT_EQ(vchip_cable_plug(0, 24, &partner), 0);
  ASSERT_EQ(vchip_medium_set(0, 24, 1), 0);
  EXPECT_EQ(dumped()["units"][0]["port"][24], os::parse_json(R"({
    "port": 24, "interface": 25, "admin": false, "link": {"up": true, "speed": 2, "duplex": 1},
    "loopback": true, "autonegotiation": false,
    "advertised": {"word": 4278190080,
                   "modes": ["10-half", "10-full", "100-half", "100-full", "1000-half",
                             "1000-full", "pause", "asymmetric-pause"]},
    "forced": {"speed": 1, "duplex": 0, "flow_control": 1},
    "pause": {"transmit": true, "receive": true}, "back_pressure": true,
    "crossover": "crossed", "eee": true,
    "combo": true, "medium": "fibre",
    "partner": {"autonegotiation": false, "ability": {"word": 2147483648, "modes": ["10-half"]}}
    })"));
}

TEST_F(DumpTest, PortsWithoutInterfaceAndTheCpuPort) {
  const json ports = dumped()["units"][0]["port"];
  EXPECT_TRUE(ports[25]["interface"].is_null());
  EXPECT_TRUE(ports[27]["interface"].is_null());
  EXPECT_EQ(ports[28], os::parse_json(R"({"port": 28, "interface": 0, "admin": true,
    "link": {"up": true, "speed": 2, "duplex": 1}, "loopback": false})"));
}

TEST_F(DumpTest, RatesAndTrace) {
  ASSERT_EQ(rtk_rate_stormControlRateMode_set(1, 0), 0);
  ASSERT_EQ(rtk_rate_stormControlBurstSize_set(1, 3, 65535), 0);
  ASSERT_EQ(vchip_trace_set(1), 0);
  sys_trace_add_log("here():1", "what \"it\" was\n");
  json document = dumped();
  document["units"][1]["rate"].erase("ports");
  EXPECT_EQ(
      document["units"][1]["rate"],
      os::parse_json(R"({"storm_mode":0,"storm_counts":"bytes","storm_burst":[0,0,0,65535,0]})"));
  EXPECT_EQ(document["platform"]["trace_on"], true);
  EXPECT_EQ(document["platform"]["trace"],
            os::parse_json(R"([{"location":"here():1","message":"what \"it\" was\n"}])"));
}

TEST_F(DumpTest, TextThatIsNotUtf8IsStillJson) {
  sys_trace_add_log("f():1",
                    "a\xff\xfe"
                    "b");
  EXPECT_EQ(dumped()["platform"]["trace"][0]["message"],
            "a\xef\xbf\xbd\xef\xbf\xbd"
            "b");
}

TEST_F(DumpTest, IndentIsTheCallersChoice) {
  EXPECT_EQ(vchip::dump_json(-1).find('\n'), std::string::npos);
  EXPECT_NE(vchip::dump_json(3).find("\n   \"image\": null"), std::string::npos);
}

}  // namespace
