// SPDX-License-Identifier: MIT
// What every SDK call answers to bad arguments, and that it then writes nothing.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <climits>
#include <set>
#include <string>
#include <vector>

#include "subjects.h"

namespace {

using vchip_test::Outputs;
using vchip_test::Subject;
using vchip_test::Subjects;

// Every family's list, one after the other.
const Subjects &subjects() {
  static const Subjects all = [] {
    Subjects joined;
    for (const Subjects *family :
         {&vchip_test::acl_subjects(), &vchip_test::frame_subjects(), &vchip_test::l2_subjects(),
          &vchip_test::mcast_ip_subjects(), &vchip_test::mirror_trunk_subjects(),
          &vchip_test::port_more_subjects(), &vchip_test::port_rate_subjects(),
          &vchip_test::port_subjects(), &vchip_test::port_tag_subjects(),
          &vchip_test::qos_subjects(), &vchip_test::stp_subjects(), &vchip_test::vlan_subjects()})
      joined.insert(joined.end(), family->begin(), family->end());
    return joined;
  }();
  return all;
}

// All links up, so that no call is refused for a link that is down.
class Arguments : public vchip_test::PrivateChip {
 protected:
  void SetUp() override {
    PrivateChip::SetUp();
    for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit)
      for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
        ASSERT_EQ(vchip_cable_plug(unit, port, &vchip_test::kUsualPartner), 0);
  }
};

// Everything that the refusals are about to leave alone.
std::string settings() {
  return vchip::dump_json(-1);
}

TEST_F(Arguments, EveryListedCallIsJudgedHere) {
  std::set<std::string> listed;
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) listed.insert(#name);
#include <swctl/platform/calls/sdk.def>
#include <swctl/platform/calls_end.h>
  std::set<std::string> judged;
  for (const Subject &subject : subjects()) judged.insert(subject.name);
  EXPECT_EQ(judged, listed);
}

TEST_F(Arguments, UnitsThatDoNotExist) {
  const std::string before = settings();
  for (const Subject &subject : subjects()) {
    for (const uint32_t unit : {2u, 3u, 0x80000000u, UINT32_MAX}) {
      Outputs outputs;
      EXPECT_EQ(subject.invoke(unit, 3, outputs), VCHIP_E_UNIT) << subject.name << " " << unit;
      EXPECT_TRUE(outputs.untouched()) << subject.name;
    }
  }
  EXPECT_EQ(settings(), before);
}

TEST_F(Arguments, PortsThatDoNotExist) {
  const std::string before = settings();
  for (const Subject &subject : subjects()) {
    if (!subject.has_port) continue;
    for (const int32_t port : {-1, 29, 31, 32, INT_MIN, INT_MAX}) {
      Outputs outputs;
      EXPECT_EQ(subject.invoke(0, port, outputs), VCHIP_E_PORT) << subject.name << " " << port;
      EXPECT_TRUE(outputs.untouched()) << subject.name;
    }
  }
  EXPECT_EQ(settings(), before);
}

TEST_F(Arguments, EveryPortThatExistsOnBothUnits) {
  for (const Subject &subject : subjects()) {
    for (uint32_t unit = 0; unit < VCHIP_UNITS; ++unit) {
      for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
        ASSERT_EQ(vchip_reset(), 0);
        if (port != VCHIP_CPU_PORT) {
          ASSERT_EQ(vchip_cable_plug(unit, port, &vchip_test::kUsualPartner), 0);
        }
        Outputs outputs;
        const int32_t expected = port == VCHIP_CPU_PORT ? subject.on_cpu_port : 0;
        EXPECT_EQ(subject.invoke(unit, port, outputs), expected) << subject.name << " " << port;
        EXPECT_TRUE(expected == 0 || outputs.untouched()) << subject.name;
      }
    }
  }
}

TEST_F(Arguments, NullAddresses) {
  const std::string before = settings();
  for (const Subject &subject : subjects()) {
    for (int null = 0; null < subject.pointers; ++null) {
      Outputs outputs;
      outputs.null = null;
      EXPECT_EQ(subject.invoke(0, 3, outputs), VCHIP_E_NULL) << subject.name << " " << null;
      EXPECT_TRUE(outputs.untouched()) << subject.name;
    }
  }
  EXPECT_EQ(settings(), before);
}

