// SPDX-License-Identifier: MIT
#include "objects/meter_burst.h"

#include <swctl/platform/sdk.h>

#include <array>
#include <optional>

#include "chip/call.h"
#include "chip/limits.h"
#include "fault.h"
#include "number_list.h"

namespace swsh {
namespace {

const std::string kBurstSizes = "the burst sizes";

using MetersBySlot = std::array<std::vector<int64_t>, CHIP_ACL_BURST_SLOTS>;

// The meters but one, by the slot that they use.
MetersBySlot other_meters(const Context &context, uint32_t meter) {
  MetersBySlot others;
  for (uint32_t each = 0; each <= kLastMeter; ++each) {
    const chip_acl_meter entry = read_meter(context, each);
    if (each != meter && needs_burst(entry) && entry.burst_slot < others.size())
      others[entry.burst_slot].push_back(each);
  }
  return others;
}

std::optional<uint32_t> slot_of_size(const chip_acl_burst &bursts, uint32_t word) {
  for (uint32_t slot = 0; slot < CHIP_ACL_BURST_SLOTS; ++slot)
    if (bursts.size[slot] == word) return slot;
  return std::nullopt;
}

// The meter's own slot if it can be.
std::optional<uint32_t> free_slot(const MetersBySlot &others, uint32_t own) {
  if (own < others.size() && others[own].empty()) return own;
  for (uint32_t slot = 0; slot < others.size(); ++slot)
    if (others[slot].empty()) return slot;
  return std::nullopt;
}

CommandError no_slot(const chip_acl_burst &bursts, const MetersBySlot &others) {
  Fault fault;
  fault.status = kRefused;
  fault.message = "both burst sizes are in use by other meters";
  for (uint32_t slot = 0; slot < CHIP_ACL_BURST_SLOTS; ++slot) {
    fault.message += slot == 0 ? ": " : ", ";
    fault.message +=
        std::to_string(bursts.size[slot] * kBurstStep) + " by " + number_list_text(others[slot]);
  }
  fault.culprit = "burst";
  return CommandError(fault);
}

}  // namespace

std::string meter_text(uint32_t meter) {
  return "meter " + std::to_string(meter);
}

// The library has no call that reads a meter, so these are the SDK's.
chip_acl_meter read_meter(const Context &context, uint32_t meter) {
  return ask(SWSH_CALL(rtk_acl_meterEntry_get), meter_text(meter), context.unit, meter);
}

chip_acl_burst read_bursts(const Context &context) {
  return ask(SWSH_CALL(rtk_acl_meterBurstSize_get), kBurstSizes, context.unit, CHIP_ACL_TABLE);
}

void write_bursts(const Context &context, const chip_acl_burst &bursts) {
  perform(SWSH_CALL(rtk_acl_meterBurstSize_set), kBurstSizes, context.unit, CHIP_ACL_TABLE,
          &bursts);
}

bool is_meter_in_use(const chip_acl_meter &entry) {
  return (entry.enable | entry.rate | entry.burst_slot) != 0;
}

bool needs_burst(const chip_acl_meter &entry) {
  return (entry.enable | entry.rate) != 0;
}

// Not by the library: it counts who uses which size for the life of a process,
// and gives a second process a size that is in use.
uint32_t slot_with_burst(const Context &context, uint32_t meter, uint32_t word) {
  chip_acl_burst bursts = read_bursts(context);
  const std::optional<uint32_t> same = slot_of_size(bursts, word);
  if (same) return *same;
  const MetersBySlot others = other_meters(context, meter);
  const std::optional<uint32_t> slot = free_slot(others, read_meter(context, meter).burst_slot);
  if (!slot) throw no_slot(bursts, others);
  bursts.size[*slot] = word;
  write_bursts(context, bursts);
  return *slot;
}

}  // namespace swsh
