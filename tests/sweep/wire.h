// SPDX-License-Identifier: MIT
// The calls that leave the library: each passes here on its way to the chip,
// is written down, and fails if the plan says so.
#ifndef SWCTL_TESTS_SWEEP_WIRE_H
#define SWCTL_TESTS_SWEEP_WIRE_H

#include <functional>
#include <set>

#include "keeper.h"
#include "rules.h"

namespace sweep {

inline constexpr size_t kNever = SIZE_MAX;

// A range of calls by their place in a run, from 0.
struct Range {
  size_t first = kNever;
  size_t last = kNever;
  bool holds(size_t place) const { return place >= first && place <= last; }
};

struct Plan {
  Range failing = {};
  int32_t value = 0;  // what the failing calls answer
  // Instead, those of Rule::zero answer 0 and write zeros, and the rest is
  // left alone.
  bool answer_zeros = false;
  Range measured = {};  // calls whose effect on the chip is wanted
};

struct Seen {
  size_t call;  // index of its name
  bool reached_chip = false;
  int32_t result = 0;
  bool has_port = false;
  int32_t port = 0;     // the argument of that name
  uint64_t digest = 0;  // of all other arguments and what they point to
  bool has_effect = false;
  Changes effect = {};  // on the chip, if it was measured
};
using Trace = std::vector<Seen>;

// Calls between the two are seen. Rules are those of the function that makes
// them.
void start_watching(const Plan &plan, const Rules &rules, Keeper &keeper);
Trace stop_watching();

// The one call that `make` makes, as it would be seen; it is not passed on.
Seen as_seen(const std::function<void()> &make);

size_t call_index(const std::string &name);
// Whether a call has a result to fail with.
bool can_fail(size_t call);

// Where in the code calls have come from: the addresses after them.
const std::set<const void *> &places_reached();

}  // namespace sweep

#endif
