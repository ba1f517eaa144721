// SPDX-License-Identifier: MIT
// All VLANs of the virtual chip made, filled and destroyed, through the library
// and by the same calls made directly.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>
#include <swctl/vlan.h>

#include <bit>
#include <cstdlib>

#include "pairs.h"

namespace {

constexpr uint32_t kUnit = 0;
constexpr uint32_t kFirst = 1;
constexpr uint32_t kLast = 4094;
constexpr double kLimit = 1.05;

// Interfaces 1 to 4 untagged, 25 tagged.
constexpr user_pbmp_t kUntagged = {{0x1E}};
constexpr user_pbmp_t kTagged = {{1u << 25}};

void expect(bool good) {
  if (!good) abort();
}

void all_library(benchmark::State &state) {
  vchip_reset();
  for (auto _ : state) {
    expect(user_vlan_createEx(0, kUnit, kFirst, kLast) == 0);
    expect(user_vlan_port_addEx(0, kUnit, kFirst, kLast, &kTagged, &kUntagged) == 0);
    expect(user_vlan_destroyEx(0, kUnit, kFirst, kLast) == 0);
    rtk_vlan_create(kUnit, 1);
  }
}

// The chip ports of the first word.
uint32_t converted(const user_pbmp_t &ports) {
  uint32_t mask = 0;
  for (uint32_t rest = ports.word[0]; rest != 0; rest &= rest - 1)
    mask |= 1u << adp_intf_2_phy_id(std::countr_zero(rest));
  return mask;
}

void fill_directly(uint32_t vid) {
  uint32_t member = 0;
  uint32_t untagged = 0;
  rtk_vlan_port_get(kUnit, vid, &member, &untagged);
  const uint32_t tag = converted(kTagged);
  const uint32_t untag = converted(kUntagged);
  member |= tag | untag;
  untagged = (untagged & ~tag) | untag;
  expect(rtk_vlan_port_set(kUnit, vid, &member, &untagged) == 0);
}

void all_direct(benchmark::State &state) {
  vchip_reset();
  for (auto _ : state) {
    for (uint32_t vid = kFirst + 1; vid <= kLast; ++vid) expect(rtk_vlan_create(kUnit, vid) == 0);
    for (uint32_t vid = kFirst; vid <= kLast; ++vid) fill_directly(vid);
    for (uint32_t vid = kFirst; vid <= kLast; ++vid) expect(rtk_vlan_destroy(kUnit, vid) == 0);
    rtk_vlan_create(kUnit, 1);
  }
}

const Pair kPairs[] = {{"all_4094_vlans", all_library, all_direct, kLimit}};

}  // namespace

int main(int argc, char **argv) {
  unsetenv("VCHIP_IMAGE");
  return run_pairs(argc, argv, kPairs);
}
