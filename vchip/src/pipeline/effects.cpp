// SPDX-License-Identifier: MIT
#include "pipeline/effects.h"

#include <swctl/platform/port_records.h>

namespace vchip {
namespace {

constexpr uint32_t kReceived[] = {CHIP_COUNTER_RX_UNICAST, CHIP_COUNTER_RX_MULTICAST,
                                  CHIP_COUNTER_RX_BROADCAST};
constexpr uint32_t kSent[] = {CHIP_COUNTER_TX_UNICAST, CHIP_COUNTER_TX_MULTICAST,
                              CHIP_COUNTER_TX_BROADCAST};

void count_fate(const Way &way, Unit &unit) {
  if (way.effects.oversize) unit.counter.add(way.port, CHIP_COUNTER_OVERSIZE, 1);
  if (way.effects.received) {
    unit.drops.add(way.port, Fate::received);
    unit.counter.add(way.port, CHIP_COUNTER_RX_OCTETS, way.frame.wire());
    unit.counter.add(way.port, kReceived[static_cast<size_t>(cast_of(way.destination))], 1);
  }
  unit.drops.add(way.port, way.fate);
}

void take_tokens(const Way &way, Unit &unit) {
  const Effects &effects = way.effects;
  const uint64_t bytes = way.frame.wire() * kTokensPerByte;
  if (effects.charge_ingress)
    unit.rate.ingress(way.port).bucket.take(unit.rate.ingress_fill(way.port), bytes, way.now);
  if (effects.meter != kUnset) unit.meter.take(effects.meter, effects.meter_tokens, way.now);
  for (uint32_t type = 0; effects.charged_storms >> type != 0; ++type)
    if ((effects.charged_storms >> type & 1) != 0)
      unit.rate.storm(way.port, type)
          .bucket.take(unit.rate.storm_fill(way.port, type),
                       unit.rate.storm_tokens(way.frame.wire()), way.now);
  for (uint32_t type = 0; effects.exceeded_storms >> type != 0; ++type)
    if ((effects.exceeded_storms >> type & 1) != 0) unit.rate.storm(way.port, type).exceeded = 1;
}

}  // namespace

void apply(const Way &way, Unit &unit) {
  const Effects &effects = way.effects;
  count_fate(way, unit);
  take_tokens(way, unit);
  if (effects.learn != Learn::nothing)
    unit.l2.apply(effects.learn, way.source_index, source_of(way));
  if (effects.rule_counter != kUnset)
    unit.acl_count.count(effects.rule_counter, 1, way.frame.wire());
  if (effects.pause) unit.queue.pause(way.port, effects.pause_until);
}

void count_sent(Unit &unit, int32_t port, Cast cast, uint32_t wire) {
  unit.counter.add(port, CHIP_COUNTER_TX_OCTETS, wire);
  unit.counter.add(port, kSent[static_cast<size_t>(cast)], 1);
}

}  // namespace vchip
