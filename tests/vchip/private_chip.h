// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_VCHIP_PRIVATE_CHIP_H
#define SWCTL_TESTS_VCHIP_PRIVATE_CHIP_H

#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>

#include <cstdlib>
#include <gtest/gtest.h>

namespace vchip_test {

// A chip of this process alone, as after power-on, whatever the environment.
class PrivateChip : public testing::Test {
 protected:
  PrivateChip() {
    for (const char *name : {"VCHIP_IMAGE", "VCHIP_LOG", "VCHIP_TRACE"}) unsetenv(name);
  }
  void SetUp() override { ASSERT_EQ(vchip_reset(), 0); }
};

// What a test puts into an output to see whether a call writes it.
inline constexpr uint32_t kUntouched = 0xdeadbeef;

inline constexpr vchip_partner_t kUsualPartner = {1, VCHIP_ABILITY_USUAL};

}  // namespace vchip_test

#endif
