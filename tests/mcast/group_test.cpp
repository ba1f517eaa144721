// SPDX-License-Identifier: MIT
#include "support/group.h"

#include <swctl-vchip/view.h>
#include <swctl/mcast.h>
#include <swctl/platform/sdk.h>

#include <cstring>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;
using swctl_test::kGroup;
using swctl_test::kGroupAdd;
using swctl_test::kGroupDel;
using swctl_test::kGroupGet;
using swctl_test::kGroupText;
using testing::ElementsAre;
using vchip::GroupView;

User_mcast_addr_t group(uint32_t ports) {
  return swctl_test::group_record<User_mcast_addr_t>(20, ports);
}

using Function = int32_t (*)(uint32_t, uint32_t, const User_mcast_addr_t *);
const std::pair<const char *, Function> kReplacing[] = {
    {"User_mcast_port_add", User_mcast_port_add},
    {"User_mcast_port_remove", User_mcast_port_remove},
};

class McastGroup : public swctl_test::LibraryTest {
 protected:
  static std::vector<uint32_t> ports(uint32_t unit) {
    std::vector<uint32_t> all;
    for (const GroupView &view : vchip::groups(unit)) all.push_back(view.portmask);
    return all;
  }
};

TEST_F(McastGroup, InitClearsTheRecord) {
  User_mcast_addr_t record = group(1);
  EXPECT_EQ(User_mcast_addr_t_init(9, &record, kGroup, 0xABCD0014), 0);
  User_mcast_addr_t expected;
  memset(&expected, 0, sizeof expected);
  memcpy(expected.mac, kGroup, sizeof expected.mac);
  expected.vid = 20;
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  EXPECT_NO_CALLS();
}

TEST_F(McastGroup, AddBuildsTheEntryOnTheCallersUnit) {
  const User_mcast_addr_t record = group(0x10000003);
  EXPECT_EQ(User_mcast_addr_add(9, 1, &record), 0);
  EXPECT_CALLS(
      "rtk_l2_mcastAddr_add(unit=1, entry.vid=20, entry.mac=[01 00 5e 00 00 05], "
      "entry.portmask=0x10000003, entry.fwdIndex=0, entry.rest=[0x0 0x0 0x0]) = 0");
  EXPECT_THAT(vchip::groups(1), ElementsAre(GroupView{0, 20, kGroupText, 0x10000003, 1}));
  EXPECT_EQ(vchip::groups(0).size(), 0u);
  EXPECT_EQ(User_mcast_addr_add(0, 1, &record), VCHIP_E_L2_EXISTS);
}

TEST_F(McastGroup, AddReturnsAnyResult) {
  const User_mcast_addr_t record = group(1);
  for (const int32_t result : {-1, 7, INT32_MIN}) {
    swprobe::clear_plan();
    chip_answers(kGroupAdd, result);
    EXPECT_EQ(User_mcast_addr_add(0, 0, &record), result);
  }
}

TEST_F(McastGroup, RemovePassesThrough) {
  const User_mcast_addr_t record = group(1);
  ASSERT_EQ(User_mcast_addr_add(0, 0, &record), 0);
  ASSERT_EQ(User_mcast_addr_add(0, 1, &record), 0);
  swprobe::forget();
  EXPECT_EQ(User_mcast_addr_remove(9, 1, kGroup, 20), 0);
  EXPECT_CALLS("rtk_l2_mcastAddr_del(unit=1, vid=20, mac=[01 00 5e 00 00 05]) = 0");
  EXPECT_EQ(vchip::groups(1).size(), 0u);
  EXPECT_EQ(vchip::groups(0).size(), 1u);
  for (const int32_t result : {-1, 7}) {
    swprobe::clear_plan();
    chip_answers(kGroupDel, result);
    EXPECT_EQ(User_mcast_addr_remove(0, 0, kGroup, 20), result);
  }
}

TEST_F(McastGroup, RemoveHandsTheVlanOnAsItCame) {
  chip_answers(kGroupDel, 0);
  for (const uint32_t vid : {0xABCD0014u, 0x10000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(User_mcast_addr_remove(0, 0, kGroup, vid), 0);
    const auto calls = swprobe::take();
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].in("vid"), vid);
  }
}

