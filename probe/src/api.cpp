// SPDX-License-Identifier: MIT
#include <stdexcept>

#include "session.h"

namespace swprobe {

std::vector<Call> take() {
  return Session::get().take();
}

std::vector<std::string> take_lines() {
  std::vector<std::string> lines;
  for (const Call &call : take()) lines.push_back(call.line());
  return lines;
}

void forget() {
  take();
}

void plan(const std::string &rule) {
  Session::get().add_rule(parse_rule(rule));
}

void answer(const std::string &name, uint64_t nth, const Answer &answer) {
  Session::get().add_answer(rule_of(name, nth, answer));
}

void clear_plan() {
  Session::get().clear_plan();
}

uint64_t made_up_count() {
  return Session::get().verdicts();
}

}  // namespace swprobe
