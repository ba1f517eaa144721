// SPDX-License-Identifier: MIT
// The rule table of the virtual chip prepared, through the library and by the
// same calls made directly.
#include <swctl-vchip/vchip.h>
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <cstdlib>

#include "pairs.h"

namespace {

constexpr uint32_t kUnit = 0;
constexpr double kLimit = 1.05;

constexpr uint32_t kTemplate5[] = {1, 2, 11, 14, 15, 16, 23, 24, 31, 33, 34, 0};
constexpr uint32_t kTemplate6[] = {1, 2, 14, 5, 6, 7, 15, 16, 11, 34, 0, 0};
constexpr chip_acl_operation kJoin = {{0, 1, 0}};
constexpr uint8_t kHalf[2][28] = {{0}, {1}};
constexpr uint8_t kMask[28] = {3};

void expect(bool good) {
  if (!good) abort();
}

void init_library(benchmark::State &state) {
  vchip_reset();
  for (auto _ : state) expect(user_field_init(0, kUnit) == 0);
}

void selector(uint32_t index, uint32_t word1, uint32_t word2) {
  rtk_acl_templateSelector_set(kUnit, index, word1, word2, 0);
}

void block(int32_t first, int32_t end) {
  for (int32_t rule = first; rule < end; rule += 2) {
    rtk_acl_ruleEntryField_write(kUnit, 0, rule, 0, kHalf[0], kMask);
    rtk_acl_ruleEntryField_write(kUnit, 0, rule + 1, 0, kHalf[1], kMask);
    expect(rtk_acl_ruleOperation_set(kUnit, 0, rule, &kJoin) == 0);
  }
}

void init_direct(benchmark::State &state) {
  vchip_reset();
  for (auto _ : state) {
    expect(rtk_acl_template_set(kUnit, 5, kTemplate5) == 0);
    expect(rtk_acl_template_set(kUnit, 6, kTemplate6) == 0);
    selector(10, 0, 1);
    selector(11, 0, 1);
    block(1280, 1536);
    selector(7, 5, 0);
    selector(6, 0, 0);
    selector(5, 6, 0);
    selector(8, 4, 3);
    selector(9, 4, 3);
    block(1024, 1280);
    selector(4, 5, 0);
    selector(3, 5, 0);
    selector(0, 4, 3);
    selector(1, 4, 3);
    block(0, 256);
  }
}

const Pair kPairs[] = {{"user_field_init", init_library, init_direct, kLimit}};

}  // namespace

int main(int argc, char **argv) {
  unsetenv("VCHIP_IMAGE");
  return run_pairs(argc, argv, kPairs);
}
