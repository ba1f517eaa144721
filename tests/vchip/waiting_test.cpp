// SPDX-License-Identifier: MIT
// A process that is stopped while it has the chip: the others are told, and
// may give up.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/log.h>
#include <swctl/platform/sdk.h>

#include <chrono>
#include <signal.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "child.h"

namespace {

using vchip_test::Environment;
using vchip_test::Outcome;
using vchip_test::run;
using vchip_test::wait_for;
using Clock = std::chrono::steady_clock;

int trace_forever() {
  const std::string text(200, 'x');
  for (;;) sys_trace_add_log(text.c_str(), text.c_str());
}

int read_link() {
  uint32_t link = 77;
  const int32_t result = rtk_port_link_get(0, 3, &link);
  if (result == VCHIP_E_BUSY) return link == 77 ? 50 : 51;
  return result;
}

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// With each kind of lock: what VCHIP_LOCK says.
class Waiting : public vchip_test::ImageTest, public testing::WithParamInterface<const char *> {
 protected:
  void SetUp() override {
    ImageTest::SetUp();
    make_image();
    holder_ = vchip_test::start(image(), trace_forever);
    stop_inside();
  }
  void TearDown() override {
    if (holder_ != 0) {
      kill(holder_, SIGKILL);
      wait_for(holder_);
    }
    ImageTest::TearDown();
  }

  Environment image() const {
    Environment environment = ImageTest::image();
    environment["VCHIP_LOCK"] = GetParam();
    return environment;
  }
  Environment waiting(const std::string &seconds) const {
    Environment environment = image();
    environment["VCHIP_WAIT"] = seconds;
    return environment;
  }

  // Stops the holder again and again until it has the lock.
  void stop_inside() {
    for (int attempt = 0; attempt < 10000; ++attempt) {
      usleep(static_cast<useconds_t>(100 + attempt % 17));
      kill(holder_, SIGSTOP);
      int status = 0;
      ASSERT_EQ(waitpid(holder_, &status, WUNTRACED), holder_);
      ASSERT_TRUE(WIFSTOPPED(status));
      if (vchip::image_status(image_).held) return;
      kill(holder_, SIGCONT);
    }
    FAIL() << "the holder was never stopped inside";
  }
  void go_on() { kill(holder_, SIGCONT); }

  pid_t resume_after(useconds_t time) {
    return vchip_test::start({}, [this, time] {
      usleep(time);
      go_on();
      return 0;
    });
  }

  std::string line(const std::string &text) const {
    return "swctl-vchip: image " + image_ + ": " + text + "\n";
  }
  std::string holder() const { return "process " + std::to_string(holder_) + " (vchip_lock_test)"; }

