// SPDX-License-Identifier: MIT
#include "os/program.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

#include "os/high_descriptor.h"

namespace {

using testing::HasSubstr;

os::Ending run_shell(const std::string &script, os::Input input = os::Input::none) {
  return os::run_program({"sh", "-c", script}, input);
}

TEST(Program, EndsWithAStatusOrASignal) {
  EXPECT_EQ(run_shell("exit 7").status, 7);
  EXPECT_EQ(run_shell("exit 7").signal, 0);
  EXPECT_EQ(run_shell("kill -TERM $$").signal, SIGTERM);
}

TEST(Program, PrintsToStandardError) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  run_shell("echo out; echo err >&2");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "out\nerr\n");
}

TEST(Program, ReadsNothingUnlessItMay) {
  EXPECT_EQ(run_shell("read line").status, 1);
}

TEST(Program, WhatCannotBeRunIsNamed) {
  try {
    os::run_program({"/nowhere/no-such-program"}, os::Input::none);
    FAIL() << "it ran";
  } catch (const std::runtime_error &error) {
    EXPECT_THAT(error.what(), HasSubstr("/nowhere/no-such-program"));
  }
}

TEST(Program, IsFoundBesideThisOne) {
  EXPECT_TRUE(std::filesystem::equivalent(
      os::own_folder(), std::filesystem::read_symlink("/proc/self/exe").parent_path()));
  EXPECT_EQ(os::find_program("os_test"), os::own_folder() + "/os_test");
  EXPECT_EQ(os::find_program("no-such-program"), "no-such-program");
  EXPECT_EQ(os::find_program("./os_test"), "./os_test");
}

TEST(HighDescriptor, IsNoStandardStreamAndClosedInOtherPrograms) {
  const int file = os::open_high("/dev/null", O_RDONLY);
  ASSERT_GT(file, STDERR_FILENO);
  EXPECT_EQ(fcntl(file, F_GETFD), FD_CLOEXEC);
  close(file);
  EXPECT_EQ(os::open_high("/nowhere/file", O_RDONLY), -1);
  EXPECT_EQ(errno, ENOENT);
}

TEST(HighDescriptor, WithTheStandardStreamsClosed) {
  EXPECT_EXIT(
      {
        close(STDIN_FILENO);
        close(STDOUT_FILENO);
        const int file = os::open_high("/dev/null", O_RDONLY);
        _exit(file > STDERR_FILENO ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
