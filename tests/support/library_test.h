// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_SUPPORT_LIBRARY_TEST_H
#define SWCTL_TESTS_SUPPORT_LIBRARY_TEST_H

#include <swctl-probe/probe.h>
#include <swctl-vchip/vchip.h>

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace swctl_test {

using Lines = std::vector<std::string>;
using Outputs = std::vector<std::pair<std::string, int64_t>>;

// The fixture of every test of the library: a chip as after power-on, and a
// probe that records calls and has no answers of its own.
class LibraryTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(vchip_reset(), 0);
    swprobe::clear_plan();
    swprobe::forget();
  }
  void TearDown() override { swprobe::clear_plan(); }
};

// Makes the chip answer every coming call of `name` with `result`, writing
// `outputs`. Other outputs stay as the caller had them.
inline void chip_answers(const std::string &name, int64_t result, const Outputs &outputs = {}) {
  swprobe::Answer answer;
  answer.result = result;
  answer.outputs = outputs;
  swprobe::answer(name, 0, answer);
}

// What a function under test printed while it ran.
struct Printed {
  std::string standard_output;
  std::string standard_error;
};

template <typename Function>
Printed printed_by(Function function) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  function();
  Printed printed;
  printed.standard_error = testing::internal::GetCapturedStderr();
  printed.standard_output = testing::internal::GetCapturedStdout();
  return printed;
}

#define EXPECT_CALLS(...) EXPECT_EQ(swprobe::take_lines(), (swctl_test::Lines{__VA_ARGS__}))
#define EXPECT_NO_CALLS() EXPECT_EQ(swprobe::take_lines(), swctl_test::Lines{})

#define EXPECT_PRINTED(printed, output, error)    \
  do {                                            \
    const swctl_test::Printed &said_ = (printed); \
    EXPECT_EQ(said_.standard_output, (output));   \
    EXPECT_EQ(said_.standard_error, (error));     \
  } while (false)

}  // namespace swctl_test

#endif
