// SPDX-License-Identifier: MIT
#include "output/wrap.h"

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace swsh {
namespace {

TEST(Wrapping, KeepsWhatFits) {
  EXPECT_EQ(wrapped("one two", 0, 2, 7), "one two");
  EXPECT_EQ(wrapped("", 0, 2, 7), "");
}

TEST(Wrapping, BreaksBetweenWords) {
  EXPECT_EQ(wrapped("one two three", 0, 2, 7), "one two\n  three");
  EXPECT_EQ(wrapped("one two three", 0, 2, 6), "one\n  two\n  three");
}

TEST(Wrapping, CountsWhereTheFirstLineBegins) {
  EXPECT_EQ(wrapped("one two", 3, 3, 9), "one\n   two");
  EXPECT_EQ(wrapped("one two", 3, 3, 10), "one two");
}

TEST(Wrapping, LetsALongWordStickOut) {
  EXPECT_EQ(wrapped("a longest b", 0, 1, 4), "a\n longest\n b");
}

TEST(Wrapping, KeepsAPartTogether) {
  const std::vector<std::string> parts = {"set", "[speed 10]", "[mtu 64]"};
  EXPECT_EQ(wrapped(parts, 0, 4, 14), "set [speed 10]\n    [mtu 64]");
  EXPECT_EQ(wrapped(parts, 0, 4, 13), "set\n    [speed 10]\n    [mtu 64]");
}

TEST(Wrapping, CountsCharactersAndNotBytes) {
  EXPECT_EQ(wrapped("\u2013\u2013 \u2013\u2013", 0, 0, 5), "\u2013\u2013 \u2013\u2013");
}

class Width : public testing::Test {
 protected:
  void SetUp() override {
    unsetenv("COLUMNS");
    ASSERT_EQ(openpty(&outer_, &terminal_, nullptr, nullptr, nullptr), 0);
  }
  void TearDown() override {
    close(outer_);
    close(terminal_);
    unsetenv("COLUMNS");
  }
  void resize(unsigned short columns) {
    winsize size = {};
    size.ws_col = columns;
    ASSERT_EQ(ioctl(terminal_, TIOCSWINSZ, &size), 0);
  }

  int outer_ = -1;
  int terminal_ = -1;
};

TEST_F(Width, IsThatOfTheTerminal) {
  resize(132);
  EXPECT_EQ(terminal_width(terminal_), 132);
  EXPECT_EQ(text_width(terminal_), 132);
}

TEST_F(Width, OfATerminalThatDoesNotKnowIsTheUsualOne) {
  resize(0);
  EXPECT_EQ(terminal_width(terminal_), kUsualWidth);
}

TEST_F(Width, OfAFileIsTheUsualOne) {
  const int file = open("/dev/null", O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(terminal_width(file), std::nullopt);
  EXPECT_EQ(text_width(file), kUsualWidth);
  setenv("COLUMNS", "100", 1);
  EXPECT_EQ(terminal_width(file), std::nullopt);
  EXPECT_EQ(text_width(file), 100);
  close(file);
}

TEST_F(Width, IsFirstThatOfTheEnvironment) {
  resize(132);
  setenv("COLUMNS", "60", 1);
  EXPECT_EQ(terminal_width(terminal_), 60);
}

TEST_F(Width, IsNotWhatIsNoNumber) {
  resize(132);
  for (const char *columns : {"", "0", "-1", "wide", "99999999999999999999"}) {
    setenv("COLUMNS", columns, 1);
    EXPECT_EQ(terminal_width(terminal_), 132) << columns;
  }
}

}  // namespace
}  // namespace swsh
