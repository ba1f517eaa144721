// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

static_assert(sizeof(user_counter_t) == 8 && offsetof(user_counter_t, low) == 4);

namespace {

constexpr uint32_t kPackets[] = {CHIP_COUNTER_RX_UNICAST, CHIP_COUNTER_RX_MULTICAST,
                                 CHIP_COUNTER_RX_BROADCAST};
constexpr uint32_t kErrors[] = {CHIP_COUNTER_SYMBOL_ERRORS, CHIP_COUNTER_FRAGMENTS,
                                CHIP_COUNTER_CHECKSUM_ERRORS, CHIP_COUNTER_OVERSIZE};

void add(user_counter_t *sum, const user_counter_t &reading) {
  sum->low += reading.low;
  const uint32_t carry = sum->low < reading.low ? 1 : 0;
  sum->high += reading.high + carry;
}

template <size_t Count>
int32_t sum_up(uint32_t unit, int32_t port, const uint32_t (&counters)[Count],
               user_counter_t *sum) {
  // Not cleared in between: a failed read counts the reading before it again.
  user_counter_t reading = {};
  for (const uint32_t counter : counters) {
    rtk_stat_port_get(unit, port, counter, &reading);
    add(sum, reading);
  }
  return 0;
}

}  // namespace

int32_t user_port_packetstat_get(uint32_t, uint32_t unit, int32_t port, uint32_t counter,
                                 user_counter_t *value) {
  return rtk_stat_port_get(unit, port, counter, value);
}

int32_t user_port_packetstat_clear(uint32_t, uint32_t unit, int32_t port) {
  rtk_stat_port_reset(unit, port);
  return 0;
}

int32_t user_stat_port_get(uint32_t, uint32_t unit, int32_t port, int32_t kind,
                           user_counter_t *value) {
  *value = {};
  switch (kind) {
    case USER_STAT_PACKETS: return sum_up(unit, port, kPackets, value);
    case USER_STAT_CHECKSUM:
      return rtk_stat_port_get(unit, port, CHIP_COUNTER_CHECKSUM_ERRORS, value);
    case USER_STAT_FRAGMENTS: return rtk_stat_port_get(unit, port, CHIP_COUNTER_FRAGMENTS, value);
    case USER_STAT_ERRORS: return sum_up(unit, port, kErrors, value);
    default: return 0;
  }
}

int32_t user_stat_port_getAll(uint32_t, uint32_t unit, int32_t port, void *counters) {
  return rtk_stat_port_getAll(unit, port, static_cast<chip_port_counters_t *>(counters));
}
