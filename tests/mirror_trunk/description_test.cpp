// SPDX-License-Identifier: MIT
// Where the trunk description lies in a call: a program that was built long ago
// puts its ten words there by itself.
#include <swctl-vchip/view.h>
#include <swctl/mirror_trunk.h>

#include <cstring>

#include "support/library_test.h"

namespace {

using TrunkDescription = swctl_test::LibraryTest;

constexpr size_t kBytes = 40;

// Count, a byte that nobody reads, then the ports.
void fill(unsigned char (&bytes)[kBytes]) {
  const int32_t count = 30;
  memset(bytes, 0x11, sizeof bytes);
  memcpy(bytes, &count, sizeof count);
  bytes[4] = 27;
  bytes[5] = 1;
  bytes[6] = 2;
  bytes[9] = 24;
  bytes[34] = 26;  // the thirtieth port
  bytes[35] = 23;  // beyond the count
}

constexpr uint32_t kMembers = 1u << 1 | 1u << 2 | 1u << 17 | 1u << 24 | 1u << 26;

#if defined(__mips__) && _MIPS_SIM == _ABIO32
// The fourth argument register and nine words of the stack.
int32_t call_with_words(const unsigned char (&bytes)[kBytes]) {
  using Function = int32_t (*)(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t,
                               uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t);
  const auto function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(user_trunk_set));
  uint32_t w[kBytes / 4];
  memcpy(w, bytes, sizeof w);
  return function(0, 0, 4, w[0], w[1], w[2], w[3], w[4], w[5], w[6], w[7], w[8], w[9]);
}
#elif defined(__x86_64__)
#ifdef __clang__
__attribute__((no_sanitize("function")))  // the type is wrong on purpose
#endif
// Five double words of the stack; the other registers hold no argument.
int32_t
call_with_words(const unsigned char (&bytes)[kBytes]) {
  using Function = int32_t (*)(uint32_t, uint32_t, uint32_t, uint64_t, uint64_t, uint64_t, uint64_t,
                               uint64_t, uint64_t, uint64_t, uint64_t);
  const auto function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(user_trunk_set));
  uint64_t w[kBytes / 8];
  memcpy(w, bytes, sizeof w);
  return function(0, 0, 4, 77, 77, 77, w[0], w[1], w[2], w[3], w[4]);
}
#else
#define SWCTL_NO_STACK_KNOWN
#endif

#ifndef SWCTL_NO_STACK_KNOWN
TEST_F(TrunkDescription, IsTakenFromTheFourthPlaceOn) {
  unsigned char bytes[kBytes];
  fill(bytes);
  EXPECT_EQ(call_with_words(bytes), 0);
  EXPECT_EQ(vchip::trunks(0).members[4], kMembers);
}
#endif

TEST_F(TrunkDescription, PutsTheFirstPortFiveBytesIn) {
  unsigned char bytes[kBytes];
  fill(bytes);
  user_trunk_desc_t description;
  static_assert(sizeof description == kBytes);
  memcpy(&description, bytes, sizeof description);
  EXPECT_EQ(user_trunk_set(0, 0, 4, description), 0);
  EXPECT_EQ(vchip::trunks(0).members[4], kMembers);
}

}  // namespace
