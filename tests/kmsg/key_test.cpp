// SPDX-License-Identifier: MIT
// From a thread's identity to its key.
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

#include "kmsg/thread_key.h"

namespace {

using swctl::key_of_identity;

TEST(Key, IsTheIdentityWhereThatFits) {
  for (uintptr_t identity : {0x1u, 0x1234u, 0x77F01740u, 0x7FFFFFFFu}) {
    EXPECT_EQ(key_of_identity(identity), static_cast<int32_t>(identity));
  }
}

TEST(Key, IsPositiveWhateverTheIdentity) {
  for (uintptr_t identity : {uintptr_t{0x80000000u}, uintptr_t{0xFFFFFFFFu}, UINTPTR_MAX}) {
    EXPECT_GT(key_of_identity(identity), 0) << identity;
  }
}

#if UINTPTR_MAX > 0xFFFFFFFF
TEST(Key, LongIdentityIsFolded) {
  // 0x7F12345678C0 / 64 is 0x1FC48D159E3: 0x48D159E3 xor 0x3F8.
  EXPECT_EQ(key_of_identity(0x7F12345678C0), 0x48D15A1B);
}

TEST(Key, FoldThatWouldBeZeroIsOne) {
  // Bit 31 of the quotient meets bit 0.
  EXPECT_EQ(key_of_identity((uintptr_t{1} << 37) | (uintptr_t{1} << 6)), 1);
}

TEST(Key, NeighboursDiffer) {
  std::set<int32_t> keys;
  const uintptr_t base = 0x7FFFF7D8A6C0;
  // Control blocks a page apart, and a full stack of the usual size apart.
  for (uintptr_t index = 0; index < 1000; ++index) {
    keys.insert(key_of_identity(base - index * 0x1000));
    keys.insert(key_of_identity(base - 0x40000000 - index * 0x801000));
  }
  EXPECT_EQ(keys.size(), 2000u);
}

TEST(Key, FarApartDiffers) {
  // The same low bits, as stacks at round addresses have them.
  std::set<int32_t> keys;
  for (uintptr_t index = 1; index < 60; ++index) {
    keys.insert(key_of_identity(0x8016C0 + (index << 37)));
  }
  EXPECT_EQ(keys.size(), 59u);
}

// Where kmsg.h says that folding may give two identities one key.
TEST(Key, IsSharedAboutAMultipleOf128GiBApart) {
  constexpr uintptr_t kFold = uintptr_t{1} << 37;
  const uintptr_t identity = 0x7F12345678C0;
  EXPECT_EQ(key_of_identity(identity), key_of_identity(identity ^ kFold ^ 0x40));
  EXPECT_EQ(key_of_identity(kFold + 0x40), key_of_identity(2 * kFold + 0xC0)) << "as 1 is";
  EXPECT_EQ(key_of_identity(identity), key_of_identity(0x48D15A1B)) << "one that fits";
}

// No two identities that are less than 128 GiB less 64 KiB apart.
TEST(Key, IsNotSharedNearerThanThat) {
  constexpr uint64_t kNear = (uint64_t{1} << 37) - 0x10000;
  uint64_t state = 1;
  const auto random = [&state] { return (state = state * 6364136223846793005u + 1) >> 17; };
  for (int round = 0; round < 200000; ++round) {
    const uint64_t one = (random() % (uint64_t{1} << 46) + (uint64_t{1} << 38)) & ~uint64_t{63};
    const uint64_t apart = (1 + random() % (kNear / 64 - 1)) * 64;
    // Half of them beside a border, where the upper bits change.
    const uint64_t low = round % 2 == 0 ? one : (one & ~((uint64_t{1} << 37) - 1)) - apart / 2;
    const auto other = low & ~uint64_t{63};
    const int32_t first = key_of_identity(static_cast<uintptr_t>(other));
    const int32_t second = key_of_identity(static_cast<uintptr_t>(other + apart));
    ASSERT_TRUE(first != second || first == 1) << std::hex << other << " and " << other + apart;
  }
}
#endif

TEST(Key, ThreadsOfAProcessHaveKeysOfTheirOwn) {
  constexpr size_t kThreads = 24;
  std::vector<int32_t> keys(kThreads);
  std::vector<std::thread> threads;
  for (int32_t &key : keys) threads.emplace_back([&key] { key = swctl::thread_key(); });
  // Ended threads keep their control blocks until they are joined.
  for (std::thread &thread : threads) thread.join();
  keys.push_back(swctl::thread_key());
  for (int32_t key : keys) EXPECT_GT(key, 0);
  EXPECT_EQ(std::set<int32_t>(keys.begin(), keys.end()).size(), kThreads + 1);
}

}  // namespace
