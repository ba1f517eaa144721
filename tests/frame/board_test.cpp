// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/frame.h>

#include <algorithm>
#include <array>
#include <numeric>

#include "support/library_test.h"

namespace {

using swctl_test::printed_by;

class Board : public swctl_test::LibraryTest {
 protected:
  void TearDown() override {
    std::fill(std::begin(g_tmpBuffer), std::end(g_tmpBuffer), uint8_t{0});
    LibraryTest::TearDown();
  }
};

TEST_F(Board, PrintsAFixedLine) {
  const struct {
    int32_t (*function)(uint32_t, ...);
    const char *line;
  } cases[] = {
      {user_attach_check, "user_attach_check 1460 ret = 0\n"},
      {user_device_attach, "user_device_attach 1542 ret = 0\n"},
      {user_device_detach, "user_device_detach 1560 ret = 0\n"},
      {user_auth_init, "user_auth_init 61 ret = 0\n"},
      {user_auth_mode_set, "user_auth_mode_set 112 ret = 0\n"},
  };
  for (const auto &test : cases) {
    for (const uint32_t lead : {0u, 0xFFFFFFFFu}) {
      uint32_t word = 0x12345678;
      const auto call = [&] { EXPECT_EQ(test.function(lead, &word, &word, &word), 0); };
      EXPECT_PRINTED(printed_by(call), test.line, "");
      EXPECT_EQ(word, 0x12345678u);
    }
  }
  EXPECT_NO_CALLS();
}

TEST_F(Board, AttachMaxPrintsTheCallersWordAndLeavesIt) {
  uint32_t word = 7;
  EXPECT_PRINTED(printed_by([&] { EXPECT_EQ(user_attach_max(9, &word), 0); }),
                 "user_attach_max 1498 max_units=7 ret = 0\n", "");
  EXPECT_EQ(word, 7u);
  word = 0xFFFFFFFE;
  EXPECT_PRINTED(printed_by([&] { EXPECT_EQ(user_attach_max(0, &word), 0); }),
                 "user_attach_max 1498 max_units=-2 ret = 0\n", "");
  EXPECT_NO_CALLS();
}

TEST_F(Board, AuthModeGetPrintsTheCallersWordAndLeavesIt) {
  uint32_t word = 3;
  EXPECT_PRINTED(printed_by([&] { EXPECT_EQ(user_auth_mode_get(9, 99, -1, &word), 0); }),
                 "user_auth_mode_get 132 mode = 3 ret = 0\n", "");
  EXPECT_EQ(word, 3u);
  word = 0xFFFFFFFF;
  EXPECT_PRINTED(printed_by([&] { EXPECT_EQ(user_auth_mode_get(0, 0, 0, &word), 0); }),
                 "user_auth_mode_get 132 mode = -1 ret = 0\n", "");
  EXPECT_NO_CALLS();
}

using Bytes = std::array<uint8_t, SWCTL_TMP_BUFFER_SIZE>;

TEST_F(Board, I2cReadCopiesFromTheStartOfTheScratchBuffer) {
  std::iota(std::begin(g_tmpBuffer), std::end(g_tmpBuffer), uint8_t{1});
  Bytes bytes = {};
  EXPECT_EQ(user_i2c_ioctl(9, 8, 7, 1, bytes.data(), 3), 0);
  Bytes expected = {1, 2, 3};
  EXPECT_EQ(bytes, expected);
  EXPECT_EQ(user_i2c_ioctl(0, 0, 0, 1, bytes.data(), SWCTL_TMP_BUFFER_SIZE), 0);
  EXPECT_EQ(bytes, std::to_array(g_tmpBuffer));
  EXPECT_NO_CALLS();
}

TEST_F(Board, I2cReadOfNothingCopiesNothing) {
  g_tmpBuffer[0] = 1;
  Bytes bytes = {9};
  EXPECT_EQ(user_i2c_ioctl(0, 0, 0, 1, bytes.data(), 0), 0);
  EXPECT_EQ(bytes, (Bytes{9}));
}

TEST_F(Board, OtherI2cCommandsDoNothing) {
  g_tmpBuffer[0] = 1;
  for (const uint32_t command : {0u, 2u, 0x101u, 0xFFFFFFFFu}) {
    Bytes bytes = {9};
    EXPECT_EQ(user_i2c_ioctl(1, 1, 1, command, bytes.data(), 4), 0);
    EXPECT_EQ(bytes, (Bytes{9}));
    EXPECT_EQ(user_i2c_ioctl(1, 1, 1, command, nullptr, 4), 0);
  }
}

TEST_F(Board, I2cPrintsNothingAndLeavesTheScratchBuffer) {
  g_tmpBuffer[0] = 1;
  Bytes bytes = {};
  EXPECT_PRINTED(printed_by([&] { user_i2c_ioctl(0, 0, 0, 1, bytes.data(), 4); }), "", "");
  EXPECT_EQ(g_tmpBuffer[0], 1);
}

}  // namespace
