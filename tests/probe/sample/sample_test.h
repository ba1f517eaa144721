// SPDX-License-Identifier: MIT
#ifndef SWCTL_TESTS_PROBE_SAMPLE_TEST_H
#define SWCTL_TESTS_PROBE_SAMPLE_TEST_H

#include <swctl-probe/probe.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "sample/sample.h"

using Lines = std::vector<std::string>;

// Starts with no plan and no calls kept.
class SampleTest : public testing::Test {
 protected:
  void SetUp() override {
    swprobe::clear_plan();
    swprobe::forget();
  }
  void TearDown() override { swprobe::clear_plan(); }

  // sample_result() for the calls whose arguments do not matter.
  static int32_t call(int32_t value) {
    uint32_t written = 0;
    return sample_result(value, &written);
  }

  // The results of so many calls of sample_result(0).
  static std::vector<int32_t> results(int count) {
    std::vector<int32_t> all;
    for (int i = 0; i < count; ++i) all.push_back(call(0));
    return all;
  }
};

inline constexpr sample_entry kEntry = {10, {2, 0, 0, 0, 0, 0xab}, 3, {0x8000}};

#endif
