// SPDX-License-Identifier: MIT
// Several processes, one chip.
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <atomic>
#include <signal.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::Environment;
using vchip_test::Outcome;
using vchip_test::run;
using vchip_test::start;
using vchip_test::wait_for;

constexpr int kProcesses = 8;
constexpr int kThreads = 4;
constexpr int kLines = 1000;  // of each thread
constexpr int kRounds = 5000;
constexpr int kForks = 30;
constexpr vchip_partner_t kPartner = {1, 0xf6000000u};

class Sharing : public vchip_test::ImageTest {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
  }
  Environment silent() const {
    Environment environment = image();
    environment["VCHIP_LOG"] = "none";
    return environment;
  }
  void expect_lines(uint64_t expected) {
    const Outcome outcome = run(image(), [] {
      printf("%llu", static_cast<unsigned long long>(vchip::platform().log_lines));
      return 0;
    });
    EXPECT_EQ(outcome.output, std::to_string(expected));
  }
};

void log_lines(int lines) {
  for (int line = 0; line < lines; ++line) Log_logging_func(6, 0, "T", "%d\n", line);
}

TEST_F(Sharing, TheChipOutlivesItsProcesses) {
  EXPECT_EQ(run(image(), [] { return vchip_cable_plug(1, 3, &kPartner) == 0 ? 0 : 1; }).status, 0);
  EXPECT_EQ(run(image(),
                [] {
                  uint32_t link = 9;
                  if (rtk_port_link_get(1, 3, &link) != 0 || link != 1) return 1;
                  return rtk_port_adminEnable_set(1, 3, 0) == 0 ? 0 : 2;
                })
                .status,
            0);
  EXPECT_EQ(run(image(),
                [] {
                  const vchip::PortView view = vchip::port(1, 3);
                  return view.cable && !view.admin && !view.link && !vchip::port(0, 3).cable ? 0
                                                                                             : 1;
                })
                .status,
            0);
}

TEST_F(Sharing, ARunningProcessSeesTheOthersChange) {
  const pid_t watcher = start(image(), [] {
    uint32_t link = 0;
    while (link == 0)
      if (rtk_port_link_get(0, 5, &link) != 0) return 1;
    // And answers, for the other to see.
    return rtk_port_adminEnable_set(0, 5, 0) == 0 ? 0 : 2;
  });
  const pid_t changer = start(image(), [] {
    if (vchip_cable_plug(0, 5, &kPartner) != 0) return 1;
    uint32_t link = 1;
    while (link == 1)
      if (rtk_port_link_get(0, 5, &link) != 0) return 2;
    return 0;
  });
  EXPECT_EQ(wait_for(watcher), 0);
  EXPECT_EQ(wait_for(changer), 0);
}

TEST_F(Sharing, ResetIsSeenByAll) {
  EXPECT_EQ(run(image(), [] { return vchip_cable_plug(0, 5, &kPartner) == 0 ? 0 : 1; }).status, 0);
  EXPECT_EQ(run(image(), [] { return vchip_reset() == 0 ? 0 : 1; }).status, 0);
  EXPECT_EQ(run(image(), [] { return vchip::port(0, 5).cable ? 1 : 0; }).status, 0);
}

TEST_F(Sharing, PrivateChipsAreNotShared) {
  EXPECT_EQ(run({}, [] { return vchip_cable_plug(0, 5, &kPartner) == 0 ? 0 : 1; }).status, 0);
  EXPECT_EQ(run({}, [] { return vchip::port(0, 5).cable ? 1 : 0; }).status, 0);
  EXPECT_EQ(run(image(), [] { return vchip::port(0, 5).cable ? 1 : 0; }).status, 0);
}

// Counting is reading and writing: without the lock, counts get lost.
TEST_F(Sharing, NoStepOfManyProcessesAndThreadsIsLost) {
  std::vector<pid_t> children;
  vchip_test::Gate gate;
  for (int process = 0; process < kProcesses; ++process)
    children.push_back(start(silent(), [&] {
      gate.wait();
      std::vector<std::thread> threads;
      for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(log_lines, kLines);
      for (std::thread &thread : threads) thread.join();
      return 0;
    }));
  gate.open();
  for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
  expect_lines(kProcesses * kThreads * kLines);
}

// Three words that always change together are never seen half changed.
TEST_F(Sharing, AStepIsSeenWholeOrNotAtAll) {
  std::vector<pid_t> children;
  vchip_test::Gate gate;
  for (uint32_t process = 0; process < 4; ++process)
    children.push_back(start(image(), [&, process] {
      gate.wait();
      const uint32_t mine = process % 2;
      for (int round = 0; round < kRounds; ++round) {
        uint32_t speed = 9, duplex = 9, pause = 9;
        if (rtk_port_phyForceModeAbility_set(0, 1, mine, mine, mine) != 0) return 1;
        if (rtk_port_phyForceModeAbility_get(0, 1, &speed, &duplex, &pause) != 0) return 2;
        if (speed != duplex || duplex != pause) return 3;
      }
      return 0;
    }));
  gate.open();
  for (const pid_t child : children) EXPECT_EQ(wait_for(child), 0);
}

TEST_F(Sharing, AForkedChildUsesTheSameImage) {
  const Outcome outcome = run(silent(), [] {
    log_lines(1);
    const pid_t child = fork();
    log_lines(100);
    if (child == 0) _exit(0);
    return vchip_test::wait_for(child);
  });
  EXPECT_EQ(outcome.status, 0);
  expect_lines(201);
}

TEST_F(Sharing, AForkedChildOfAPrivateChipHasItsOwnCopy) {
  const Outcome outcome = run({}, [] {
    if (vchip_cable_plug(0, 1, &kPartner) != 0) return 1;
    const pid_t child = fork();
    if (child == 0) {
      const bool inherited = vchip::port(0, 1).cable;
      _exit(inherited && vchip_cable_pull(0, 1) == 0 ? 0 : 2);
    }
    const int status = vchip_test::wait_for(child);
    return vchip::port(0, 1).cable ? status : 3;
  });
  EXPECT_EQ(outcome.status, 0);
}

// A fork in the middle of the other threads' steps inherits no held lock.
TEST_F(Sharing, AForkAmidBusyThreads) {
  for (const Environment &environment : {silent(), Environment{{"VCHIP_LOG", "none"}}}) {
    const Outcome outcome = run(environment, [] {
      std::atomic<bool> stop = false;
      std::vector<std::thread> threads;
      for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&] {
          while (!stop) log_lines(1);
        });
      int failures = 0;
      for (int round = 0; round < kForks && failures == 0; ++round) {
        const pid_t child = fork();
        if (child == 0) {
          alarm(20);  // not inherited, and a held lock would hang
          uint32_t link = 0;
          _exit(rtk_port_link_get(0, 1, &link) == 0 ? 0 : 1);
        }
        failures += vchip_test::wait_for(child) == 0 ? 0 : 1;
      }
      stop = true;
      for (std::thread &thread : threads) thread.join();
      return failures;
    });
    EXPECT_EQ(outcome.status, 0) << outcome.output;
  }
}

}  // namespace
