// SPDX-License-Identifier: MIT
#include "answers.h"

#include <algorithm>
#include <utility>

#include "line.h"

namespace swprobe {
namespace {

constexpr int32_t kRefused = -1;

Verdict verdict_of(const Call &recorded) {
  Verdict verdict{static_cast<int32_t>(recorded.result), {}};
  for (const Argument &argument : recorded.arguments) {
    if (argument.after.empty()) continue;
    Output &output = verdict.outputs.emplace_back();
    output.place = {argument.name, 0};
    output.values = argument.after;
  }
  return verdict;
}

}  // namespace

Answers::Answers(std::string path, Recording recording, Comparison comparison)
    : path_(std::move(path)), comparison_(std::move(comparison)) {
  for (const Call &call : recording.calls)
    if (!call.of_library) given_[comparison_.key(call)].answers.push_back(verdict_of(call));
}

Verdict Answers::answer(const Call &made, std::string &complaint) {
  const auto found = given_.find(comparison_.key(made));
  if (found != given_.end()) {
    Given &given = found->second;
    const size_t which = std::min(given.next++, given.answers.size() - 1);
    return given.answers[which];
  }
  if (comparison_.is_ignored(made.name)) return {0, {}};
  const std::string line = question_of(made);
  if (refused_.insert(line).second) complaint = path_ + ": no call like this was recorded: " + line;
  return {kRefused, {}};
}

}  // namespace swprobe
