// SPDX-License-Identifier: MIT
#include "rule.h"

#include <fnmatch.h>

#include "number.h"

namespace swprobe {
namespace {

bool holds(const Condition &condition, const Argument &argument) {
  if (argument.form == Form::text) return argument.text == condition.text;
  const size_t first = condition.place.index;
  const size_t wanted = condition.values.size();
  if (first > argument.before.size() || wanted > argument.before.size() - first) return false;
  for (size_t i = 0; i < wanted; ++i) {
    const auto width = static_cast<size_t>(argument.width);
    if (!same(argument.before[first + i], condition.values[i], width)) return false;
  }
  return true;
}

bool holds(const Condition &condition, const Call &made) {
  for (const Argument &argument : made.arguments) {
    if (argument.name == condition.place.name) return holds(condition, argument);
  }
  return false;
}

}  // namespace

bool Rule::matches(const Call &made) const {
  if (fnmatch(call.c_str(), made.name.c_str(), 0) != 0) return false;
  for (const Condition &condition : conditions) {
    if (!holds(condition, made)) return false;
  }
  return true;
}

bool Rule::fires(const Call &made) {
  if (!matches(made)) return false;
  ++seen;
  switch (when) {
    case When::always: return true;
    case When::nth: return seen == n;
    case When::from: return seen >= n;
    case When::every: return seen % n == 0;
  }
  return false;
}

bool Rule::answers_like(const Rule &other) const {
  return result == other.result && outputs == other.outputs;
}

}  // namespace swprobe
