// SPDX-License-Identifier: MIT
// Every test leaves the library's count of double-tag ports at 0.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "fail_each.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::Lines;

constexpr const char *kModeGet = "rtk_l2_vlanMode_get";

std::string port_call(const std::string &name, int32_t port, const std::string &rest) {
  return name + "(unit=1, port=" + std::to_string(port) + ", " + rest + ") = 0";
}
std::string ingress_keep(int32_t port, const std::string &tags) {
  return port_call("rtk_vlan_portIgrTagKeepEnable_set", port, tags);
}
std::string egress_keep(int32_t port, const std::string &tags) {
  return port_call("rtk_vlan_portEgrTagKeepEnable_set", port, tags);
}
std::string outer_tag(int32_t port, const std::string &status) {
  return port_call("rtk_vlan_portEgrOuterTagSts_set", port, "status=" + status);
}
std::string convert(int32_t interface, int32_t port) {
  return "adp_intf_2_phy_id(interface=" + std::to_string(interface) + ") = " + std::to_string(port);
}
int32_t port_of(int32_t interface) {
  return interface == 26 ? 26 : interface - 1;
}

Lines change_over() {
  Lines lines;
  for (int32_t interface = 1; interface <= 26; ++interface) {
    const int32_t port = port_of(interface);
    lines.push_back(convert(interface, port));
    lines.push_back(ingress_keep(port, "inner=1, outer=0"));
    lines.push_back(egress_keep(port, "inner=1, outer=1"));
    lines.push_back(outer_tag(port, "1"));
  }
  lines.push_back(convert(0, 28));
  lines.push_back(ingress_keep(28, "inner=1, outer=0"));
  lines.emplace_back("rtk_vlan_outerTpidEntry_set(unit=1, index=0, tpid=0x8100) = 0");
  return lines;
}

Lines change_back() {
  Lines lines;
  for (int32_t interface = 1; interface <= 26; ++interface) {
    const int32_t port = port_of(interface);
    lines.push_back(convert(interface, port));
    lines.push_back(outer_tag(port, "0"));
    lines.push_back(ingress_keep(port, "inner=0, outer=0"));
    lines.push_back(egress_keep(port, "inner=0, outer=0"));
  }
  lines.push_back(convert(0, 28));
  lines.push_back(ingress_keep(28, "inner=0, outer=0"));
  return lines;
}

Lines joined(Lines first, const Lines &second, const Lines &third = {}) {
  first.insert(first.end(), second.begin(), second.end());
  first.insert(first.end(), third.begin(), third.end());
  return first;
}

Lines look(int32_t port, const std::string &mode) {
  return {port_call(kModeGet, port, "mode=>" + mode)};
}
Lines enter(int32_t port) {
  return {port_call("rtk_l2_vlanMode_set", port, "mode=1"), ingress_keep(port, "inner=0, outer=1")};
}
Lines leave(int32_t port) {
  return {port_call("rtk_l2_vlanMode_set", port, "mode=0"), ingress_keep(port, "inner=1, outer=0")};
}

class DoubleTag : public swctl_test::LibraryTest {
 protected:
  // Puts a port into a mode without the library, as another process would.
  static void chip_mode(int32_t port, uint32_t mode) {
    ASSERT_EQ(rtk_l2_vlanMode_set(1, port, mode), 0);
    swprobe::forget();
  }
  static void on(int32_t port) {
    ASSERT_EQ(user_port_dtag_mode_set(0, 1, port, 1), 0);
    swprobe::forget();
  }
  static void off(int32_t port) {
    ASSERT_EQ(user_port_dtag_mode_set(0, 1, port, 0), 0);
    swprobe::forget();
  }
};

TEST_F(DoubleTag, TheFirstPortChangesTheSwitchOverAndTheLastOneBack) {
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 1), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(5, "0"), change_over(), enter(5)));
  EXPECT_EQ(vchip::tpids(1).outer.at(0), 0x8100u);
  EXPECT_EQ(vchip::tpids(0).outer.at(0), 0x88a8u);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(5, "1"), leave(5), change_back()));
  EXPECT_EQ(vchip::tpids(1).outer.at(0), 0x8100u) << "stays as it is";
}

