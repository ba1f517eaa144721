// SPDX-License-Identifier: MIT
// This program has its own user_qos_trust_sel_group_set. The library reaches
// it by its exported name, so it is this one that is called.
#include <swctl/qos.h>

#include <vector>

#include "support/library_test.h"

namespace {

std::vector<int32_t> groups;

using QosInterpose = swctl_test::LibraryTest;

}  // namespace

int32_t user_qos_trust_sel_group_set(int32_t group) {
  groups.push_back(group);
  return -1;
}

namespace {

TEST_F(QosInterpose, GroupInitCallsTheExportedFunction) {
  EXPECT_EQ(user_qos_trust_sel_group_init(), 0);
  EXPECT_THAT(groups, testing::ElementsAre(0, 1, 2));
  EXPECT_NO_CALLS();
}

}  // namespace
