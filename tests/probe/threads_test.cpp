// SPDX-License-Identifier: MIT
// Many threads at once: nothing is lost, nothing is counted twice.
#include <swctl-probe/probe.h>
#include <swctl/platform/sdk.h>

#include <atomic>
#include <gtest/gtest.h>
#include <set>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 8;
constexpr int kCalls = 500;

// Every thread calls for its own port.
void call_often(int32_t port, std::atomic<int> &failures) {
  for (int i = 0; i < kCalls; ++i) {
    uint32_t link = 0;
    if (rtk_port_link_get(0, port, &link) == -5) ++failures;
  }
}

int failures_of_all_threads() {
  std::atomic<int> failures = 0;
  std::vector<std::thread> threads;
  for (int32_t port = 0; port < kThreads; ++port) {
    threads.emplace_back([port, &failures] { call_often(port, failures); });
  }
  for (std::thread &thread : threads) thread.join();
  return failures;
}

class ThreadsTest : public testing::Test {
 protected:
  void SetUp() override {
    swprobe::clear_plan();
    swprobe::forget();
  }
  void TearDown() override { swprobe::clear_plan(); }
};

TEST_F(ThreadsTest, EveryCallIsKeptOnce) {
  EXPECT_EQ(failures_of_all_threads(), 0);
  std::set<uint64_t> numbers;
  std::vector<int> calls_of(kThreads, 0);
  for (const swprobe::Call &call : swprobe::take()) {
    numbers.insert(call.number);
    ++calls_of.at(static_cast<size_t>(call.in("port")));
    EXPECT_EQ(call.out("link"), 7);
  }
  EXPECT_EQ(calls_of, std::vector<int>(kThreads, kCalls));
  EXPECT_EQ(numbers.size(), static_cast<size_t>(kThreads * kCalls));
  EXPECT_EQ(*numbers.rbegin() - *numbers.begin() + 1, numbers.size());
}

TEST_F(ThreadsTest, ThePlanCountsTheCallsOfAllThreads) {
  swprobe::plan("rtk_port_link_get every 10 result -5");
  EXPECT_EQ(failures_of_all_threads(), kThreads * kCalls / 10);
  EXPECT_EQ(swprobe::made_up_count(), static_cast<uint64_t>(kThreads * kCalls / 10));
}

TEST_F(ThreadsTest, ThePlanMayChangeMeanwhile) {
  std::atomic<bool> done = false;
  std::thread planner([&done] {
    while (!done) {
      swprobe::plan("rtk_port_link_get nth 1 result -5");
      swprobe::clear_plan();
      swprobe::take_lines();
    }
  });
  failures_of_all_threads();
  done = true;
  planner.join();
  swprobe::clear_plan();
  uint32_t link = 0;
  EXPECT_EQ(rtk_port_link_get(0, 1, &link), 0);
}

}  // namespace
