// SPDX-License-Identifier: MIT
// The SDK's calls on meters and on the counters of rules, and what
// frames do to a counter.
#include <swctl/platform/sdk.h>

#include "acl/acl_check.h"
#include "chip/chip.h"
#include "common/check.h"

using vchip::at_most;
using vchip::below;
using vchip::change;
using vchip::flag;
using vchip::look;
using vchip::not_null;
using vchip::on_table;
using vchip::Unit;

namespace {

int32_t on_meter(uint32_t meter) {
  return below(meter, VCHIP_METERS);
}

int32_t on_counter(uint32_t counter) {
  return below(counter, VCHIP_ACL_COUNTERS);
}

int32_t is_entry(const chip_acl_meter &entry) {
  const bool good = entry.enable <= 1 && entry.rate <= vchip::kMaxMeterRate &&
                    entry.burst_slot < CHIP_ACL_BURST_SLOTS;
  return good ? 0 : VCHIP_E_VALUE;
}

int32_t are_bursts(const chip_acl_burst &burst) {
  for (const uint32_t size : burst.size)
    if (size > vchip::kMaxMeterBurst) return VCHIP_E_VALUE;
  return 0;
}

// The high word first, whatever the machine's byte order.
void store(uint32_t *words, uint64_t count) {
  words[0] = static_cast<uint32_t>(count >> 32);
  words[1] = static_cast<uint32_t>(count);
}

}  // namespace

int32_t rtk_acl_meterMode_set(uint32_t unit, uint32_t meter, uint32_t mode) {
  return change(unit, {on_meter(meter), at_most(mode, vchip::kMaxMeterMode)},
                [=](Unit &chip) { chip.meter.set_mode(meter, mode); });
}

int32_t rtk_acl_meterEntry_get(uint32_t unit, uint32_t meter, chip_acl_meter *entry) {
  return look(unit, {on_meter(meter), not_null(entry)}, [=](const Unit &chip) {
    *entry = chip.meter.entry(meter);
    return 0;
  });
}

int32_t rtk_acl_meterEntry_set(uint32_t unit, uint32_t meter, const chip_acl_meter *entry) {
  const chip_acl_meter copy = entry == nullptr ? chip_acl_meter{} : *entry;
  return change(unit, {on_meter(meter), not_null(entry), is_entry(copy)},
                [=](Unit &chip) { chip.meter.set_entry(meter, copy, chip.time.clock()); });
}

int32_t rtk_acl_meterBurstSize_get(uint32_t unit, uint32_t table, chip_acl_burst *burst) {
  return look(unit, {on_table(table), not_null(burst)}, [=](const Unit &chip) {
    *burst = chip.meter.burst();
    return 0;
  });
}

int32_t rtk_acl_meterBurstSize_set(uint32_t unit, uint32_t table, const chip_acl_burst *burst) {
  const chip_acl_burst copy = burst == nullptr ? chip_acl_burst{} : *burst;
  return change(unit, {on_table(table), not_null(burst), are_bursts(copy)},
                [=](Unit &chip) { chip.meter.set_burst(copy, chip.time.clock()); });
}

int32_t rtk_acl_statPktCnt_get(uint32_t unit, uint32_t counter, uint32_t *count) {
  return look(unit, {on_counter(counter), not_null(count)}, [=](const Unit &chip) {
    store(count, chip.acl_count.packets(counter));
    return 0;
  });
}

int32_t rtk_acl_statByteCnt_get(uint32_t unit, uint32_t counter, uint32_t *count) {
  return look(unit, {on_counter(counter), not_null(count)}, [=](const Unit &chip) {
    store(count, chip.acl_count.bytes(counter));
    return 0;
  });
}

int32_t rtk_acl_statPktCnt_clear(uint32_t unit, uint32_t counter) {
  return change(unit, {on_counter(counter)},
                [=](Unit &chip) { chip.acl_count.clear_packets(counter); });
}

int32_t rtk_acl_statByteCnt_clear(uint32_t unit, uint32_t counter) {
  return change(unit, {on_counter(counter)},
                [=](Unit &chip) { chip.acl_count.clear_bytes(counter); });
}

int32_t vchip_acl_count(uint32_t unit, uint32_t counter, uint64_t packets, uint64_t bytes) {
  return change(unit, {on_counter(counter)},
                [=](Unit &chip) { chip.acl_count.count(counter, packets, bytes); });
}
