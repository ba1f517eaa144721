// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include "field/burst_slots.h"

namespace {

constexpr uint32_t kEntryMode = 1;
constexpr int32_t kRateUnit = 16;
constexpr int32_t kBurstUnit = 128;
// As the chip has them, not in units of kBurstUnit.
constexpr uint32_t kDefaultBurst[CHIP_ACL_BURST_SLOTS] = {512, 61440};

// The process's own book of the burst slots, written without a lock.
swctl::BurstSlots burst_slots;

int32_t set_entry(uint32_t unit, uint32_t meter, const chip_acl_meter &entry) {
  return rtk_acl_meterEntry_set(unit, meter, &entry);
}

// The chip has both sizes in one record, so the other one is read first.
void write_burst(uint32_t unit, int32_t slot, uint32_t size) {
  chip_acl_burst burst = {};
  rtk_acl_meterBurstSize_get(unit, CHIP_ACL_TABLE, &burst);
  burst.size[slot] = size;
  rtk_acl_meterBurstSize_set(unit, CHIP_ACL_TABLE, &burst);
}

}  // namespace

int32_t user_field_meter_entry_set(uint32_t unit, uint32_t rate, uint32_t meter) {
  if (meter == USER_FIELD_NO_METER) return -1;
  rtk_acl_meterMode_set(unit, meter, kEntryMode);
  return set_entry(unit, meter, {1, rate, 0});
}

int32_t user_field_meter_rate_burst_set(uint32_t unit, uint32_t meter, int32_t rate, int32_t slot) {
  const uint32_t chip_rate = static_cast<uint32_t>(rate / kRateUnit);
  const uint32_t chip_slot = static_cast<uint32_t>(static_cast<int16_t>(slot));
  return set_entry(unit, meter, {1, chip_rate, chip_slot});
}

int32_t user_field_meter_entry_del(uint32_t unit, uint32_t meter) {
  return set_entry(unit, meter, {0, 0, 0});
}

int32_t user_field_meter_entry_enable(uint32_t unit, uint32_t meter, uint32_t enable) {
  chip_acl_meter entry = {};
  const int32_t result = rtk_acl_meterEntry_get(unit, meter, &entry);
  if (result < 0) return result;
  entry.enable = enable != 0 ? 1 : 0;
  return set_entry(unit, meter, entry);
}

int32_t user_field_meter_burst_size_set_del(uint32_t unit, int32_t burst, int32_t current) {
  const int16_t slot = static_cast<int16_t>(current);
  const swctl::BurstChange change =
      burst == 0 ? burst_slots.release(slot) : burst_slots.take(burst, slot);
  if (change.programmed >= 0) {
    write_burst(unit, change.programmed, static_cast<uint32_t>(burst / kBurstUnit));
  }
  if (change.freed >= 0) write_burst(unit, change.freed, kDefaultBurst[change.freed]);
  return change.result;
}
