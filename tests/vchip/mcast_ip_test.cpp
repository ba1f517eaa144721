// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using vchip::McastIpView;

class McastIp : public vchip_test::PrivateChip {};

constexpr uint32_t kGroup = 0xE8010203;
constexpr uint32_t kSource = 0xC0000201;

chip_ip_mcast_entry entry(uint32_t group, uint32_t ports = 3) {
  return {10, 0, group, kSource, ports, {}};
}

chip_ip6_mcast_entry entry6(uint8_t last, uint32_t ports = 3) {
  chip_ip6_mcast_entry made = {10, {{0xff, 0x3e}}, {{0x20, 1}}, 0, ports, {}};
  made.address_b.bytes[15] = last;
  return made;
}

TEST_F(McastIp, StartsEmpty) {
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_THAT(vchip::ip_mcast_entries(unit), IsEmpty());
    EXPECT_THAT(vchip::ip6_mcast_entries(unit), IsEmpty());
    EXPECT_EQ(vchip::mcast_modes(unit), (vchip::McastModeView{0, 0, {29, {0, 0, 0, 0, 0, 0}}}));
  }
}

TEST_F(McastIp, AddsSetsAndDeletes) {
  const chip_ip_mcast_entry first = entry(kGroup);
  const chip_ip_mcast_entry other = entry(kGroup, 0x80);
  EXPECT_EQ(rtk_l2_ipMcastAddr_set(1, &first), VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ipMcastAddr_add(1, &first), 0);
  EXPECT_EQ(rtk_l2_ipMcastAddr_add(1, &other), VCHIP_E_IP_MCAST_EXISTS);
  EXPECT_THAT(vchip::ip_mcast_entries(1),
              ElementsAre(McastIpView{10, "192.0.2.1", "232.1.2.3", 3}));
  EXPECT_THAT(vchip::ip_mcast_entries(0), IsEmpty());
  EXPECT_EQ(rtk_l2_ipMcastAddr_set(1, &other), 0);
  EXPECT_THAT(vchip::ip_mcast_entries(1),
              ElementsAre(McastIpView{10, "192.0.2.1", "232.1.2.3", 0x80}));
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(1, kSource, kGroup, 11), VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(1, kSource + 1, kGroup, 10), VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(1, kSource, kGroup + 1, 10), VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(1, kSource, kGroup, 10), 0);
  EXPECT_THAT(vchip::ip_mcast_entries(1), IsEmpty());
}

TEST_F(McastIp, HasAnEnd) {
  for (uint32_t index = 0; index < 256; ++index) {
    const chip_ip_mcast_entry each = entry(kGroup + index);
    ASSERT_EQ(rtk_l2_ipMcastAddr_add(0, &each), 0);
  }
  const chip_ip_mcast_entry more = entry(kGroup + 256);
  EXPECT_EQ(rtk_l2_ipMcastAddr_add(0, &more), VCHIP_E_IP_MCAST_FULL);
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(0, kSource, kGroup + 7, 10), 0);
  EXPECT_EQ(rtk_l2_ipMcastAddr_add(0, &more), 0);
  EXPECT_THAT(vchip::ip_mcast_entries(0), SizeIs(256));
  for (uint32_t index = 0; index < 128; ++index) {
    const chip_ip6_mcast_entry each = entry6(static_cast<uint8_t>(index));
    ASSERT_EQ(rtk_l2_ip6McastAddr_add(0, &each), 0);
  }
  const chip_ip6_mcast_entry more6 = entry6(200);
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(0, &more6), VCHIP_E_IP_MCAST_FULL);
}

TEST_F(McastIp, Ip6AddsAndDeletes) {
  const chip_ip6_mcast_entry first = entry6(1);
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(1, &first), 0);
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(1, &first), VCHIP_E_IP_MCAST_EXISTS);
  EXPECT_THAT(vchip::ip6_mcast_entries(1), ElementsAre(McastIpView{10, "2001::", "ff3e::1", 3}));
  EXPECT_THAT(vchip::ip6_mcast_entries(0), IsEmpty());
  const chip_ip6_mcast_entry other = entry6(2);
  EXPECT_EQ(rtk_l2_ip6McastAddr_del(1, first.address_a, other.address_b, 10),
            VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ip6McastAddr_del(1, first.address_a, first.address_b, 11),
            VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ip6McastAddr_del(1, {{0x20, 2}}, first.address_b, 10), VCHIP_E_IP_MCAST_ENTRY);
  EXPECT_EQ(rtk_l2_ip6McastAddr_del(1, first.address_a, first.address_b, 10), 0);
  EXPECT_THAT(vchip::ip6_mcast_entries(1), IsEmpty());
}