  pid_t holder_ = 0;
};

TEST_P(Waiting, ItIsNamedAfterASecondAndWaitedFor) {
  const pid_t resumer = resume_after(1600000);
  const auto start = Clock::now();
  const Outcome outcome = run(image(), read_link);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_GE(seconds_since(start), 1.5);
  EXPECT_EQ(outcome.output, line("waiting for " + holder() + ", which is stopped"));
  wait_for(resumer);
}

TEST_P(Waiting, AQuickHolderIsNotNamed) {
  const pid_t resumer = resume_after(200000);
  const Outcome outcome = run(image(), read_link);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  wait_for(resumer);
}

TEST_P(Waiting, PatienceEndsWithAResult) {
  const auto start = Clock::now();
  const Outcome outcome = run(waiting("1.2"), [] {
    if (read_link() != 50) return 1;
    if (vchip_reset() != VCHIP_E_BUSY) return 2;
    return adp_intf_2_phy_id(3) == VCHIP_NO_INTERFACE ? 0 : 3;
  });
  EXPECT_EQ(outcome.status, 0);
  EXPECT_GE(seconds_since(start), 3.6);
  // Said once, however often it happens.
  EXPECT_EQ(outcome.output,
            line("waiting for " + holder() + ", which is stopped") +
                line("held by " + holder() + ", which is stopped; gave up waiting"));
}

TEST_P(Waiting, ShortPatienceSaysOneLine) {
  const Outcome outcome = run(waiting("0.05"), read_link);
  EXPECT_EQ(outcome.status, 50);
  EXPECT_EQ(outcome.output, line("held by " + holder() + ", which is stopped; gave up waiting"));
}

TEST_P(Waiting, NoPatienceAtAll) {
  const auto start = Clock::now();
  EXPECT_EQ(run(waiting("0"), read_link).status, 50);
  EXPECT_LT(seconds_since(start), 1);
}

TEST_P(Waiting, AViewThrowsThatItGaveUp) {
  const Outcome outcome = run(waiting("0"), [] {
    try {
      vchip::port(0, 3);
    } catch (const std::runtime_error &error) {
      puts(error.what());
    }
    return 0;
  });
  EXPECT_NE(outcome.output.find("another process holds the virtual chip's image\n"),
            std::string::npos)
      << outcome.output;
}

TEST_P(Waiting, TheNextCallTriesAgain) {
  const Outcome outcome = run(waiting("0.01"), [this] {
    if (read_link() != 50) return 1;
    go_on();
    for (int attempt = 0; attempt < 1000; ++attempt)
      if (read_link() == 0) return 0;
    return 2;
  });
  EXPECT_EQ(outcome.status, 0);
}

// The threads of a process wait side by side, not one after the other.
TEST_P(Waiting, ThreadsGiveUpTogether) {
  const auto start = Clock::now();
  const Outcome outcome = run(waiting("1"), [] {
    std::vector<std::thread> threads;
    std::atomic<int> busy = 0;
    for (int thread = 0; thread < 8; ++thread)
      threads.emplace_back([&] { busy += read_link() == 50 ? 1 : 0; });
    for (std::thread &thread : threads) thread.join();
    return busy == 8 ? 0 : 1;
  });
  EXPECT_EQ(outcome.status, 0) << outcome.output;
  EXPECT_LT(seconds_since(start), 5);
}

TEST_P(Waiting, AWrongPatienceIsComplainedAboutOnce) {
  for (const std::string value : {"soon", "-1", "1s", "1e3", "nan", " 1"}) {
    const pid_t resumer = resume_after(100000);
    const Outcome outcome = run(waiting(value), [] {
      int failures = 0;
      for (int call = 0; call < 1000; ++call) failures += read_link() == 0 ? 0 : 1;
      return failures == 0 ? 0 : 1;
    });
    EXPECT_EQ(outcome.status, 0) << value;
    EXPECT_EQ(outcome.output, "swctl-vchip: VCHIP_WAIT=" + value +
                                  ": expected seconds, such as 2 or 0.5; waiting as long as it "
                                  "takes\n");
    wait_for(resumer);
    stop_inside();
  }
}

TEST_P(Waiting, TheStatusTellsWithoutTheLock) {
  usleep(300000);
  const vchip::ImageStatus status = vchip::image_status(image_);
  EXPECT_TRUE(status.held);
  EXPECT_EQ(status.holder, static_cast<uint32_t>(holder_));
  EXPECT_EQ(status.holder_name, "vchip_lock_test");
  EXPECT_TRUE(status.holder_stopped);
  EXPECT_GE(status.held_ms, 250u);
  EXPECT_LT(status.held_ms, 60000u);
  ASSERT_EQ(status.users.size(), 1u);
  EXPECT_EQ(status.users[0].process, static_cast<uint32_t>(holder_));
  EXPECT_EQ(status.users[0].name, "vchip_lock_test");
  EXPECT_NEAR(status.users[0].since, static_cast<double>(time(nullptr)), 60);
  EXPECT_FALSE(status.more_users);
}

TEST_P(Waiting, AHolderThatIsKilledIsNotWaitedFor) {
  const uint32_t before = vchip::image_status(image_).interrupted_writes;
  const bool changing = vchip::image_status(image_).changing;
  kill(holder_, SIGKILL);
  wait_for(holder_);
  holder_ = 0;
  const Outcome outcome = run(waiting("20"), read_link);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(vchip::image_status(image_).interrupted_writes, before + (changing ? 1 : 0));
}

// A copy has the lock as it was, and nobody to give it back.
TEST_P(Waiting, ACopyOfAHeldImageIsFree) {
  const std::string copy = file("copy.img");
  vchip_test::write_file(copy, vchip_test::read_file(image_));
  EXPECT_FALSE(vchip::image_status(copy).held);
  Environment environment = waiting("20");
  environment["VCHIP_IMAGE"] = copy;
  const Outcome outcome = run(environment, read_link);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "");
}

INSTANTIATE_TEST_SUITE_P(Locks, Waiting, testing::Values("", "record"), [](const auto &lock) {
  return std::string(lock.param).empty() ? "BestLock" : "RecordLock";
});

}  // namespace
