// SPDX-License-Identifier: MIT
// What happens to the caller's bitmap while a walk over it is under way. This
// program has its own adapter call, which writes to the bitmap.
#include <swctl/platform/adapter.h>
#include <swctl/vlan.h>

#include "support/library_test.h"
#include "vlan/bitmap.h"

namespace {

user_pbmp_t ports;
std::vector<int32_t> asked;

}  // namespace

int32_t adp_intf_2_phy_id(int32_t interface) {
  asked.push_back(interface);
  ports = {{interface == 0 ? 0x6u : 0}};
  return interface;
}

namespace {

using Meanwhile = swctl_test::LibraryTest;

TEST_F(Meanwhile, TheSummedWalkKeepsToTheWordThatItBeganWith) {
  // A result of 1 lets the walk go on from interface 0, 0 from all others.
  for (const std::string call : {"rtk_vlan_port_add", "rtk_vlan_port_del"}) {
    swprobe::clear_plan();
    swctl_test::chip_answers(call, 0);
    swprobe::answer(call, 1, {1, {}});
    swprobe::forget();
    ports = swctl_test::bitmap({0, 3, 5});
    asked.clear();
    const bool adds = call == "rtk_vlan_port_add";
    EXPECT_EQ(
        adds ? user_vlan_port_add(0, 0, 1, &ports, 1) : user_vlan_port_remove(0, 0, 1, &ports), 0);
    EXPECT_EQ(asked, (std::vector<int32_t>{0, 3, 5})) << call;
  }
}

TEST_F(Meanwhile, RemovalFromARangeKeepsToTheWordThatItBeganWith) {
  swctl_test::chip_answers("rtk_vlan_port_del", 0);
  ports = swctl_test::bitmap({0, 3});
  asked.clear();
  EXPECT_EQ(user_vlan_port_removeEx(0, 0, 1, 2, &ports), 0);
  EXPECT_EQ(asked, (std::vector<int32_t>{0, 3, 0, 3}));
}

}  // namespace
