// SPDX-License-Identifier: MIT
// One line of a fault plan: which calls it answers, and what.
#ifndef SWCTL_PROBE_RULE_H
#define SWCTL_PROBE_RULE_H

#include <optional>
#include <string>
#include <vector>

#include "place.h"

namespace swprobe {

// Elements from `place` on.
struct Condition {
  Place place;
  std::vector<int64_t> values;
  std::string text;  // compared where the argument is a text
};

struct Output {
  Place place;
  std::vector<int64_t> values;

  bool operator==(const Output &) const = default;
};

struct Rule {
  enum class When { always, nth, from, every };

  std::string call;  // may have the wildcards of fnmatch(3)
  When when = When::always;
  uint64_t n = 0;
  std::vector<Condition> conditions;
  int32_t result = 0;
  std::vector<Output> outputs;
  std::string place;      // where it was read: "plan:3"; empty if it was not
  uint64_t seen = 0;      // calls that matched so far
  uint64_t answered = 0;  // of those, the ones that this rule answered
  // The place of a rule that answered instead, and how often one did that has
  // another answer.
  std::optional<std::string> overruled_by = {};
  uint64_t contradicted = 0;

  bool matches(const Call &made) const;
  // Counts a matching call and says whether the rule is meant for this one.
  bool fires(const Call &made);
  bool answers_like(const Rule &other) const;
};

// Throws std::invalid_argument naming the wrong word.
Rule parse_rule(const std::string &text);
// The rule that has the same effect as answer().
Rule rule_of(const std::string &name, uint64_t nth, const Answer &answer);

// The rules of a plan file, or of a list with ';' between them. Errors begin
// with where the wrong rule is. Throws std::runtime_error.
std::vector<Rule> read_plan(const std::string &path);
std::vector<Rule> parse_plan(const std::string &source, const std::string &text);

}  // namespace swprobe

#endif
