// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/field.h>

#include "support/library_test.h"

namespace {

using FieldCounter = swctl_test::LibraryTest;
using swctl_test::chip_answers;
using vchip::AclCountView;

constexpr uint64_t kPackets = 0x100000002;
constexpr uint64_t kBytes = 0x300000004;

struct Count {
  uint32_t word[2] = {7, 7};
};

TEST_F(FieldCounter, KindZeroReadsPackets) {
  ASSERT_EQ(vchip_acl_count(1, 3, kPackets, kBytes), 0);
  Count count;
  EXPECT_EQ(user_field_get_statistics(0xFFFFFFFF, 1, 3, USER_FIELD_COUNT_PACKETS, &count), 0);
  EXPECT_EQ(count.word[0], 1u);
  EXPECT_EQ(count.word[1], 2u);
  EXPECT_EQ(user_field_get_statistics(0, 0, 3, USER_FIELD_COUNT_PACKETS, &count), 0);
  EXPECT_CALLS("rtk_acl_statPktCnt_get(unit=1, counter=3, count=>[1 2]) = 0",
               "rtk_acl_statPktCnt_get(unit=0, counter=3, count=>[0 0]) = 0");
}

TEST_F(FieldCounter, AnyOtherKindReadsBytes) {
  ASSERT_EQ(vchip_acl_count(1, 3, kPackets, kBytes), 0);
  for (uint32_t kind : {1u, 2u, 0x100u, 0xFFFFFFFFu}) {
    Count count;
    EXPECT_EQ(user_field_get_statistics(0, 1, 3, kind, &count), 0);
    EXPECT_CALLS("rtk_acl_statByteCnt_get(unit=1, counter=3, count=>[3 4]) = 0");
  }
}

TEST_F(FieldCounter, KindZeroClearsPackets) {
  for (uint32_t unit : {0u, 1u}) ASSERT_EQ(vchip_acl_count(unit, 3, kPackets, kBytes), 0);
  EXPECT_EQ(user_field_clear_statistics(0xFFFFFFFF, 1, 3, USER_FIELD_COUNT_PACKETS), 0);
  EXPECT_CALLS("rtk_acl_statPktCnt_clear(unit=1, counter=3) = 0");
  EXPECT_EQ(vchip::acl_count(1, 3), (AclCountView{0, kBytes}));
  EXPECT_EQ(vchip::acl_count(0, 3), (AclCountView{kPackets, kBytes}));
}

TEST_F(FieldCounter, AnyOtherKindClearsBytes) {
  for (uint32_t kind : {1u, 2u, 0x100u, 0xFFFFFFFFu}) {
    ASSERT_EQ(vchip_reset(), 0);
    ASSERT_EQ(vchip_acl_count(1, 3, kPackets, kBytes), 0);
    swprobe::forget();
    EXPECT_EQ(user_field_clear_statistics(0, 1, 3, kind), 0);
    EXPECT_CALLS("rtk_acl_statByteCnt_clear(unit=1, counter=3) = 0");
    EXPECT_EQ(vchip::acl_count(1, 3), (AclCountView{kPackets, 0}));
  }
}

TEST_F(FieldCounter, AnyCounterAndAnyResultGoThrough) {
  for (int32_t result : {3, -1, -1005, INT32_MIN}) {
    swprobe::clear_plan();
    for (const char *call : {"rtk_acl_statPktCnt_get", "rtk_acl_statByteCnt_get"})
      chip_answers(call, result, {{"count", 41}});
    for (const char *call : {"rtk_acl_statPktCnt_clear", "rtk_acl_statByteCnt_clear"})
      chip_answers(call, result);
    swprobe::forget();
    for (uint32_t kind : {0u, 1u}) {
      Count count;
      EXPECT_EQ(user_field_get_statistics(0, 9, 0xFFFFFFFF, kind, &count), result);
      EXPECT_EQ(count.word[0], 41u) << "the caller's own address is handed on";
      EXPECT_EQ(count.word[1], 7u);
      EXPECT_EQ(user_field_clear_statistics(0, 9, 0xFFFFFFFF, kind), result);
    }
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 4u);
    for (const auto &call : calls) {
      EXPECT_EQ(call.in("unit"), 9);
      EXPECT_EQ(call.in("counter"), 0xFFFFFFFF);
    }
  }
}

TEST_F(FieldCounter, AFailedReadLeavesTheOutputAlone) {
  for (uint32_t kind : {0u, 1u}) {
    Count count;
    const auto read = [&] {
      EXPECT_EQ(user_field_get_statistics(0, 1, VCHIP_ACL_COUNTERS, kind, &count), VCHIP_E_INDEX);
      EXPECT_EQ(user_field_clear_statistics(0, VCHIP_UNITS, 0, kind), VCHIP_E_UNIT);
    };
    EXPECT_PRINTED(swctl_test::printed_by(read), "", "");
    EXPECT_EQ(count.word[0], 7u);
    EXPECT_EQ(count.word[1], 7u);
  }
}

}  // namespace
