// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "fail_each.h"

namespace {

using Tpid = swctl_test::LibraryTest;
using swctl_test::chip_answers;

TEST_F(Tpid, SetWritesBothTablesAndPointsThePortThere) {
  EXPECT_EQ(user_port_tpid_set(0, 1, 5, 0x129100, 3), 0);
  EXPECT_CALLS("rtk_vlan_innerTpidEntry_set(unit=1, index=3, tpid=0x9100) = 0",
               "rtk_vlan_portIgrInnerTpid_set(unit=1, port=5, mask=0x8) = 0",
               "rtk_vlan_portEgrInnerTpid_set(unit=1, port=5, index=3) = 0",
               "rtk_vlan_outerTpidEntry_set(unit=1, index=3, tpid=0x9100) = 0",
               "rtk_vlan_portEgrOuterTpid_set(unit=1, port=5, index=3) = 0");
  EXPECT_EQ(vchip::tpids(1).inner.at(3), 0x9100u);
  EXPECT_EQ(vchip::tpids(1).outer.at(3), 0x9100u);
  const vchip::PortTagView tags = vchip::tags(1, 5);
  EXPECT_EQ(tags.ingress_inner_tpids, 8u);
  EXPECT_EQ(tags.egress_inner_tpid, 3u);
  EXPECT_EQ(tags.egress_outer_tpid, 3u);
  EXPECT_EQ(vchip::tpids(0).inner.at(3), 0x8100u);
}

TEST_F(Tpid, TheMaskTakesTheIndexModuloThirtyTwo) {
  for (const char *call : {"rtk_vlan_innerTpidEntry_set", "rtk_vlan_portIgrInnerTpid_set",
                           "rtk_vlan_portEgrInnerTpid_set", "rtk_vlan_outerTpidEntry_set",
                           "rtk_vlan_portEgrOuterTpid_set"})
    chip_answers(call, 2);
  for (uint32_t index : {0u, 1u, 31u, 32u, 35u, 0xFFFFFFFFu}) {
    swprobe::forget();
    EXPECT_EQ(user_port_tpid_set(0, 1, 5, 0x8100, index), 2);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 5u);
    EXPECT_EQ(static_cast<uint32_t>(calls[1].in("mask")), uint32_t{1} << (index % 32));
    for (size_t place : {0u, 2u, 3u, 4u})
      EXPECT_EQ(static_cast<uint32_t>(calls[place].in("index")), index);
  }
}

TEST_F(Tpid, SetEndsAtTheFirstFailure) {
  swctl_test::fail_each([] {}, [] { return user_port_tpid_set(0, 1, 5, 0x8100, 3); },
                        swctl_test::expect_end);
}

TEST_F(Tpid, SetReturnsTheLastResult) {
  chip_answers("rtk_vlan_innerTpidEntry_set", 3);
  EXPECT_EQ(user_port_tpid_set(0, 1, 5, 0x8100, 3), 0);
  chip_answers("rtk_vlan_portEgrOuterTpid_set", 4);
  EXPECT_EQ(user_port_tpid_set(0, 1, 5, 0x8100, 3), 4);
}

TEST_F(Tpid, GetReadsOnlyTheEgressInnerOne) {
  ASSERT_EQ(rtk_vlan_innerTpidEntry_set(1, 2, 0x9200), 0);
  ASSERT_EQ(rtk_vlan_outerTpidEntry_set(1, 2, 0x9300), 0);
  ASSERT_EQ(rtk_vlan_portEgrInnerTpid_set(1, 5, 2), 0);
  swprobe::forget();
  uint16_t tpid[3] = {7, 7, 7};
  EXPECT_EQ(user_port_tpid_get(0, 1, 5, &tpid[1]), 0);
  EXPECT_EQ(tpid[0], 7);
  EXPECT_EQ(tpid[1], 0x9200);
  EXPECT_EQ(tpid[2], 7);
  EXPECT_CALLS("rtk_vlan_portEgrInnerTpid_get(unit=1, port=5, index=>2) = 0",
               "rtk_vlan_innerTpidEntry_get(unit=1, index=2, tpid=>0x9200) = 0");
}

TEST_F(Tpid, GetEndsAtTheFirstFailureAndWritesNothing) {
  uint16_t tpid = 7;
  swctl_test::fail_each([&] { tpid = 7; }, [&] { return user_port_tpid_get(0, 1, 5, &tpid); },
                        [&](const swctl_test::FailedRun &run) {
                          swctl_test::expect_end(run);
                          EXPECT_EQ(tpid, 7);
                        });
}

TEST_F(Tpid, GetStoresTheLowestSixteenBits) {
  chip_answers("rtk_vlan_portEgrInnerTpid_get", 3, {{"index", 1}});
  chip_answers("rtk_vlan_innerTpidEntry_get", 4, {{"tpid", 0x12345678}});
  uint16_t tpid = 7;
  EXPECT_EQ(user_port_tpid_get(0, 1, 5, &tpid), 4);
  EXPECT_EQ(tpid, 0x5678);
}

TEST_F(Tpid, EntrySetWritesTheOuterTable) {
  EXPECT_EQ(user_tpid_entry_set(0, 1, 2, 0xABCD88a8), 0);
  EXPECT_CALLS("rtk_vlan_outerTpidEntry_set(unit=1, index=2, tpid=0x88a8) = 0");
  for (int64_t result : {-5, 5}) {
    chip_answers("rtk_vlan_outerTpidEntry_set", result);
    EXPECT_EQ(user_tpid_entry_set(99, 1, 0xFFFFFFFF, 0x8100), result);
    EXPECT_EQ(static_cast<uint32_t>(swprobe::take().back().in("index")), 0xFFFFFFFFu);
  }
}

TEST_F(Tpid, LeadingArgumentIsIgnored) {
  for (uint32_t lead : {1u, 0xFFFFFFFFu}) {
    uint16_t tpid = 7;
    EXPECT_EQ(user_port_tpid_set(lead, 1, 5, 0x9100, 1), 0);
    EXPECT_EQ(user_port_tpid_get(lead, 1, 5, &tpid), 0);
    EXPECT_EQ(tpid, 0x9100);
  }
}

}  // namespace
