// SPDX-License-Identifier: MIT
// Speed and duplex of a port that is down and negotiates: what its advertised
// abilities say.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

struct Mode {
  uint32_t speed;
  uint32_t duplex;
};

class PortAdvertised : public swctl_test::LibraryTest {
 protected:
  // Through the chip: abilities of unit 0, port 5.
  static Mode advertise(uint32_t ability) {
    EXPECT_EQ(rtk_port_phyAutoNegoAbility_set(0, 5, &ability), 0);
    return read();
  }
  // Past the chip, for words that no chip would hold.
  static Mode claim(uint32_t ability) {
    chip_answers("rtk_port_phyAutoNegoAbility_get", 0, {{"ability", ability}});
    return read();
  }

 private:
  static Mode read() {
    Mode mode = {0xDEAD, 0xDEAD};
    EXPECT_EQ(user_port_speed_get(0, 1, 5, &mode.speed), 0);
    EXPECT_EQ(user_port_duplex_get(0, 1, 5, &mode.duplex), 0);
    return mode;
  }
};

#define EXPECT_MODE(mode, expected_speed, expected_duplex) \
  do {                                                     \
    const Mode mode_ = (mode);                             \
    EXPECT_EQ(mode_.speed, (expected_speed));              \
    EXPECT_EQ(mode_.duplex, (expected_duplex));            \
  } while (false)

TEST_F(PortAdvertised, TenHalfAndHundredFullIsNoSingleMode) {
  EXPECT_MODE(advertise(0x80000000u | 0x10000000u), 4u, 2u);
}

TEST_F(PortAdvertised, TenFullAndGigabitFullIsTenFull) {
  EXPECT_MODE(advertise(0x40000000u | 0x04000000u), 10u, 1u);
}

TEST_F(PortAdvertised, GigabitHalfAloneIsNotLookedAt) {
  EXPECT_MODE(advertise(0x08000000u), 4u, 2u);
}

TEST_F(PortAdvertised, SingleModes) {
  EXPECT_MODE(advertise(0x80000000u), 10u, 0u);
  EXPECT_MODE(advertise(0x40000000u), 10u, 1u);
  EXPECT_MODE(advertise(0x20000000u), 100u, 0u);
  EXPECT_MODE(advertise(0x10000000u), 100u, 1u);
  EXPECT_MODE(advertise(0x04000000u), 1000u, 1u);
}

TEST_F(PortAdvertised, HundredWithGigabitIsHundred) {
  EXPECT_MODE(advertise(0x20000000u | 0x04000000u), 100u, 2u);
  EXPECT_MODE(advertise(0x10000000u | 0x04000000u), 100u, 1u);
}

TEST_F(PortAdvertised, NothingAndEverything) {
  EXPECT_MODE(claim(0), 4u, 2u);
  EXPECT_MODE(claim(0xFFFFFFFFu), 4u, 2u);
}

// Written from the bits' meanings, mode by mode, not from the library's masks.
Mode naive(uint32_t ability) {
  struct Bit {
    int number;
    uint32_t speed;
    uint32_t duplex;
  };
  static constexpr Bit kBits[] = {
      {31, 10, 0}, {30, 10, 1}, {29, 100, 0}, {28, 100, 1}, {26, 1000, 1}};
  bool ten = false;
  bool hundred = false;
  bool gigabit = false;
  int half = 0;
  int full = 0;
  for (const Bit &bit : kBits) {
    if ((ability >> bit.number) % 2 == 0) continue;
    if (bit.speed == 10) ten = true;
    if (bit.speed == 100) hundred = true;
    if (bit.speed == 1000) gigabit = true;
    ++(bit.duplex == 0 ? half : full);
  }
  Mode mode = {4, 2};
  if (ten != hundred) mode.speed = ten ? 10 : 100;
  if (!ten && !hundred && gigabit) mode.speed = 1000;
  if (half > 0 && full == 0) mode.duplex = 0;
  if (full > 0 && half == 0) mode.duplex = 1;
  return mode;
}

TEST_F(PortAdvertised, EveryCombinationOfTheSevenNamedBits) {
  for (uint32_t named = 0; named < 128; ++named) {
    SCOPED_TRACE(named);
    const uint32_t ability = named << 25;
    const Mode expected = naive(ability);
    EXPECT_MODE(claim(ability), expected.speed, expected.duplex);
    EXPECT_MODE(claim(ability | 0x01FFFFFFu), expected.speed, expected.duplex);
  }
}

}  // namespace
