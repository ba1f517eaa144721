// SPDX-License-Identifier: MIT
#include "plan.h"

namespace swprobe {

void Plan::clear() {
  rules_.clear();
  answers_.clear();
  verdicts_ = 0;
}

const Rule *Plan::choose(const Call &made) {
  const Rule *chosen = nullptr;
  for (auto rule = answers_.rbegin(); rule != answers_.rend(); ++rule) {
    if (!rule->fires(made)) continue;
    const bool closer =
        chosen != nullptr && chosen->when == Rule::When::always && rule->when == Rule::When::nth;
    if (chosen == nullptr || closer) chosen = &*rule;
  }
  for (Rule &rule : rules_) {
    if (rule.fires(made) && chosen == nullptr) chosen = &rule;
  }
  return chosen;
}

std::optional<Verdict> Plan::judge(const Call &made) {
  const Rule *rule = choose(made);
  if (rule == nullptr) return std::nullopt;
  ++verdicts_;
  return Verdict{rule->result, rule->outputs};
}

}  // namespace swprobe
