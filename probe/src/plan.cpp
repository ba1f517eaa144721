// SPDX-License-Identifier: MIT
#include "plan.h"

namespace swprobe {
namespace {

std::string calls(uint64_t count) {
  return std::to_string(count) + (count == 1 ? " call" : " calls");
}

void overrule(Rule &rule, const Rule &chosen) {
  const bool contradicts = !rule.answers_like(chosen);
  if (!rule.overruled_by || (contradicts && rule.contradicted == 0))
    rule.overruled_by = chosen.place.empty() ? "an answer of the program" : chosen.place;
  if (contradicts) ++rule.contradicted;
}

// Empty if nothing is wrong.
std::string complaint_about(const Rule &rule) {
  if (rule.place.empty()) return {};
  if (rule.contradicted > 0)
    return rule.place + " contradicts " + *rule.overruled_by + ", which answered " +
           calls(rule.contradicted) + " that both were for";
  if (rule.answered > 0) return {};
  if (rule.seen == 0) return rule.place + " never fired: no call matched it";
  if (rule.overruled_by) return rule.place + " never fired: " + *rule.overruled_by + " came first";
  return rule.place + " never fired: it waited for call " + std::to_string(rule.n) + " and " +
         calls(rule.seen) + " matched it";
}

}  // namespace

std::vector<std::string> Plan::complaints() const {
  std::vector<std::string> all;
  for (const Rule &rule : rules_) {
    std::string complaint = complaint_about(rule);
    if (!complaint.empty()) all.push_back(std::move(complaint));
  }
  return all;
}

void Plan::clear() {
  rules_.clear();
  answers_.clear();
  verdicts_ = 0;
}

Rule *Plan::choose(const Call &made) {
  Rule *chosen = nullptr;
  for (auto rule = answers_.rbegin(); rule != answers_.rend(); ++rule) {
    if (!rule->fires(made)) continue;
    const bool closer =
        chosen != nullptr && chosen->when == Rule::When::always && rule->when == Rule::When::nth;
    if (chosen == nullptr || closer) chosen = &*rule;
  }
  for (Rule &rule : rules_) {
    if (!rule.fires(made)) continue;
    if (chosen == nullptr) {
      chosen = &rule;
    } else {
      overrule(rule, *chosen);
    }
  }
  return chosen;
}

std::optional<Verdict> Plan::judge(const Call &made) {
  Rule *rule = choose(made);
  if (rule == nullptr) return std::nullopt;
  ++verdicts_;
  ++rule->answered;
  return Verdict{rule->result, rule->outputs};
}

}  // namespace swprobe
