// SPDX-License-Identifier: MIT
// The functions over the shared scratch buffer, and the two that only speak.
#include <swctl/frame.h>
#include <swctl/stp.h>

#include <array>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/library_test.h"

namespace {

constexpr size_t kListBytes = 2048;

class Scratch : public swctl_test::LibraryTest {
 protected:
  void SetUp() override {
    LibraryTest::SetUp();
    for (size_t index = 0; index < sizeof g_tmpBuffer; ++index)
      g_tmpBuffer[index] = static_cast<uint8_t>(index * 7 + 1);
  }
  void TearDown() override {
    memset(g_tmpBuffer, 0, sizeof g_tmpBuffer);
    LibraryTest::TearDown();
  }
};

TEST_F(Scratch, ListIsTheBufferAndZeros) {
  std::array<uint16_t, kListBytes / 2 + 1> list;
  list.fill(0xBEEF);
  EXPECT_EQ(user_stg_vlan_each_time_list(3, 1, 7, list.data()), 0);
  EXPECT_EQ(memcmp(list.data(), g_tmpBuffer, sizeof g_tmpBuffer), 0);
  for (size_t word = sizeof g_tmpBuffer / 2; word < kListBytes / 2; ++word)
    ASSERT_EQ(list[word], 0) << word;
  EXPECT_EQ(list.back(), 0xBEEF) << "more than 1024 words were written";
  EXPECT_NO_CALLS();
}

TEST_F(Scratch, ListFollowsTheBuffer) {
  uint16_t list[kListBytes / 2];
  const uint16_t vlans[] = {10, 4094};
  memcpy(g_tmpBuffer, vlans, sizeof vlans);
  EXPECT_EQ(user_stg_vlan_each_time_list(0, 0, 0, list), 0);
  EXPECT_EQ(list[0], 10);
  EXPECT_EQ(list[1], 4094);
}

TEST_F(Scratch, BpduGetHandsSixBytesOver) {
  uint8_t mac[7] = {0, 0, 0, 0, 0, 0, 0xAA};
  EXPECT_EQ(user_l2_bpdu_get(3, 1, 7, mac), 0);
  EXPECT_THAT(mac, testing::ElementsAre(1, 8, 15, 22, 29, 36, 0xAA));
  EXPECT_NO_CALLS();
}

TEST_F(Scratch, BpduSetChangesNothing) {
  const uint8_t mac[6] = {1, 0x80, 0xC2, 0, 0, 0};
  uint8_t before[sizeof g_tmpBuffer];
  memcpy(before, g_tmpBuffer, sizeof before);
  EXPECT_EQ(user_l2_bpdu_set(3, 1, 7, mac), 0);
  EXPECT_EQ(memcmp(before, g_tmpBuffer, sizeof before), 0);
  EXPECT_NO_CALLS();
}

// Memory that ends with a page that nobody may touch.
class Fence {
 public:
  Fence() : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    memory_ = static_cast<uint8_t *>(
        mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    mprotect(memory_ + page_, page_, PROT_NONE);
  }
  ~Fence() { munmap(memory_, 2 * page_); }
  const uint8_t *end() const { return memory_ + page_; }

 private:
  size_t page_;
  uint8_t *memory_;
};

// Whether the call comes back, in a process of its own.
bool survives(const uint8_t *mac) {
  const pid_t child = fork();
  if (child == 0) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDERR_FILENO);
    _exit(user_l2_bpdu_set(0, 0, 0, mac));
  }
  int status = -1;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(Scratch, BpduSetReadsSixBytesAndNoMore) {
  const Fence fence;
  EXPECT_TRUE(survives(fence.end() - 6));
  EXPECT_FALSE(survives(fence.end() - 5));
  EXPECT_FALSE(survives(fence.end()));
}

TEST_F(Scratch, ListsThatCannotBeGivenSaySo) {
  int32_t result = 7;
  EXPECT_PRINTED(swctl_test::printed_by([&] { result = user_stg_vlan_list(1, 0, 5, 9); }), "",
                 "user_stg_vlan_list 649: Can not get vlan list int STG in kenerl mode\n");
  EXPECT_EQ(result, 0);
  result = 7;
  EXPECT_PRINTED(swctl_test::printed_by([&] { result = user_stg_list(0); }), "",
                 "user_stg_list 677: Can not get STG list in kenerl mode\n");
  EXPECT_EQ(result, 0);
  EXPECT_NO_CALLS();
}

TEST_F(Scratch, TheOthersPrintNothing) {
  const auto all = [] {
    uint16_t list[kListBytes / 2];
    uint8_t mac[6] = {};
    user_stg_vlan_each_time_list(0, 0, 0, list);
    user_l2_bpdu_set(0, 0, 0, mac);
    user_l2_bpdu_get(0, 0, 0, mac);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

// Before any program writes it.
TEST(ScratchAtLoad, BpduGetAnswersZeros) {
  uint8_t mac[6] = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(user_l2_bpdu_get(0, 0, 0, mac), 0);
  EXPECT_THAT(mac, testing::Each(0));
}

}  // namespace
