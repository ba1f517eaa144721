// SPDX-License-Identifier: MIT
// The progress line, on a terminal of the test's own and on a pipe.
#include "chip/progress.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

constexpr size_t kManySteps = 64;

// Standard error is `descriptor` as long as this lives.
class Redirected {
 public:
  explicit Redirected(int descriptor) : saved_(dup(STDERR_FILENO)) {
    dup2(descriptor, STDERR_FILENO);
  }
  ~Redirected() {
    dup2(saved_, STDERR_FILENO);
    close(saved_);
  }
  Redirected(const Redirected &) = delete;
  Redirected &operator=(const Redirected &) = delete;

 private:
  int saved_;
};

void steps(swsh::Progress &progress) {
  for (size_t step = 0; step < kManySteps; ++step) progress.step();
}

std::string waiting_in(int descriptor) {
  std::string text;
  pollfd waiting = {descriptor, POLLIN, 0};
  char part[256];
  while (poll(&waiting, 1, 100) > 0 && (waiting.revents & POLLIN) != 0) {
    const ssize_t length = read(descriptor, part, sizeof part);
    if (length <= 0) break;
    text.append(part, static_cast<size_t>(length));
  }
  return text;
}

void work(std::chrono::milliseconds time) {
  swsh::Progress progress("addresses read");
  steps(progress);
  std::this_thread::sleep_for(time);
  steps(progress);
}

class ProgressLine : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(openpty(&reader_, &terminal_, nullptr, nullptr, nullptr), 0); }
  void TearDown() override {
    close(reader_);
    close(terminal_);
  }
  int reader_ = -1;
  int terminal_ = -1;
};

TEST_F(ProgressLine, AppearsAfterASecondAndGoesAwayAtTheEnd) {
  {
    const Redirected to_terminal(terminal_);
    work(std::chrono::milliseconds(1100));
  }
  EXPECT_EQ(waiting_in(reader_), "\raddresses read: 128\r\x1b[K");
}

TEST_F(ProgressLine, NeverAppearsInQuickWork) {
  {
    const Redirected to_terminal(terminal_);
    work(std::chrono::milliseconds(0));
  }
  EXPECT_EQ(waiting_in(reader_), "");
}

TEST_F(ProgressLine, NeverAppearsOffATerminal) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  {
    const Redirected to_pipe(ends[1]);
    work(std::chrono::milliseconds(1100));
  }
  EXPECT_EQ(waiting_in(ends[0]), "");
  close(ends[0]);
  close(ends[1]);
}

}  // namespace
