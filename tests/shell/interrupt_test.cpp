// SPDX-License-Identifier: MIT
#include "interrupt.h"

#include <csignal>
#include <gtest/gtest.h>
#include <thread>

namespace swsh {
namespace {

using std::chrono::milliseconds;

TEST(Interrupt, LeavesAMarkThatIsTakenOnce) {
  const Interrupts interrupts;
  EXPECT_FALSE(is_interrupted());
  raise(SIGINT);
  EXPECT_TRUE(is_interrupted());
  EXPECT_TRUE(take_interrupt());
  EXPECT_FALSE(take_interrupt());
}

TEST(Interrupt, StopsWhatIsRepeated) {
  const Interrupts interrupts;
  EXPECT_NO_THROW(stop_if_interrupted());
  raise(SIGINT);
  EXPECT_THROW(stop_if_interrupted(), CommandError);
  EXPECT_NO_THROW(stop_if_interrupted());
}

TEST(Interrupt, EndsAWait) {
  const Interrupts interrupts;
  EXPECT_TRUE(wait_for(milliseconds(1)));
  raise(SIGINT);
  EXPECT_FALSE(wait_for(std::chrono::hours(1)));
  const pthread_t waiter = pthread_self();
  std::thread other([&] {
    std::this_thread::sleep_for(milliseconds(50));
    pthread_kill(waiter, SIGINT);
  });
  EXPECT_FALSE(wait_for(std::chrono::hours(1)));
  other.join();
}

TEST(Interrupt, ASecondOneEndsTheProgramIfNobodyHeeds) {
  EXPECT_EXIT(
      {
        const Interrupts interrupts;
        raise(SIGINT);
        raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(Interrupt, ASecondOneDoesNotEndItIfTheFirstWasTaken) {
  const Interrupts interrupts;
  raise(SIGINT);
  EXPECT_TRUE(take_interrupt());
  raise(SIGINT);
  EXPECT_TRUE(take_interrupt());
}

TEST(Interrupt, ASecondOneDoesNotEndItAfterASecond) {
  const Interrupts interrupts;
  raise(SIGINT);
  std::this_thread::sleep_for(milliseconds(1100));
  raise(SIGINT);
  EXPECT_TRUE(take_interrupt());
}

TEST(Interrupt, IsAsBeforeAfterwards) {
  struct sigaction before = {};
  sigaction(SIGINT, nullptr, &before);
  { const Interrupts interrupts; }
  struct sigaction after = {};
  sigaction(SIGINT, nullptr, &after);
  EXPECT_EQ(after.sa_handler, before.sa_handler);
}

}  // namespace
}  // namespace swsh
