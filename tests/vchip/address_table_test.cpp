// SPDX-License-Identifier: MIT
// What a call that was killed in the middle leaves of the address table, and what
// becomes of that.
#include "l2/address_table.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

using vchip::AddressTable;
using vchip::kNoIndex;

constexpr uint64_t kSecond = 1000000000;
constexpr uint64_t kAging = 300 * kSecond;

chip_l2_ucast_entry entry_of(uint8_t station, int32_t port, uint32_t flags = 0) {
  chip_l2_ucast_entry entry = {};
  const std::array<uint8_t, SWCTL_MAC_BYTES> mac = {0x02, 0, 0, 0, 0, station};
  memcpy(entry.mac, mac.data(), mac.size());
  entry.vid = 10;
  entry.port = port;
  entry.flags = flags;
  return entry;
}

class AddressTableRepair : public testing::Test {
 protected:
  // From zeroes, as power-on is.
  void SetUp() override {
    memset(static_cast<void *>(table_.get()), 0, sizeof *table_);
    table_->power_on();
    put(1, 3);
    put(2, 3);
    put(3, 4);
    put(4, 3, vchip::kStaticFlag);
  }

  void put(uint8_t station, int32_t port, uint32_t flags = 0) {
    ASSERT_TRUE(table_->put(entry_of(station, port, flags)));
  }
  int32_t find(uint8_t station) const {
    const chip_l2_ucast_entry key = entry_of(station, 0);
    return table_->find(key.vid, key.mac);
  }
  // The table begins with a bit for each place. A killed call may have written one
  // without counting what it means.
  void flip_place(int32_t index) {
    uint64_t word = 0;
    auto *bytes = reinterpret_cast<uint8_t *>(table_.get()) + index / 64 * 8;
    memcpy(&word, bytes, sizeof word);
    word ^= uint64_t{1} << index % 64;
    memcpy(bytes, &word, sizeof word);
  }
  std::vector<int32_t> scan() const {
    std::vector<int32_t> ports;
    for (int32_t at = table_->next(kNoIndex); at != kNoIndex; at = table_->next(at))
      ports.push_back(table_->entry(at).port);
    return ports;
  }

  std::unique_ptr<AddressTable> table_ = std::make_unique<AddressTable>();
};

TEST_F(AddressTableRepair, LeavesAWholeTableAsItIs) {
  const auto before = std::make_unique<AddressTable>(*table_);
  table_->repair();
  EXPECT_EQ(memcmp(before.get(), table_.get(), sizeof *table_), 0);
  EXPECT_EQ(table_->learned(3), 2u);
  EXPECT_EQ(table_->learned(4), 1u);
}

TEST_F(AddressTableRepair, ForgetsAnEntryWhoseBitWasNotSetYet) {
  put(5, 4);
  flip_place(find(5));
  EXPECT_EQ(table_->learned(4), 2u) << "counted for an entry that is not there";
  table_->repair();
  EXPECT_EQ(find(5), kNoIndex);
  EXPECT_EQ(table_->learned(4), 1u);
  EXPECT_EQ(scan().size(), 4u);
  put(5, 4);
  EXPECT_EQ(table_->learned(4), 2u) << "its place can be used again";
}

TEST_F(AddressTableRepair, CountsAnEntryThatWasNotCountedYet) {
  put(5, 4);
  const int32_t index = find(5);
  table_->remove(index);
  flip_place(index);
  EXPECT_EQ(table_->learned(4), 1u) << "not counted for an entry that is there";
  table_->repair();
  EXPECT_EQ(find(5), index);
  EXPECT_EQ(table_->learned(4), 2u);
}

TEST_F(AddressTableRepair, CountsNoStaticEntry) {
  flip_place(find(4));
  table_->repair();
  EXPECT_EQ(table_->learned(3), 2u);
  EXPECT_EQ(find(4), kNoIndex);
}

// Between the two halves of a move the station is nowhere.
TEST_F(AddressTableRepair, LosesAStationThatWasMoving) {
  flip_place(find(1));
  table_->repair();
  EXPECT_EQ(find(1), kNoIndex);
  EXPECT_EQ(table_->learned(3), 1u);
  put(1, 4);
  EXPECT_EQ(table_->learned(4), 2u);
}

TEST_F(AddressTableRepair, EndsAFlushThatWasKilledHalfWay) {
  flip_place(find(1));
  flip_place(find(3));
  table_->repair();
  EXPECT_EQ(scan(), (std::vector<int32_t>{3, 3}));
  EXPECT_EQ(table_->learned(3), 1u);
  EXPECT_EQ(table_->learned(4), 0u);
  EXPECT_TRUE(table_->sound());
}

TEST_F(AddressTableRepair, LeavesAgingAsItWas) {
  table_->pass(100 * kSecond, kAging);
  flip_place(find(2));
  table_->repair();
  EXPECT_EQ(table_->age(find(1)), 100u);
  table_->pass(199 * kSecond, kAging);
  EXPECT_NE(find(1), kNoIndex);
  table_->pass(1 * kSecond, kAging);
  EXPECT_EQ(find(1), kNoIndex);
  EXPECT_EQ(table_->learned(3), 0u);
  EXPECT_NE(find(4), kNoIndex) << "a static one";
}

}  // namespace
