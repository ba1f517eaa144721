// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <initializer_list>
#include <unistd.h>

#include "frame/port_mask.h"

static_assert(sizeof(chip_cable_test_t) == 84);
static_assert(offsetof(chip_cable_test_t, shorted) == 4);
static_assert(offsetof(chip_cable_test_t, open) == 20);
static_assert(offsetof(chip_cable_test_t, mismatch) == 36);
static_assert(offsetof(chip_cable_test_t, crosstalk) == 52);
static_assert(offsetof(chip_cable_test_t, length) == 68);
static_assert(sizeof(user_cable_diag_t) == 44);
static_assert(offsetof(user_cable_diag_t, pair_state) == 8);
static_assert(offsetof(user_cable_diag_t, pair_length) == 24);
static_assert(CHIP_CABLE_PAIRS == USER_CABLE_PAIRS);

namespace {

// How long the chip takes for its measurement.
constexpr unsigned kTestSeconds = 3;
constexpr uint32_t kLengthUnit = 100;

uint32_t pair_state(const chip_cable_test_t &test, int pair) {
  // By the flags open, shorted and mismatch, the lowest first.
  constexpr uint32_t kStates[] = {USER_CABLE_OK,     USER_CABLE_OPEN,     USER_CABLE_SHORT,
                                  USER_CABLE_FAULTY, USER_CABLE_MISMATCH, USER_CABLE_FAULTY,
                                  USER_CABLE_FAULTY, USER_CABLE_FAULTY};
  if (test.crosstalk[pair] != 0) return USER_CABLE_FAULTY;
  const unsigned open = test.open[pair] != 0;
  const unsigned shorted = test.shorted[pair] != 0;
  const unsigned mismatch = test.mismatch[pair] != 0;
  return kStates[open | shorted << 1 | mismatch << 2];
}

uint32_t pair_length(uint32_t length) {
  return length < kLengthUnit ? 1 : length / kLengthUnit;
}

int pairs_in_state(const user_cable_diag_t &record, uint32_t state) {
  int pairs = 0;
  for (const uint32_t each : record.pair_state) pairs += each == state;
  return pairs;
}

uint32_t overall_state(const user_cable_diag_t &record) {
  for (const uint32_t state : {USER_CABLE_OK, USER_CABLE_OPEN}) {
    if (pairs_in_state(record, state) == USER_CABLE_PAIRS) return state;
  }
  for (const uint32_t state : {USER_CABLE_SHORT, USER_CABLE_MISMATCH}) {
    if (pairs_in_state(record, state) > 0) return state;
  }
  return USER_CABLE_FAULTY;
}

void fill(user_cable_diag_t *record, const chip_cable_test_t &test) {
  *record = {};
  record->pairs = USER_CABLE_PAIRS;
  for (int pair = 0; pair < USER_CABLE_PAIRS; ++pair) {
    record->pair_state[pair] = pair_state(test, pair);
    record->pair_length[pair] = pair_length(test.length[pair]);
  }
  record->state = overall_state(*record);
}

}  // namespace

int32_t User_port_cablediag(uint32_t, uint32_t unit, int32_t port, user_cable_diag_t *record) {
  chip_cable_test_t test = {};
  const uint32_t mask = swctl::bit_in_mask(port);
  const int32_t started = rtk_diag_rtctEnable_set(unit, &mask);
  if (started != 0) return started;
  sleep(kTestSeconds);
  // A failed read leaves zeroes, which are reported like a good cable's.
  const int32_t result = rtk_diag_portRtctResult_get(unit, port, &test);
  fill(record, test);
  return result;
}
