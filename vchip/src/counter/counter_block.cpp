// SPDX-License-Identifier: MIT
#include "counter/counter_block.h"

#include <swctl/platform/sdk.h>

#include <vector>

#include "core/check.h"
#include "core/chip.h"
#include "core/dump.h"

namespace vchip {
namespace {

uint64_t number_of(const user_counter_t &counter) {
  return uint64_t{counter.high} << 32 | counter.low;
}

const char *name_of(uint32_t counter) {
  switch (counter) {
    case CHIP_COUNTER_RX_OCTETS: return "rx-octets";
    case CHIP_COUNTER_RX_UNICAST: return "rx-unicast";
    case CHIP_COUNTER_RX_MULTICAST: return "rx-multicast";
    case CHIP_COUNTER_RX_BROADCAST: return "rx-broadcast";
    case CHIP_COUNTER_TX_OCTETS: return "tx-octets";
    case CHIP_COUNTER_TX_UNICAST: return "tx-unicast";
    case CHIP_COUNTER_TX_MULTICAST: return "tx-multicast";
    case CHIP_COUNTER_TX_BROADCAST: return "tx-broadcast";
    case CHIP_COUNTER_SYMBOL_ERRORS: return "symbol-errors";
    case CHIP_COUNTER_FRAGMENTS: return "fragments";
    case CHIP_COUNTER_OVERSIZE: return "oversize";
    case CHIP_COUNTER_CHECKSUM_ERRORS: return "checksum-errors";
    default: return nullptr;
  }
}

void dump_counter(Dump &entry, uint32_t counter, const user_counter_t &value) {
  entry.number("counter", counter);
  if (const char *name = name_of(counter)) entry.text("name", name);
  // As text, since JSON numbers do not hold 64 bits everywhere.
  entry.text("value", std::to_string(number_of(value)));
}

}  // namespace

void PortCounterBlock::reset() {
  for (chip_port_counters_t &port : ports_) port = {};
}

void PortCounterBlock::set(int32_t port, uint32_t counter, uint64_t value) {
  ports_[port].value[counter] = {static_cast<uint32_t>(value >> 32), static_cast<uint32_t>(value)};
}

void PortCounterBlock::add(int32_t port, uint32_t counter, uint64_t amount) {
  set(port, counter, number_of(value(port, counter)) + amount);
}

// Only counters that counted.
void PortCounterBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, VCHIP_PORTS, [this](Dump &entry, size_t port) {
    std::vector<uint32_t> used;
    for (uint32_t each = 0; each < CHIP_PORT_COUNTERS; ++each)
      if (number_of(ports_[port].value[each]) != 0) used.push_back(each);
    entry.number("port", static_cast<int64_t>(port));
    entry.objects("counters", used.size(), [&](Dump &counter, size_t place) {
      dump_counter(counter, used[place], ports_[port].value[used[place]]);
    });
  });
}

}  // namespace vchip

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
