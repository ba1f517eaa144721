// SPDX-License-Identifier: MIT
// Records as arguments: through a pointer, in arrays, by value.
#include <cstring>
#include <memory>

#include "sample/sample_test.h"

namespace {

using swprobe::take_lines;
using testing::ElementsAre;

class RecordTest : public SampleTest {};

TEST_F(RecordTest, AreShownFieldByField) {
  sample_entry found{};
  EXPECT_EQ(sample_record(2, &kEntry, &found), 0);
  EXPECT_EQ(found.port, 5);
  EXPECT_THAT(take_lines(),
              ElementsAre("sample_record(unit=2, entry.vid=10, entry.mac=[02 00 00 00 00 ab], "
                          "entry.port=3, entry.inner.flags=0x8000, found.vid=>10, "
                          "found.mac=>[02 00 00 00 00 ab], found.port=>5, "
                          "found.inner.flags=>0x8000) = 0"));
}

TEST_F(RecordTest, ThatAreNullAreNamedAsAWhole) {
  sample_entry found{};
  EXPECT_EQ(sample_record(2, nullptr, &found), -4);
  EXPECT_EQ(sample_record(2, nullptr, nullptr), -4);
  EXPECT_THAT(take_lines(), ElementsAre("sample_record(unit=2, entry=null) = -4",
                                        "sample_record(unit=2, entry=null, found=null) = -4"));
}

TEST_F(RecordTest, InArraysCarryTheirIndex) {
  sample_entry table[2] = {};
  sample_entry last = kEntry;
  EXPECT_EQ(sample_table(2, table, &last), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].out("table[0].port"), 0);
  EXPECT_EQ(calls[0].out("table[1].port"), 1);
  EXPECT_EQ(calls[0].out("table[1].mac[5]"), 0xab);
  EXPECT_EQ(calls[0].in("last.port"), 3);
  EXPECT_EQ(calls[0].out("last.port"), 1);
  EXPECT_THAT(calls[0].line(), testing::HasSubstr("table[1].vid=>10, "));
  EXPECT_THAT(calls[0].line(), testing::HasSubstr("last.port=3=>1"));
}

TEST_F(RecordTest, TravelByValueWhole) {
  sample_address address{};
  address.byte[0] = 0x20;
  address.byte[15] = 1;
  auto block = std::make_unique<sample_block>();
  std::memset(block->data, 0x5a, sizeof block->data);
  block->index = 77;
  block->data[6259] = 2;
  block->last = 30;
  EXPECT_EQ(sample_by_value(address, *block, 400), 433);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].in("address.byte"), 0x20);
  EXPECT_EQ(calls[0].in("address.byte[15]"), 1);
  EXPECT_EQ(calls[0].in("block.index"), 77);
  EXPECT_EQ(calls[0].in("block.data[6258]"), 0x5a);
  EXPECT_EQ(calls[0].in("block.data[6259]"), 2);
  EXPECT_EQ(calls[0].in("block.last"), 30);
  EXPECT_EQ(calls[0].in("after"), 400);
  EXPECT_THAT(calls[0].line(),
              testing::StartsWith("sample_by_value(address.byte=[20 00 00 00 00 00 00 00 00 00 00 "
                                  "00 00 00 00 01], block.index=77, block.data=[5a 5a"));
}

TEST_F(RecordTest, AreComparedByField) {
  swprobe::plan("sample_record entry.mac 02:00:00:00:00:ab entry.inner.flags 0x8000 result -8");
  sample_entry found{};
  EXPECT_EQ(sample_record(0, &kEntry, &found), -8);
  sample_entry other = kEntry;
  other.mac[5] = 0;
  EXPECT_EQ(sample_record(0, &other, &found), 0);
  EXPECT_EQ(sample_record(0, nullptr, &found), -4);
}

TEST_F(RecordTest, AreWrittenByField) {
  swprobe::plan(
      "sample_table result 2 out table[1].mac 0a:0b:0c out table[1].port -6 "
      "out last.vid 4095");
  sample_entry table[2] = {kEntry, kEntry};
  sample_entry last = kEntry;
  EXPECT_EQ(sample_table(2, table, &last), 2);
  EXPECT_EQ(std::memcmp(&table[0], &kEntry, sizeof kEntry), 0);
  EXPECT_EQ(table[1].mac[0], 10);
  EXPECT_EQ(table[1].mac[2], 12);
  EXPECT_EQ(table[1].mac[5], 0xab);
  EXPECT_EQ(table[1].port, -6);
  EXPECT_EQ(table[1].vid, 10);
  EXPECT_EQ(last.vid, 4095);
  EXPECT_EQ(last.port, 3);
  EXPECT_THAT(take_lines(),
              ElementsAre("sample_table(count=2, table[1].mac=>[0a 0b 0c 00 00 ab], "
                          "table[1].port=>-6, last.vid=10=>4095, last.mac=[02 00 00 00 00 ab], "
                          "last.port=3, last.inner.flags=0x8000) = 2 !"));
}

}  // namespace