TEST_F(Arguments, FlagsAreZeroOrOne) {
  const std::string before = settings();
  for (const uint32_t value : {2u, 255u, 256u, UINT32_MAX}) {
    EXPECT_EQ(rtk_port_adminEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_port_phyAutoNegoEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_diag_portMacLocalLoopbackEnable_set(0, 3, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_port_phyForceModeAbility_set(0, 3, 1, value, 0), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_port_phyForceModeAbility_set(0, 3, 1, 0, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_switch_maxPktLenTagLenCntIncEnable_set(0, value), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_rate_stormControlRateMode_set(0, value), VCHIP_E_VALUE);
  }
  EXPECT_EQ(settings(), before);
}

TEST_F(Arguments, CodesAndSizesHaveAnEnd) {
  const std::string before = settings();
  EXPECT_EQ(rtk_port_phyForceModeAbility_set(0, 3, 5, 1, 0), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_port_phyForceModeAbility_set(0, 3, UINT32_MAX, 1, 0), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_rate_stormControlBurstSize_set(0, 5, 100), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_rate_stormControlBurstSize_set(0, UINT32_MAX, 100), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_rate_stormControlBurstSize_set(0, 4, 65536), VCHIP_E_VALUE);
  EXPECT_EQ(settings(), before);
  EXPECT_EQ(rtk_port_phyForceModeAbility_set(0, 3, 4, 1, 0), 0);
  EXPECT_EQ(rtk_rate_stormControlBurstSize_set(0, 4, 65535), 0);
}

TEST_F(Arguments, ReservedAbilityBitsAreRefused) {
  const std::string before = settings();
  for (int bit = 0; bit < 24; ++bit) {
    const uint32_t word = VCHIP_ABILITY_100_FULL | 1u << bit;
    EXPECT_EQ(rtk_port_phyAutoNegoAbility_set(0, 3, &word), VCHIP_E_VALUE) << bit;
  }
  EXPECT_EQ(settings(), before);
  for (int bit = 24; bit < 32; ++bit) {
    const uint32_t word = 1u << bit;
    EXPECT_EQ(rtk_port_phyAutoNegoAbility_set(0, 3, &word), 0) << bit;
    EXPECT_EQ(vchip::port(0, 3).advertised, word);
  }
}

TEST_F(Arguments, TheFirstFaultIsAnswered) {
  EXPECT_EQ(rtk_port_link_get(2, -1, nullptr), VCHIP_E_UNIT);
  EXPECT_EQ(rtk_port_link_get(0, -1, nullptr), VCHIP_E_PORT);
  EXPECT_EQ(rtk_port_phyAutoNegoEnable_set(0, VCHIP_CPU_PORT, 2), VCHIP_E_CPU_PORT);
  ASSERT_EQ(vchip_cable_pull(0, 3), 0);
  EXPECT_EQ(rtk_port_speedDuplex_get(0, 3, nullptr, nullptr), VCHIP_E_NULL);
}

TEST_F(Arguments, TheWorldIsCheckedToo) {
  const std::string before = settings();
  const vchip_partner_t good = vchip_test::kUsualPartner;
  EXPECT_EQ(vchip_cable_plug(2, 3, &good), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_cable_plug(0, 29, &good), VCHIP_E_PORT);
  EXPECT_EQ(vchip_cable_plug(0, VCHIP_CPU_PORT, &good), VCHIP_E_CPU_PORT);
  EXPECT_EQ(vchip_cable_plug(0, 3, nullptr), VCHIP_E_NULL);
  EXPECT_EQ(vchip_cable_pull(2, 3), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_cable_pull(0, -1), VCHIP_E_PORT);
  EXPECT_EQ(vchip_cable_pull(0, VCHIP_CPU_PORT), VCHIP_E_CPU_PORT);
  EXPECT_EQ(vchip_medium_set(2, 24, 1), VCHIP_E_UNIT);
  EXPECT_EQ(vchip_medium_set(0, 29, 1), VCHIP_E_PORT);
  EXPECT_EQ(vchip_medium_set(0, VCHIP_CPU_PORT, 0), VCHIP_E_CPU_PORT);
  EXPECT_EQ(vchip_medium_set(0, 24, 2), VCHIP_E_VALUE);
  EXPECT_EQ(vchip_medium_set(0, 25, 1), VCHIP_E_VALUE);
  EXPECT_EQ(settings(), before);
}

TEST_F(Arguments, PartnersThatCannotBe) {
  const std::string before = settings();
  for (const vchip_partner_t &partner : std::vector<vchip_partner_t>{
           {1, 0},
           {1, VCHIP_ABILITY_PAUSE},
           {0, VCHIP_ABILITY_PAUSE},
           {0, VCHIP_ABILITY_10_HALF | VCHIP_ABILITY_10_FULL},
           {1, VCHIP_ABILITY_10_FULL | 1},
           {0, VCHIP_ABILITY_10_FULL | 0x00800000},
       }) {
    EXPECT_EQ(vchip_cable_plug(0, 3, &partner), VCHIP_E_VALUE) << std::hex << partner.ability;
  }
  EXPECT_EQ(settings(), before);
  const vchip_partner_t forced = {0, VCHIP_ABILITY_10_FULL | VCHIP_ABILITY_PAUSE};
  EXPECT_EQ(vchip_cable_plug(0, 3, &forced), 0);
}

TEST_F(Arguments, ViewsOfWhatIsNotThereThrow) {
  EXPECT_THROW(vchip::port(2, 0), std::out_of_range);
  EXPECT_THROW(vchip::port(0, -1), std::out_of_range);
  EXPECT_THROW(vchip::port(0, 29), std::out_of_range);
  EXPECT_THROW(vchip::switch_wide(2), std::out_of_range);
  EXPECT_THROW(vchip::rates(2), std::out_of_range);
  // A view that throws lets go of the chip.
  EXPECT_EQ(vchip_reset(), 0);
}

}  // namespace
