// SPDX-License-Identifier: MIT
#include "report.h"

#include "os/format.h"
#include "os/json.h"

namespace swreplay {

std::string text_of(const Difference &difference) {
  return os::format("{}: the answer differs\n  recorded: {}\n  answered: {}\n", difference.place,
                    difference.recorded.line(), difference.answered.line());
}

std::string summary(const Outcome &outcome) {
  const auto calls = [](uint64_t count) { return count == 1 ? "call" : "calls"; };
  std::string text = os::format("{} {} replayed", outcome.replayed, calls(outcome.replayed));
  if (outcome.made_up > 0)
    text += os::format(", {} left out that a fault plan answered", outcome.made_up);
  if (outcome.differences.empty()) return text + ", every answer the same";
  return text + os::format(", {} answered otherwise", outcome.differences.size());
}

std::string json_of(const Outcome &outcome) {
  os::Json all = {{"replayed", outcome.replayed},
                  {"made_up", outcome.made_up},
                  {"differences", os::Json::array()}};
  for (const Difference &each : outcome.differences) {
    all["differences"].push_back({{"place", each.place},
                                  {"call", each.recorded.name},
                                  {"recorded", each.recorded.line()},
                                  {"answered", each.answered.line()}});
  }
  return os::json_text(all);
}

}  // namespace swreplay
