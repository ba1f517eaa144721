// SPDX-License-Identifier: MIT
// What happens while a mode change is under way. This program has its own
// rtk_l2_vlanMode_set, which makes another change in the middle of the first,
// as another thread would.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <dlfcn.h>
#include <functional>

#include "support/library_test.h"

namespace {

std::function<void()> meanwhile;

}  // namespace

int32_t rtk_l2_vlanMode_set(uint32_t unit, int32_t port, uint32_t mode) {
  if (meanwhile) std::exchange(meanwhile, nullptr)();
  const auto next =
      reinterpret_cast<decltype(&rtk_l2_vlanMode_set)>(dlsym(RTLD_NEXT, "rtk_l2_vlanMode_set"));
  return next(unit, port, mode);
}

namespace {

constexpr int kFrontPorts = 26;

class Meanwhile : public swctl_test::LibraryTest {
 protected:
  static void on(int32_t port) { ASSERT_EQ(user_port_dtag_mode_set(0, 0, port, 1), 0); }
  static void off(int32_t port) { ASSERT_EQ(user_port_dtag_mode_set(0, 0, port, 0), 0); }
  // How often the switch was changed over or back: 26 ports each time.
  static int changes() {
    int ports = 0;
    for (const swprobe::Call &call : swprobe::take())
      ports += call.name == "rtk_vlan_portEgrOuterTagSts_set";
    EXPECT_EQ(ports % kFrontPorts, 0);
    return ports / kFrontPorts;
  }
};

TEST_F(Meanwhile, LeavingGoesByTheCountThatItBeganWith) {
  on(5);
  on(6);
  swprobe::forget();
  meanwhile = [] { off(6); };
  off(5);
  EXPECT_EQ(changes(), 0) << "each of the two saw another port left";
  on(5);
  EXPECT_EQ(changes(), 1) << "no port is counted";
  off(5);
}

TEST_F(Meanwhile, TheLastPortChangesTheSwitchBackThoughAnotherEnters) {
  on(5);
  swprobe::forget();
  meanwhile = [] { on(6); };
  off(5);
  EXPECT_EQ(changes(), 1);
  off(6);
  EXPECT_EQ(changes(), 1) << "one port was still counted";
}

TEST_F(Meanwhile, EnteringGoesByTheCountThatItBeganWith) {
  meanwhile = [] { on(6); };
  on(5);
  EXPECT_EQ(changes(), 2) << "each of the two saw no port before it";
  off(5);
  EXPECT_EQ(changes(), 0);
  off(6);
  EXPECT_EQ(changes(), 1);
}

}  // namespace
