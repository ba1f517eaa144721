// SPDX-License-Identifier: MIT
#include <swctl/field.h>

#include <algorithm>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "fault.h"
#include "objects/meter_burst.h"
#include "objects/registry.h"

namespace swsh {
namespace {

Record meter_record(uint32_t meter, const chip_acl_meter &entry, const chip_acl_burst &burst) {
  Record record;
  record.add("meter", int64_t{meter});
  record.add("state", entry.enable != 0, entry.enable != 0 ? "on" : "off");
  record.add("rate", entry.rate * kRateStep);
  record.add("burst_slot", int64_t{entry.burst_slot});
  if (entry.burst_slot < CHIP_ACL_BURST_SLOTS) {
    record.add("burst_word", int64_t{burst.size[entry.burst_slot]});
  } else {
    record.add("burst_word", nullptr);
  }
  return record;
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
    if (chosen || is_meter_in_use(entry))
      answer.records.push_back(meter_record(meter, entry, burst));
  }
  return answer;
}

// A burst size that was written for the meter is taken back if the chip then
// refuses the meter.
void write_meter(const Context &context, uint32_t meter, int64_t rate, uint32_t slot,
                 const chip_acl_burst &bursts) {
  try {
    perform(SWSH_CALL(user_field_meter_rate_burst_set), meter_text(meter), context.unit, meter,
            static_cast<int32_t>(rate), static_cast<int32_t>(slot));
  } catch (const CommandError &) {
    write_bursts(context, bursts);
    throw;
  }
}

Answer set_meter(const Arguments &arguments, const Context &context) {
  const auto meter = arguments.u32("METER");
  const chip_acl_meter present = read_meter(context, meter);
  if (arguments.has("rate") || arguments.has("burst")) {
    const chip_acl_burst bursts = read_bursts(context);
    uint32_t slot = present.burst_slot;
    if (arguments.has("burst"))
      slot = slot_with_burst(context, meter, arguments.u32("burst") / kBurstStep);
    const int64_t rate =
        arguments.has("rate") ? arguments.number("rate") : present.rate * kRateStep;
    write_meter(context, meter, rate, slot, bursts);
  }
  if (arguments.has("state")) {
    perform(SWSH_CALL(user_field_meter_entry_enable), meter_text(meter), context.unit, meter,
            arguments.u32("state"));
  }
  return {};
}

Answer del_meter(const Arguments &arguments, const Context &context) {
  for_each_number(arguments.numbers("METERS"), [&](int64_t number) {
    const auto meter = static_cast<uint32_t>(number);
    perform(SWSH_CALL(user_field_meter_entry_del), meter_text(meter), context.unit, meter);
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
                    .type = stepped(number(0, kLastRate), kRateStep),
                    .help = "Rate"},
                   {.name = "burst",
                    .type = stepped(number(1, kLastBurst, "bytes"), kBurstStep),
                    .help = "Burst size"},
                   {.name = "state", .type = on_off(), .help = "Whether it limits anything"}},
      .needs_keyword = true,
      .details =
          "A rate or a burst switches the meter on unless state says otherwise; what is\n"
          "not given stays. All meters share two burst sizes.\n",
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
