// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <map>
#include <utility>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

// The library divides rates by this; the chip has 20 bits of the result.
constexpr int64_t kRateUnit = 16;
constexpr int64_t kLastRate = 0xFFFFF * kRateUnit + kRateUnit - 1;
constexpr int64_t kBurstUnit = 128;
constexpr int64_t kLastBurst = 0xFFFF * kBurstUnit + kBurstUnit - 1;

// The burst slots that this process has taken, by unit and meter: the library
// counts them for the process.
std::map<std::pair<uint32_t, uint32_t>, int32_t> &taken_slots() {
  static std::map<std::pair<uint32_t, uint32_t>, int32_t> slots;
  return slots;
}

std::string meter_name(uint32_t meter) {
  return "meter " + std::to_string(meter);
}

// The library has no call that reads a meter, so this one is the SDK's.
chip_acl_meter read_meter(const Context &context, uint32_t meter) {
  return ask(SWSH_CALL(rtk_acl_meterEntry_get), meter_name(meter), context.unit, meter);
}

chip_acl_burst read_bursts(const Context &context) {
  return ask(SWSH_CALL(rtk_acl_meterBurstSize_get), std::string("the burst sizes"), context.unit,
             CHIP_ACL_TABLE);
}

Record meter_record(uint32_t meter, const chip_acl_meter &entry, const chip_acl_burst &burst) {
  Record record;
  record.add("meter", int64_t{meter});
  record.add("state", entry.enable != 0, entry.enable != 0 ? "on" : "off");
  record.add("rate", entry.rate * kRateUnit);
  record.add("burst_slot", int64_t{entry.burst_slot});
  if (entry.burst_slot < CHIP_ACL_BURST_SLOTS) {
    record.add("burst_word", int64_t{burst.size[entry.burst_slot]});
  } else {
    record.add("burst_word", nullptr);
  }
  return record;
}

bool is_in_use(const chip_acl_meter &entry) {
  return (entry.enable | entry.rate | entry.burst_slot) != 0;
}

Answer show_meter(const Arguments &arguments, const Context &context) {
  const bool chosen = arguments.has("METERS");
  const chip_acl_burst burst = read_bursts(context);
  Answer answer;
  answer.shape = Shape::table;
  for (int64_t number = 0; number <= kLastMeter; ++number) {
    const auto meter = static_cast<uint32_t>(number);
    const auto has = [&](const std::vector<int64_t> &list) {
      return std::find(list.begin(), list.end(), number) != list.end();
    };
    if (chosen && !has(arguments.numbers("METERS"))) continue;
    const chip_acl_meter entry = read_meter(context, meter);
    if (chosen || is_in_use(entry)) answer.records.push_back(meter_record(meter, entry, burst));
  }
  return answer;
}

constexpr auto kBurst = SWSH_CALL(user_field_meter_burst_size_set_del);

int32_t taken_slot(const Context &context, uint32_t meter) {
  const auto found = taken_slots().find({context.unit, meter});
  return found == taken_slots().end() ? USER_FIELD_NO_BURST_SLOT : found->second;
}

void give_slot_back(const Context &context, uint32_t meter) {
  const int32_t slot = taken_slot(context, meter);
  if (slot == USER_FIELD_NO_BURST_SLOT) return;
  perform(kBurst, meter_name(meter), context.unit, 0, slot);
  taken_slots().erase({context.unit, meter});
}

uint32_t take_slot(const Context &context, uint32_t meter, int64_t burst) {
  const std::string subject = "burst " + std::to_string(burst) + " of " + meter_name(meter) +
                              ", both slots hold other bursts";
  const int32_t slot = perform(kBurst, subject, context.unit, static_cast<int32_t>(burst),
                               taken_slot(context, meter));
  taken_slots()[{context.unit, meter}] = slot;
  return static_cast<uint32_t>(slot);
}

void write_meter(const Context &context, uint32_t meter, int64_t rate, uint32_t slot) {
  try {
    perform(SWSH_CALL(user_field_meter_rate_burst_set), meter_name(meter), context.unit, meter,
            static_cast<int32_t>(rate), static_cast<int32_t>(slot));
  } catch (const CommandError &) {
    give_slot_back(context, meter);
    throw;
  }
}

Answer set_meter(const Arguments &arguments, const Context &context) {
  const auto meter = arguments.u32("METER");
  const chip_acl_meter present = read_meter(context, meter);
  if (arguments.has("rate") || arguments.has("burst")) {
    uint32_t slot = present.burst_slot;
    if (arguments.has("burst")) slot = take_slot(context, meter, arguments.number("burst"));
    const int64_t rate =
        arguments.has("rate") ? arguments.number("rate") : present.rate * kRateUnit;
    write_meter(context, meter, rate, slot);
  }
  if (arguments.has("state")) {
    perform(SWSH_CALL(user_field_meter_entry_enable), meter_name(meter), context.unit, meter,
            arguments.u32("state"));
  }
  return {};
}

Answer del_meter(const Arguments &arguments, const Context &context) {
  for_each_number(arguments.numbers("METERS"), [&](int64_t number) {
    const auto meter = static_cast<uint32_t>(number);
    perform(SWSH_CALL(user_field_meter_entry_del), meter_name(meter), context.unit, meter);
    give_slot_back(context, meter);
  });
  return {};
}

Parameter meters(bool required) {
  return {.name = "METERS", .type = numbers(0, kLastMeter), .help = "Meters", .required = required};
}

Node set_command() {
  return {
      .name = "set",
      .help = "Set a meter's rate, burst and state",
      .positional = {required("METER", number(0, kLastMeter), "Meter")},
      .keywords = {{.name = "rate",
                    .type = number(0, kLastRate),
                    .help = "Rate; the chip has it in steps of 16"},
                   {.name = "burst",
                    .type = number(1, kLastBurst, "bytes"),
                    .help = "Burst size; the chip has it in steps of 128"},
                   {.name = "state", .type = on_off(), .help = "Whether it limits anything"}},
      .needs_keyword = true,
      .details =
          "A rate or a burst switches the meter on unless state says otherwise; what is\n"
          "not given stays. All meters of a batch or session share two burst sizes.\n",
      .run = set_meter,
  };
}

}  // namespace

Node meter_object() {
  return {
      .name = "meter",
      .help = "Meters, which limit the rate of what rules match",
      .children = {{.name = "show",
                    .help = "Show meters",
                    .positional = {meters(false)},
                    .details = "Without METERS, all that are not as after power-on.\n",
                    .run = show_meter},
                   set_command(),
                   {.name = "del",
                    .help = "Switch meters off and forget their rates",
                    .positional = {meters(true)},
                    .run = del_meter}},
  };
}

}  // namespace swsh