TEST_F(DoubleTag, ASecondPortChangesOnlyItself) {
  on(5);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 6, 0x80000000), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(6, "0"), enter(6)));
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(5, "1"), leave(5)));
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 6, 0), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(6, "1"), leave(6), change_back()));
}

TEST_F(DoubleTag, WhatTheChipHoldsAfterwards) {
  on(5);
  const vchip::PortTagView own = vchip::tags(1, 5);
  EXPECT_TRUE(own.double_tag);
  EXPECT_EQ(own.ingress_keep, (vchip::TagKeepView{false, true}));
  EXPECT_EQ(own.egress_keep, (vchip::TagKeepView{true, true}));
  EXPECT_EQ(own.outer_tag_status, 1u);
  const vchip::PortTagView other = vchip::tags(1, 26);
  EXPECT_FALSE(other.double_tag);
  EXPECT_EQ(other.ingress_keep, (vchip::TagKeepView{true, false}));
  EXPECT_EQ(vchip::tags(1, 28).ingress_keep, (vchip::TagKeepView{true, false}));
  EXPECT_EQ(vchip::tags(1, 25).ingress_keep, (vchip::TagKeepView{false, false})) << "no interface";
  EXPECT_EQ(vchip::tags(0, 26).ingress_keep, (vchip::TagKeepView{false, false}));
  off(5);
  EXPECT_EQ(vchip::tags(1, 5).ingress_keep, (vchip::TagKeepView{false, false}));
  EXPECT_EQ(vchip::tags(1, 26).outer_tag_status, 0u);
}

TEST_F(DoubleTag, APortInTheWantedModeIsLeftAlone) {
  chip_mode(5, 1);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 9), 0);
  EXPECT_EQ(swprobe::take_lines(), look(5, "1"));
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 6, 0), 0);
  EXPECT_EQ(swprobe::take_lines(), look(6, "0"));
}

TEST_F(DoubleTag, AnotherModeIsNeither) {
  on(6);
  on(7);
  chip_answers(kModeGet, 0, {{"mode", 2}});
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 1), 0);
  EXPECT_EQ(swprobe::take().size(), 3u);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take().size(), 3u);
  swprobe::clear_plan();
  off(6);
  off(7);
}

TEST_F(DoubleTag, AFailedLookCountsAsOrdinaryIfNothingWasWritten) {
  chip_answers(kModeGet, -5);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take().size(), 1u);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 1), 0);
  EXPECT_GT(swprobe::take().size(), 3u);
  chip_answers(kModeGet, -5, {{"mode", 1}});
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take().size(), 3u + change_back().size()) << "what it wrote counts";
}

// A count of 1 or 0 shows in what the next change does.
TEST_F(DoubleTag, TheCountFallsBelowZero) {
  chip_mode(5, 1);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(5, "1"), leave(5))) << "nothing to change back";
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 6, 1), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(6, "0"), enter(6))) << "from -1 to 0";
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 7, 1), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(7, "0"), change_over(), enter(7)));
  off(7);
}

TEST_F(DoubleTag, EveryFailureOnTheWayInEndsItAndIsNotCounted) {
  size_t runs = 0;
  swctl_test::fail_each(
      [&] {
        vchip_reset();
        // The run without a failure counts one port: take it back.
        if (runs++ == 1) {
          rtk_l2_vlanMode_set(1, 5, 1);
          user_port_dtag_mode_set(0, 1, 5, 0);
          vchip_reset();
        }
      },
      [] { return user_port_dtag_mode_set(0, 1, 5, 1); },
      [](const swctl_test::FailedRun &run) {
        if (run.name == kModeGet) {
          EXPECT_EQ(run.result, 0) << "its result is not looked at";
          swprobe::clear_plan();
          user_port_dtag_mode_set(0, 1, 5, 0);
          return;
        }
        swctl_test::expect_end(run);
        EXPECT_EQ(run.usual, 1u + 78u + 2u + 2u);
      });
  EXPECT_EQ(runs, 84u);
  // Nothing is counted: the next port is the first.
  ASSERT_EQ(vchip_reset(), 0);
  swprobe::forget();
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 1), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(5, "0"), change_over(), enter(5)));
  off(5);
}

