// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/swctl.h>

#include <algorithm>
#include <array>

#include "frame/fixed_list.h"
#include "support/library_test.h"

namespace {

using Fixed = int32_t (*)(uint32_t, ...);
struct Case {
  const char *name;
  Fixed function;
  int32_t result;
};

const std::vector<Case> &cases() {
#define ZERO(name) {#name, name, 0},
#define MINUS_1(name) {#name, name, -1},
  static const std::vector<Case> all = {FIXED_0(ZERO) FIXED_MINUS_1(MINUS_1)};
  return all;
}

// Words that every pointer of a call leads to.
using Live = std::array<uint32_t, 64>;

class FixedResults : public swctl_test::LibraryTest {
 protected:
  static int32_t call(const Case &test, uint32_t lead, Live &live) {
    return test.function(lead, 1u, 3, &live[0], &live[16], &live[32], &live[48]);
  }
  static Live pattern() {
    Live live;
    uint32_t word = 0x12345678;
    for (uint32_t &each : live) each = word++;
    return live;
  }
};

TEST_F(FixedResults, AreAHundredAndTwentySevenAndEight) {
  const auto zero = [](const Case &test) { return test.result == 0; };
  EXPECT_EQ(std::count_if(cases().begin(), cases().end(), zero), 127);
  EXPECT_EQ(cases().size(), 127u + 8u);
}

TEST_F(FixedResults, AreWhatTheListSaysWhateverTheLeadingArgument) {
  Live live = pattern();
  for (const Case &test : cases())
    for (const uint32_t lead : {0u, 1u, 0xFFFFFFFFu})
      EXPECT_EQ(call(test, lead, live), test.result) << test.name;
}

TEST_F(FixedResults, WriteNothingThroughAnyPointer) {
  for (const Case &test : cases()) {
    Live live = pattern();
    call(test, 0, live);
    EXPECT_EQ(live, pattern()) << test.name;
  }
}

TEST_F(FixedResults, ReadNoPointer) {
  // No page there: a read would end the program.
  for (const Case &test : cases()) {
    void *nowhere = reinterpret_cast<void *>(8);
    EXPECT_EQ(test.function(0u, nowhere, nowhere, nowhere, nowhere, nowhere, nowhere), test.result)
        << test.name;
  }
}

TEST_F(FixedResults, LeaveChipGlobalsAndStreamsAlone) {
  stateflag = 3;
  std::fill(std::begin(g_tmpBuffer), std::end(g_tmpBuffer), uint8_t{0x5A});
  const auto scratch = std::to_array(g_tmpBuffer);
  const std::string before = vchip::dump_json(-1);
  Live live = pattern();
  const auto all = [&] {
    for (const Case &test : cases()) call(test, 0, live);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
  EXPECT_NO_CALLS();
  EXPECT_EQ(vchip::dump_json(-1), before);
  EXPECT_EQ(stateflag, 3u);
  EXPECT_EQ(ONU_ERR_CODE, 0);
  EXPECT_EQ(std::to_array(g_tmpBuffer), scratch);
  stateflag = 0;
  std::fill(std::begin(g_tmpBuffer), std::end(g_tmpBuffer), uint8_t{0});
}

TEST_F(FixedResults, TakeARecordByValue) {
  struct Address {
    uint8_t byte[16];
  };
  const user_pbmp_t ports = {{1, 2, 3, 4, 5, 6, 7, 8}};
  EXPECT_EQ(User_ip6_mcast_set(0u, 1u, Address{}, Address{}, 10, ports), -1);
  EXPECT_NO_CALLS();
}

}  // namespace