TEST_F(McastGroup, PortFunctionsReplaceTheWholeSet) {
  for (const auto &[name, function] : kReplacing) {
    SCOPED_TRACE(name);
    ASSERT_EQ(vchip_reset(), 0);
    const User_mcast_addr_t first = group(0x7);
    const User_mcast_addr_t second = group(0x9);
    ASSERT_EQ(User_mcast_addr_add(0, 1, &first), 0);
    ASSERT_EQ(User_mcast_addr_add(0, 0, &first), 0);
    swprobe::forget();
    EXPECT_EQ(function(9, 1, &second), 0);
    EXPECT_CALLS("rtk_l2_mcastAddr_del(unit=1, vid=20, mac=[01 00 5e 00 00 05]) = 0",
                 "rtk_l2_mcastAddr_add(unit=1, entry.vid=20, entry.mac=[01 00 5e 00 00 05], "
                 "entry.portmask=0x9, entry.fwdIndex=0, entry.rest=[0x0 0x0 0x0]) = 0");
    EXPECT_THAT(ports(1), ElementsAre(0x9u)) << "a port in the record stays";
    EXPECT_THAT(ports(0), ElementsAre(0x7u));
  }
}

TEST_F(McastGroup, PortFunctionsMakeAGroupThatIsAbsent) {
  for (const auto &[name, function] : kReplacing) {
    ASSERT_EQ(vchip_reset(), 0);
    const User_mcast_addr_t record = group(0x6);
    EXPECT_EQ(function(0, 1, &record), 0) << name;
    EXPECT_THAT(ports(1), ElementsAre(0x6u)) << name;
  }
}

TEST_F(McastGroup, PortFunctionsReturnTheAdd) {
  const User_mcast_addr_t record = group(1);
  for (const auto &[name, function] : kReplacing) {
    for (const int32_t result : {-4, 0, 4}) {
      swprobe::clear_plan();
      chip_answers(kGroupDel, -1);
      chip_answers(kGroupAdd, result);
      EXPECT_EQ(function(0, 0, &record), result) << name;
    }
    swprobe::clear_plan();
    chip_answers(kGroupDel, 3);
    chip_answers(kGroupAdd, 0);
    EXPECT_EQ(function(0, 0, &record), 0) << name;
  }
}

TEST_F(McastGroup, GetWritesAddressVlanAndPorts) {
  const User_mcast_addr_t present = group(0x10000003);
  ASSERT_EQ(User_mcast_addr_add(0, 1, &present), 0);
  swprobe::forget();
  User_mcast_addr_t record;
  memset(&record, 0x33, sizeof record);
  User_mcast_addr_t expected = record;
  EXPECT_EQ(User_mcast_port_get(9, 1, kGroup, 0xABCD0014, &record), 0);
  memcpy(expected.mac, kGroup, sizeof expected.mac);
  expected.vid = 20;
  expected.pbmp = {{0x10000003}};
  EXPECT_EQ(memcmp(&record, &expected, sizeof record), 0);
  const auto calls = swprobe::take();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].name, kGroupGet);
  EXPECT_EQ(calls[0].in("unit"), 1);
  EXPECT_EQ(calls[0].in("entry.vid"), 20);
  EXPECT_EQ(calls[0].in("entry.mac[5]"), 5);
  EXPECT_EQ(calls[0].in("entry.portmask"), 0);
}

TEST_F(McastGroup, GetTakesWhatTheSdkWrote) {
  chip_answers(kGroupGet, 5,
               {{"entry.vid", 77}, {"entry.mac[0]", 9}, {"entry.portmask", 0x80000000}});
  User_mcast_addr_t record = {};
  EXPECT_EQ(User_mcast_port_get(0, 0, kGroup, 20, &record), 5);
  EXPECT_EQ(record.vid, 77);
  EXPECT_EQ(record.mac[0], 9);
  EXPECT_EQ(record.pbmp.word[0], 0x80000000u);
}

TEST_F(McastGroup, FailedGetLeavesTheRecordAlone) {
  User_mcast_addr_t record = group(0xFF);
  const User_mcast_addr_t before = record;
  EXPECT_EQ(User_mcast_port_get(0, 0, kGroup, 20, &record), VCHIP_E_L2_ENTRY);
  EXPECT_EQ(memcmp(&record, &before, sizeof record), 0);
  chip_answers(kGroupGet, -1, {{"entry.vid", 77}, {"entry.portmask", 1}});
  EXPECT_EQ(User_mcast_port_get(0, 0, kGroup, 20, &record), -1);
  EXPECT_EQ(memcmp(&record, &before, sizeof record), 0);
}

TEST_F(McastGroup, NothingIsPrintedOrLogged) {
  ASSERT_EQ(vchip_trace_set(1), 0);
  const auto all = [] {
    User_mcast_addr_t record = group(1);
    User_mcast_addr_add(0, 2, &record);
    User_mcast_port_add(0, 0, &record);
    User_mcast_port_get(0, 2, kGroup, 20, &record);
    User_mcast_addr_remove(0, 0, kGroup, 21);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
  for (const swprobe::Call &call : swprobe::take()) EXPECT_EQ(call.name.rfind("rtk_l2_", 0), 0u);
}

}  // namespace
