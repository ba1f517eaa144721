// SPDX-License-Identifier: MIT
// The four-way table: where addresses lie and when there is no place for one.
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <map>
#include <random>

#include "private_chip.h"

namespace {

constexpr uint32_t kEntries = 16384;
constexpr uint32_t kBuckets = 4096;

// The address with these low 32 bits.
chip_l2_ucast_entry numbered(uint32_t number, uint32_t vid = 10) {
  return {vid,
          {2, 0, static_cast<uint8_t>(number >> 24), static_cast<uint8_t>(number >> 16),
           static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)},
          {0, 0},
          3,
          0,
          8,
          0,
          0,
          {0, 0, 0, 0},
          0};
}

int32_t add(const chip_l2_ucast_entry &entry, uint32_t unit = 0) {
  return rtk_l2_addr_add(unit, &entry);
}

using L2Hash = vchip_test::PrivateChip;

TEST_F(L2Hash, NumberedAddressesFillTheWholeTable) {
  for (uint32_t number = 0; number < kEntries; ++number)
    ASSERT_EQ(add(numbered(number)), 0) << number;
  EXPECT_EQ(add(numbered(kEntries)), VCHIP_E_L2_FULL);
  const auto all = vchip::addresses(0);
  ASSERT_EQ(all.size(), kEntries);
  for (uint32_t index = 0; index < kEntries; ++index)
    ASSERT_EQ(all[index].index, static_cast<int32_t>(index));
  EXPECT_EQ(vchip::addresses(1).size(), 0u);
}

TEST_F(L2Hash, FifthAddressOfABucketIsRefused) {
  // Addresses a whole turn of the hash apart share a bucket.
  const uint32_t numbers[] = {1, 0x1000 | 0, 0x2000 | 3, 0x3000 | 2, 0x4000 | 5};
  for (int i = 0; i < 4; ++i) ASSERT_EQ(add(numbered(numbers[i])), 0);
  EXPECT_EQ(add(numbered(numbers[4])), VCHIP_E_L2_FULL);
  EXPECT_EQ(vchip::addresses(0).size(), 4u) << "nothing is driven out";
  EXPECT_EQ(add(numbered(2)), 0) << "the bucket beside it has room";
  EXPECT_EQ(add(numbered(numbers[2])), 0) << "an entry that is there is written over";
  const chip_l2_ucast_entry gone = numbered(numbers[0]);
  ASSERT_EQ(rtk_l2_addr_del(0, gone.vid, gone.mac), 0);
  EXPECT_EQ(add(numbered(numbers[4])), 0) << "and takes the place that became free";
}

TEST_F(L2Hash, VlanTakesPart) {
  for (uint32_t vid = 0; vid < kBuckets; ++vid) ASSERT_EQ(add(numbered(7, vid)), 0);
  std::map<int32_t, int> buckets;
  for (const vchip::AddressView &view : vchip::addresses(0)) ++buckets[view.index / 4];
  EXPECT_EQ(buckets.size(), kBuckets);
}

// The first refusal of random addresses comes when a bucket gets its fifth:
// with 4,096 buckets after some 2,000, an eighth of the table.
TEST_F(L2Hash, RandomAddressesAreRefusedFromAboutAnEighthOn) {
  std::mt19937_64 random(20);
  double sum = 0;
  constexpr int kRounds = 20;
  for (int round = 0; round < kRounds; ++round) {
    ASSERT_EQ(vchip_reset(), 0);
    uint32_t taken = 0;
    chip_l2_ucast_entry entry = numbered(0);
    int32_t result = 0;
    while (result == 0) {
      const uint64_t bits = random();
      for (int byte = 0; byte < SWCTL_MAC_BYTES; ++byte)
        entry.mac[byte] = static_cast<uint8_t>(bits >> 8 * byte);
      entry.mac[0] &= 0xFE;
      result = add(entry);
      taken += result == 0;
    }
    ASSERT_EQ(result, VCHIP_E_L2_FULL);
    sum += taken;
  }
  EXPECT_GT(sum / kRounds, kEntries / 12.0);
  EXPECT_LT(sum / kRounds, kEntries / 6.0);
}

}  // namespace
