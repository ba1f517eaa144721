// SPDX-License-Identifier: MIT
// The SDK's calls on the counters of ports, and the chip's controls of them.
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

int32_t rtk_stat_port_get(uint32_t unit, int32_t port, uint32_t counter, user_counter_t *value) {
  return vchip::look(
      unit,
      {vchip::on_port(port), vchip::not_null(value), vchip::below(counter, CHIP_PORT_COUNTERS)},
      [=](const vchip::Unit &chip) {
        *value = chip.counter.value(port, counter);
        return 0;
      });
}

int32_t rtk_stat_port_getAll(uint32_t unit, int32_t port, chip_port_counters_t *counters) {
  return vchip::look(unit, {vchip::on_port(port), vchip::not_null(counters)},
                     [=](const vchip::Unit &chip) {
                       *counters = chip.counter.port(port);
                       return 0;
                     });
}

int32_t rtk_stat_port_reset(uint32_t unit, int32_t port) {
  return vchip::change(unit, {vchip::on_port(port)},
                       [=](vchip::Unit &chip) { chip.counter.clear(port); });
}

int32_t vchip_counter_set(uint32_t unit, int32_t port, uint32_t counter, uint64_t value) {
  return vchip::change(unit, {vchip::on_port(port), vchip::below(counter, CHIP_PORT_COUNTERS)},
                       [=](vchip::Unit &chip) { chip.counter.set(port, counter, value); });
}

int32_t vchip_counter_add(uint32_t unit, int32_t port, uint32_t counter, uint64_t amount) {
  return vchip::change(unit, {vchip::on_port(port), vchip::below(counter, CHIP_PORT_COUNTERS)},
                       [=](vchip::Unit &chip) { chip.counter.add(port, counter, amount); });
}
