// SPDX-License-Identifier: MIT
// The short way of calls that nobody watches.
#include <swctl-probe/probe.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sample/sample.h"
#include "site.h"

namespace {

TEST(IdleTest, IsOpenUntilSomebodyWatches) {
  const swprobe::Site *site = swprobe::find_call("sample_result");
  ASSERT_NE(site, nullptr);
  EXPECT_EQ(site->idle.load(), nullptr);

  uint32_t written = 0;
  EXPECT_EQ(sample_result(3, &written), 3);
  EXPECT_NE(site->idle.load(), nullptr);
  EXPECT_EQ(site->idle.load(), site->next.load());
  EXPECT_EQ(sample_result(4, &written), 4);
  EXPECT_EQ(written, 4u);

  swprobe::forget();
  EXPECT_EQ(site->idle.load(), nullptr);
  EXPECT_EQ(sample_result(5, &written), 5);
  EXPECT_EQ(site->idle.load(), nullptr);
  EXPECT_THAT(swprobe::take_lines(),
              testing::ElementsAre("sample_result(value=5, written=>4) = 5"));
}

}  // namespace
