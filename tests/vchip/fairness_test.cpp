// SPDX-License-Identifier: MIT
// Who waits for the chip gets it, although another takes it again and again.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <signal.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::run;
using vchip_test::wait_for;

constexpr double kLimit = 200;  // microseconds, at the 99th percentile
constexpr int kCalls = 300;
// A machine that is busy with other things stops any thread for longer
// than that. One quiet moment is enough; an unfair lock has none.
constexpr int kMoments = 60;

double waited() {
  uint32_t link = 0;
  const auto start = std::chrono::steady_clock::now();
  rtk_port_link_get(0, 3, &link);
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
      .count();
}

double percentile_99() {
  std::vector<double> times;
  for (int call = 0; call < kCalls; ++call) {
    times.push_back(waited());
    usleep(50);
  }
  std::sort(times.begin(), times.end());
  return times[kCalls * 99 / 100];
}

int expect_quick_calls() {
  double best = 1e9;
  for (int moment = 0; moment < kMoments && best > kLimit; ++moment)
    best = std::min(best, percentile_99());
  if (best <= kLimit) return 0;
  printf("99 of 100 calls waited %.0f microseconds\n", best);
  return 1;
}

void loop(const std::atomic<bool> &stop) {
  while (!stop) rtk_port_adminEnable_set(0, 5, 1);
}

class Fairness : public vchip_test::ImageTest {};

TEST_F(Fairness, AmongProcesses) {
  make_image();
  const std::atomic<bool> never = false;
  const pid_t looper = vchip_test::start(image(), [&] {
    loop(never);
    return 0;
  });
  const vchip_test::Outcome outcome = run(image(), expect_quick_calls);
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  kill(looper, SIGKILL);
  wait_for(looper);
}

TEST_F(Fairness, AmongThreads) {
  for (const vchip_test::Environment &environment : {image(), vchip_test::Environment{}}) {
    const vchip_test::Outcome outcome = run(environment, [] {
      std::atomic<bool> stop = false;
      std::thread looper([&] { loop(stop); });
      const int status = expect_quick_calls();
      stop = true;
      looper.join();
      return status;
    });
    EXPECT_EQ(outcome.status, 0) << outcome.output;
  }
}

}  // namespace
