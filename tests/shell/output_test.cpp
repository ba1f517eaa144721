// SPDX-License-Identifier: MIT
#include <csignal>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>

#include "run/data_output.h"
#include "text.h"

namespace swsh {
namespace {

TEST(DataOutput, WritesAllOfALongText) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  // Far more than a pipe holds, so that it is written in pieces.
  const std::string text(1 << 20, 'x');
  std::thread writer([&] {
    DataOutput(ends[1]).write(text);
    close(ends[1]);
  });
  size_t total = 0;
  char buffer[4096];
  for (ssize_t got; (got = read(ends[0], buffer, sizeof buffer)) > 0;) {
    total += static_cast<size_t>(got);
  }
  writer.join();
  close(ends[0]);
  EXPECT_EQ(total, text.size());
}

std::string failure_of(int descriptor) {
  try {
    DataOutput(descriptor).write("text");
  } catch (const OutputError &error) {
    return error.what();
  }
  return "";
}

TEST(DataOutput, NoticesAClosedPipe) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  const auto before = signal(SIGPIPE, SIG_IGN);
  close(ends[0]);
  EXPECT_EQ(failure_of(ends[1]), "standard output: Broken pipe");
  signal(SIGPIPE, before);
  close(ends[1]);
}

TEST(DataOutput, NoticesThatItIsNotOpen) {
  EXPECT_EQ(failure_of(-1), "standard output: Bad file descriptor");
}

TEST(DataOutput, WritesNothingWithoutText) {
  EXPECT_NO_THROW(DataOutput(-1).write(""));
}

TEST(Text, IsQuotedWithoutControlCharacters) {
  EXPECT_EQ(in_quotes("a b"), "\"a b\"");
  EXPECT_EQ(in_quotes("\x1b[2J\n\x7f"), "\"\\x1b[2J\\x0a\\x7f\"");
  EXPECT_EQ(in_quotes("\xc3\xbc"), "\"\xc3\xbc\"");
}

TEST(Text, IsPaddedToAWidth) {
  EXPECT_EQ(padded("ab", 4), "ab  ");
  EXPECT_EQ(padded("abcd", 2), "abcd");
}

TEST(Text, IsJoined) {
  EXPECT_EQ(join({}, ", "), "");
  EXPECT_EQ(join({"a"}, ", "), "a");
  EXPECT_EQ(join({"a", "a"}, ", "), "a, a");
}

}  // namespace
}  // namespace swsh
