// SPDX-License-Identifier: MIT
#include "report.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace swreplay {

std::string text_of(const Difference &difference) {
  return fmt::format("{}: the answer differs\n  recorded: {}\n  answered: {}\n", difference.place,
                     difference.recorded.line(), difference.answered.line());
}

std::string summary(const Outcome &outcome) {
  const auto calls = [](uint64_t count) { return count == 1 ? "call" : "calls"; };
  std::string text = fmt::format("{} {} replayed", outcome.replayed, calls(outcome.replayed));
  if (outcome.made_up > 0)
    text += fmt::format(", {} left out that a fault plan answered", outcome.made_up);
  if (outcome.differences.empty()) return text + ", every answer the same";
  return text + fmt::format(", {} answered otherwise", outcome.differences.size());
}

std::string json_of(const Outcome &outcome) {
  nlohmann::ordered_json all = {{"replayed", outcome.replayed},
                                {"made_up", outcome.made_up},
                                {"differences", nlohmann::ordered_json::array()}};
  for (const Difference &each : outcome.differences) {
    all["differences"].push_back({{"place", each.place},
                                  {"call", each.recorded.name},
                                  {"recorded", each.recorded.line()},
                                  {"answered", each.answered.line()}});
  }
  return all.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace swreplay