TEST_F(McastIp, TakesOnlyGroupsFromSources) {
  const std::string before = vchip::dump_json(-1);
  for (const chip_ip_mcast_entry &bad : std::vector<chip_ip_mcast_entry>{
           {10, 0, 0xDFFFFFFF, kSource, 3, {}},
           {10, 0, 0xF0000000, kSource, 3, {}},
           {10, 0, kGroup, 0xE0000001, 3, {}},
           {0, 0, kGroup, kSource, 3, {}},
           {4095, 0, kGroup, kSource, 3, {}},
           {10, 1, kGroup, kSource, 3, {}},
           {10, 0, kGroup, kSource, 3, {1, 0, 0}},
           {10, 0, kGroup, kSource, 3, {0, 1, 0}},
           {10, 0, kGroup, kSource, 3, {0, 0, 1}},
       }) {
    EXPECT_EQ(rtk_l2_ipMcastAddr_add(0, &bad), VCHIP_E_VALUE);
    EXPECT_EQ(rtk_l2_ipMcastAddr_set(0, &bad), VCHIP_E_VALUE);
  }
  const chip_ip_mcast_entry beyond = entry(kGroup, 1u << 29);
  EXPECT_EQ(rtk_l2_ipMcastAddr_add(0, &beyond), VCHIP_E_PORT);
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(0, kGroup, kSource, 10), VCHIP_E_VALUE) << "swapped";
  EXPECT_EQ(rtk_l2_ipMcastAddr_del(0, kSource, kGroup, 0x1000A), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(McastIp, Ip6TakesOnlyGroupsFromSources) {
  const std::string before = vchip::dump_json(-1);
  chip_ip6_mcast_entry bad = entry6(1);
  bad.address_b.bytes[0] = 0xfe;
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(0, &bad), VCHIP_E_VALUE);
  bad = entry6(1);
  bad.address_a.bytes[0] = 0xff;
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(0, &bad), VCHIP_E_VALUE);
  bad = entry6(1);
  bad.zero = 1;
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(0, &bad), VCHIP_E_VALUE);
  bad = entry6(1, 1u << 31);
  EXPECT_EQ(rtk_l2_ip6McastAddr_add(0, &bad), VCHIP_E_PORT);
  bad = entry6(1);
  EXPECT_EQ(rtk_l2_ip6McastAddr_del(0, bad.address_b, bad.address_a, 10), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_ip6McastAddr_del(0, bad.address_a, bad.address_b, 0x1000A), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(McastIp, KeepsModesAndMissActions) {
  EXPECT_EQ(rtk_l2_ipmcMode_set(1, 1), 0);
  EXPECT_EQ(rtk_l2_portLookupMissAction_set(1, 28, 5, 3), 0);
  EXPECT_EQ(rtk_l2_portLookupMissAction_set(1, 0, 1, 2), 0);
  vchip::McastModeView expected = {1, 0, {29, {0, 0, 0, 0, 0, 0}}};
  expected.miss_actions[28][5] = 3;
  expected.miss_actions[0][1] = 2;
  EXPECT_EQ(vchip::mcast_modes(1), expected);
  EXPECT_EQ(rtk_l2_ip6mcMode_set(0, 1), 0);
  EXPECT_EQ(vchip::mcast_modes(0).ip6_mode, 1u);
  EXPECT_EQ(vchip::mcast_modes(0).ip_mode, 0u);
  EXPECT_EQ(rtk_l2_ipmcMode_set(0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_ip6mcMode_set(0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_l2_portLookupMissAction_set(0, 0, 6, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_l2_portLookupMissAction_set(0, 0, 0, 4), VCHIP_E_VALUE);
}

TEST_F(McastIp, IsResetAndDumped) {
  const chip_ip_mcast_entry four = entry(kGroup);
  const chip_ip6_mcast_entry six = entry6(1);
  ASSERT_EQ(rtk_l2_ipMcastAddr_add(0, &four), 0);
  ASSERT_EQ(rtk_l2_ip6McastAddr_add(0, &six), 0);
  EXPECT_THAT(vchip::dump_json(-1),
              HasSubstr(R"("mcast_ip":{"ip":[{"vid":10,"source":"192.0.2.1",)"
                        R"("group":"232.1.2.3","ports":[0,1]}],"ip6":[{"vid":10,)"
                        R"("source":"2001::","group":"ff3e::1","ports":[0,1]}],"ip_mode":0,)"
                        R"("ip6_mode":0,"ports":[{"port":0,"miss_action":[0,0,0,0,0,0]},)"));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_THAT(vchip::ip_mcast_entries(0), IsEmpty());
  EXPECT_THAT(vchip::ip6_mcast_entries(0), IsEmpty());
  EXPECT_THROW(vchip::ip_mcast_entries(2), std::out_of_range);
  EXPECT_THROW(vchip::mcast_modes(2), std::out_of_range);
}

TEST_F(McastIp, HasSentencesForItsResults) {
  EXPECT_STREQ(vchip_result_text(VCHIP_E_IP_MCAST_ENTRY), "there is no such IP multicast entry");
  EXPECT_STREQ(vchip_result_text(VCHIP_E_IP_MCAST_FULL), "the IP multicast table is full");
  EXPECT_STREQ(vchip_result_text(VCHIP_E_IP_MCAST_EXISTS), "the IP multicast entry exists already");
  EXPECT_STREQ(vchip_result_text(VCHIP_E_INSTANCE), "there is no such spanning-tree instance");
  EXPECT_STREQ(vchip_result_text(VCHIP_E_INSTANCE_EXISTS),
               "the spanning-tree instance exists already");
}

}  // namespace
