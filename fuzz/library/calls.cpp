// SPDX-License-Identifier: MIT
#include "library/calls.h"

#include <swctl-vchip/vchip.h>

#include "library/arguments.h"
#include "library/chip.h"

namespace swfuzz {
namespace {

struct Entry {
  std::string_view name;
  void (*function)();
  void (*call)(Input &input, const Entry &entry);
};

template <class Function>
void call_entry(Input &input, const Entry &entry) {
  call_with_input(input, entry.name, reinterpret_cast<Function>(entry.function));
}

template <class Function>
Entry entry_of(std::string_view name, Function function) {
  return {name, reinterpret_cast<void (*)()>(function), call_entry<Function>};
}

#define SWFUZZ_CALL(name) entry_of(#name, name),

// exported.inc has a line for each name of src/*/exports.txt.
const Entry kEntries[] = {
#include "exported.inc"
    SWFUZZ_CALL(vchip_cable_plug) SWFUZZ_CALL(vchip_cable_pull) SWFUZZ_CALL(vchip_medium_set)
        SWFUZZ_CALL(vchip_station_learn) SWFUZZ_CALL(vchip_l2_mark) SWFUZZ_CALL(vchip_time_pass)
            SWFUZZ_CALL(vchip_acl_count) SWFUZZ_CALL(vchip_pair_set) SWFUZZ_CALL(vchip_counter_set)
                SWFUZZ_CALL(vchip_counter_add) SWFUZZ_CALL(vchip_storm_exceed)
                    SWFUZZ_CALL(vchip_trace_set)};

}  // namespace

void reset() {
  stateflag = 0;
  renew_chip();
}

void make_calls(Input &input, int most) {
  for (int made = 0; made < most && !input.empty(); ++made) {
    const Entry &entry = kEntries[input.half_word() % std::size(kEntries)];
    entry.call(input, entry);
  }
}

}  // namespace swfuzz
