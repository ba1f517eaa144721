// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <stdexcept>

#include "os/json.h"
#include "private_chip.h"

namespace {

using json = os::Json;
using testing::ElementsAre;
using vchip::AclCountView;
using vchip::MeterView;

class Meters : public vchip_test::PrivateChip {
 protected:
  static int32_t set(uint32_t meter, const chip_acl_meter &entry) {
    return rtk_acl_meterEntry_set(1, meter, &entry);
  }
  static json dumped(const char *block) {
    return os::parse_json(vchip::dump_json(-1, {1, block}))["units"][1][block];
  }
};

TEST_F(Meters, AreOffAfterPowerOn) {
  for (uint32_t meter : {0u, 255u}) EXPECT_EQ(vchip::meter(1, meter), (MeterView{false, 0, 0, 0}));
  EXPECT_THAT(vchip::burst_sizes(1), ElementsAre(512, 61440));
  EXPECT_EQ(dumped("meter"), os::parse_json(R"({"meters": [], "burst_sizes": [512, 61440]})"));
}

TEST_F(Meters, KeepWhatTheyAreSetTo) {
  EXPECT_EQ(set(255, {1, 0xFFFFF, 1}), 0);
  EXPECT_EQ(rtk_acl_meterMode_set(1, 255, 1), 0);
  EXPECT_EQ(vchip::meter(1, 255), (MeterView{true, 0xFFFFF, 1, 1}));
  EXPECT_EQ(vchip::meter(0, 255), (MeterView{false, 0, 0, 0}));
  chip_acl_meter entry = {7, 7, 7};
  EXPECT_EQ(rtk_acl_meterEntry_get(1, 255, &entry), 0);
  EXPECT_EQ(entry.enable, 1u);
  EXPECT_EQ(entry.rate, 0xFFFFFu);
  EXPECT_EQ(entry.burst_slot, 1u);
  EXPECT_EQ(dumped("meter")["meters"], os::parse_json(R"([{"meter": 255, "enabled": true,
    "rate": 1048575, "burst_slot": 1, "mode": 1}])"));
}

TEST_F(Meters, ValuesHaveAnEnd) {
  EXPECT_EQ(set(3, {2, 0, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(set(3, {1, 0x100000, 0}), VCHIP_E_VALUE);
  EXPECT_EQ(set(3, {1, 0, 2}), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_meterMode_set(1, 3, 2), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{false, 0, 0, 0}));
}

TEST_F(Meters, IndexesHaveAnEnd) {
  chip_acl_meter entry = {7, 7, 7};
  for (uint32_t meter : {256u, UINT32_MAX}) {
    EXPECT_EQ(set(meter, {1, 0, 0}), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_meterEntry_get(1, meter, &entry), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_meterMode_set(1, meter, 1), VCHIP_E_INDEX);
    EXPECT_THROW(vchip::meter(1, meter), std::out_of_range);
  }
  EXPECT_EQ(entry.enable + entry.rate + entry.burst_slot, 21u);
}

TEST_F(Meters, BurstSizes) {
  const chip_acl_burst largest = {{0, 0xFFFF}};
  EXPECT_EQ(rtk_acl_meterBurstSize_set(1, 0, &largest), 0);
  EXPECT_THAT(vchip::burst_sizes(1), ElementsAre(0, 0xFFFF));
  EXPECT_THAT(vchip::burst_sizes(0), ElementsAre(512, 61440));
  chip_acl_burst burst = {{7, 7}};
  EXPECT_EQ(rtk_acl_meterBurstSize_get(1, 0, &burst), 0);
  EXPECT_THAT(burst.size, ElementsAre(0, 0xFFFF));
  for (const chip_acl_burst &bad : {chip_acl_burst{{0x10000, 0}}, chip_acl_burst{{0, 0x10000}}})
    EXPECT_EQ(rtk_acl_meterBurstSize_set(1, 0, &bad), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_acl_meterBurstSize_set(1, 1, &burst), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_acl_meterBurstSize_get(1, 1, &burst), VCHIP_E_INDEX);
  EXPECT_THAT(vchip::burst_sizes(1), ElementsAre(0, 0xFFFF));
}

TEST_F(Meters, CountersAddUp) {
  EXPECT_EQ(vchip_acl_count(1, 1535, 0xFFFFFFFF, 10), 0);
  EXPECT_EQ(vchip_acl_count(1, 1535, 3, 0x500000000), 0);
  EXPECT_EQ(vchip::acl_count(1, 1535), (AclCountView{0x100000002, 0x50000000A}));
  EXPECT_EQ(vchip::acl_count(0, 1535), (AclCountView{0, 0}));
  EXPECT_EQ(vchip::acl_count(1, 1534), (AclCountView{0, 0}));
  EXPECT_EQ(dumped("acl_count"), os::parse_json(R"([{"counter": 1535, "packets": 4294967298,
    "bytes": 21474836490}])"));
}

TEST_F(Meters, CountersAreTwoWordsHighOneFirst) {
  ASSERT_EQ(vchip_acl_count(1, 3, 0x100000002, 0x300000004), 0);
  uint32_t words[2] = {7, 7};
  EXPECT_EQ(rtk_acl_statPktCnt_get(1, 3, words), 0);
  EXPECT_THAT(words, ElementsAre(1, 2));
  EXPECT_EQ(rtk_acl_statByteCnt_get(1, 3, words), 0);
  EXPECT_THAT(words, ElementsAre(3, 4));
  EXPECT_EQ(rtk_acl_statPktCnt_clear(1, 3), 0);
  EXPECT_EQ(vchip::acl_count(1, 3), (AclCountView{0, 0x300000004}));
  EXPECT_EQ(rtk_acl_statByteCnt_clear(1, 3), 0);
  EXPECT_EQ(vchip::acl_count(1, 3), (AclCountView{0, 0}));
}

TEST_F(Meters, CountersHaveAnEnd) {
  uint32_t words[2] = {7, 7};
  for (uint32_t counter : {1536u, UINT32_MAX}) {
    EXPECT_EQ(rtk_acl_statPktCnt_get(1, counter, words), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_statByteCnt_get(1, counter, words), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_statPktCnt_clear(1, counter), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_acl_statByteCnt_clear(1, counter), VCHIP_E_INDEX);
    EXPECT_EQ(vchip_acl_count(1, counter, 1, 1), VCHIP_E_INDEX);
    EXPECT_THROW(vchip::acl_count(1, counter), std::out_of_range);
  }
  EXPECT_THAT(words, ElementsAre(7, 7));
  EXPECT_EQ(vchip_acl_count(VCHIP_UNITS, 0, 1, 1), VCHIP_E_UNIT);
}

TEST_F(Meters, PowerOnClearsEverything) {
  ASSERT_EQ(set(3, {1, 5, 1}), 0);
  ASSERT_EQ(rtk_acl_meterMode_set(1, 3, 1), 0);
  const chip_acl_burst burst = {{1, 2}};
  ASSERT_EQ(rtk_acl_meterBurstSize_set(1, 0, &burst), 0);
  ASSERT_EQ(vchip_acl_count(1, 3, 1, 1), 0);
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::meter(1, 3), (MeterView{false, 0, 0, 0}));
  EXPECT_THAT(vchip::burst_sizes(1), ElementsAre(512, 61440));
  EXPECT_EQ(vchip::acl_count(1, 3), (AclCountView{0, 0}));
}

}  // namespace