TEST_F(DoubleTag, EveryFailureOnTheWayOutEndsItAndIsNotCounted) {
  bool counted = false;
  swctl_test::fail_each(
      [&] {
        if (!counted) {
          ASSERT_EQ(vchip_reset(), 0);
          ASSERT_EQ(user_port_dtag_mode_set(0, 1, 5, 1), 0);
          counted = true;
        }
        ASSERT_EQ(rtk_l2_vlanMode_set(1, 5, 1), 0);
      },
      [&] {
        const int32_t result = user_port_dtag_mode_set(0, 1, 5, 0);
        if (result >= 0 && vchip::tags(1, 5).double_tag == false) counted = false;
        return result;
      },
      [](const swctl_test::FailedRun &run) {
        if (run.name == kModeGet) {
          EXPECT_EQ(run.result, 0);
          EXPECT_EQ(run.made, 1u) << "taken for an ordinary port";
          return;
        }
        swctl_test::expect_end(run);
        EXPECT_EQ(run.usual, 1u + 2u + 78u + 1u);
      });
  ASSERT_TRUE(counted) << "after every failure there is still one port";
  ASSERT_EQ(rtk_l2_vlanMode_set(1, 5, 1), 0);
  swprobe::forget();
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 0);
  EXPECT_EQ(swprobe::take_lines(), joined(look(5, "1"), leave(5), change_back()));
}

TEST_F(DoubleTag, TheResultIsThatOfTheLastCall) {
  chip_answers("rtk_vlan_portIgrTagKeepEnable_set", 4);
  chip_answers("rtk_l2_vlanMode_set", 5);
  chip_answers("rtk_vlan_outerTpidEntry_set", 6);
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 1), 4);
  chip_answers(kModeGet, 0, {{"mode", 0}});
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 6, 1), 4);
  chip_answers(kModeGet, 0, {{"mode", 1}});
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 5, 0), 4);
  swprobe::answer("rtk_vlan_portIgrTagKeepEnable_set", 28, {7, {}});
  EXPECT_EQ(user_port_dtag_mode_set(0, 1, 6, 0), 7) << "the CPU port's, the last of all";
}

TEST_F(DoubleTag, GetSaysOneOnlyForOne) {
  const std::pair<uint32_t, uint32_t> cases[] = {{0, 0}, {1, 1}, {2, 0}, {0x80000001, 0}};
  for (const auto &[sdk, generic] : cases) {
    for (int64_t result : {0, 5}) {
      swprobe::clear_plan();
      chip_answers(kModeGet, result, {{"mode", sdk}});
      uint32_t mode = 7;
      EXPECT_EQ(user_port_dtag_mode_get(0, 1, 5, &mode), result);
      EXPECT_EQ(mode, generic) << sdk;
    }
  }
}

TEST_F(DoubleTag, GetReadsTheCallersUnit) {
  chip_mode(5, 1);
  uint32_t mode = 7;
  EXPECT_EQ(user_port_dtag_mode_get(0, 1, 5, &mode), 0);
  EXPECT_EQ(mode, 1u);
  EXPECT_EQ(user_port_dtag_mode_get(0, 0, 5, &mode), 0);
  EXPECT_EQ(mode, 0u);
  EXPECT_CALLS("rtk_l2_vlanMode_get(unit=1, port=5, mode=>1) = 0",
               "rtk_l2_vlanMode_get(unit=0, port=5, mode=>0) = 0");
}

TEST_F(DoubleTag, GetWritesZeroOnFailure) {
  chip_answers(kModeGet, -5, {{"mode", 1}});
  uint32_t mode = 7;
  EXPECT_EQ(user_port_dtag_mode_get(0, 1, 5, &mode), -5);
  EXPECT_EQ(mode, 0u);
}

TEST_F(DoubleTag, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    uint32_t mode = 7;
    EXPECT_EQ(user_port_dtag_mode_set(lead, 1, 5, 1), 0);
    EXPECT_EQ(user_port_dtag_mode_get(lead, 1, 5, &mode), 0);
    EXPECT_EQ(mode, 1u);
    EXPECT_EQ(user_port_dtag_mode_set(lead, 1, 5, 0), 0);
  }
}

}  // namespace
