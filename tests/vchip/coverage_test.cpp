// SPDX-License-Identifier: MIT
// Every check() names every byte of its block, so that a word that is added to
// one without being looked at shows here.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "document/findings.h"
#include "unit/state.h"

namespace {

using vchip::Findings;

template <typename Block>
std::unique_ptr<Block> after_power_on() {
  auto block = std::make_unique<Block>();  // all zero
  block->power_on();
  return block;
}

template <typename Block>
Findings check_watched(const char *name, const Block &block) {
  Findings findings;
  findings.watch(&block, sizeof block);
  block.check(findings);
  size_t left_out = 0, first = 0;
  for (size_t byte = sizeof block; byte-- > 0;) {
    if (findings.seen()[byte] != 0) continue;
    ++left_out;
    first = byte;
  }
  EXPECT_EQ(left_out, 0u) << name << ": of " << sizeof block << " bytes, the first at " << first;
  return findings;
}

// Also where nothing is empty, and so nothing passed over as a whole.
template <typename Block>
void expect_all_named(const char *name, const Block &) {
  const std::unique_ptr<Block> block = after_power_on<Block>();
  const Findings findings = check_watched(name, *block);
  EXPECT_TRUE(findings.all().empty()) << name << ": " << findings.all()[0].word;
  auto *bytes = reinterpret_cast<uint8_t *>(block.get());
  std::fill_n(bytes, sizeof *block, uint8_t{0xff});
  check_watched(name, *block);
}

TEST(Coverage, EveryByteOfEveryBlockIsNamed) {
  const auto state = std::make_unique<vchip::State>();
  expect_all_named("platform", state->platform);
  expect_all_named("rules", state->rules);
  vchip::each_block(state->units[0],
                    [](const char *name, const auto &block) { expect_all_named(name, block); });
}

// Whatever the bytes are, a check reads its own block and no other's: alone in
// its memory, it has a sanitizer around it.
template <typename Block>
void check_any_bytes(const char *, const Block &) {
  uint32_t random = 12345;
  for (int round = 0; round < 12; ++round) {
    const std::unique_ptr<Block> block = after_power_on<Block>();
    auto *bytes = reinterpret_cast<uint8_t *>(block.get());
    const size_t step = round == 0 ? 1 : 97;
    for (size_t byte = 0; byte < sizeof *block; byte += step) {
      random = random * 1664525 + 1013904223;
      bytes[byte] = static_cast<uint8_t>(random >> 24);
    }
    Findings findings;
    block->check(findings);
  }
}

TEST(Coverage, AnyBytesCanBeLookedAt) {
  const auto state = std::make_unique<vchip::State>();
  check_any_bytes("platform", state->platform);
  check_any_bytes("rules", state->rules);
  vchip::each_block(state->units[0],
                    [](const char *name, const auto &block) { check_any_bytes(name, block); });
}

}  // namespace
