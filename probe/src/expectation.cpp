// SPDX-License-Identifier: MIT
#include "expectation.h"

#include <algorithm>
#include <utility>

#include "line.h"

namespace swprobe {
namespace {

constexpr size_t kFew = 3;

std::string joined(const std::vector<std::string> &words) {
  std::string text;
  for (const std::string &word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

// Outputs are there if the call succeeded.
bool same_answer(const Call &recorded, const Call &call) {
  return recorded.result == call.result &&
         std::ranges::equal(recorded.arguments, call.arguments, {}, &Argument::after,
                            &Argument::after);
}

std::string row(const char *title, uint64_t number, const std::string &line) {
  return std::string("\n  ") + title + ' ' + std::to_string(number) + ": " + line;
}

}  // namespace

Expectation::Expectation(std::string path, Recording recording, Comparison comparison,
                         Filter filter, bool stop)
    : path_(std::move(path)),
      comparison_(std::move(comparison)),
      filter_(std::move(filter)),
      stop_(stop) {
  for (size_t i = 0; i < recording.calls.size(); ++i) {
    Call &call = recording.calls[i];
    if (call.of_library || comparison_.is_ignored(call.name) || !filter_.fits(call)) continue;
    auto &list = comparison_.is_unordered(call.name) ? unordered_ : ordered_;
    list.push_back({recording.lines[i], std::move(call)});
  }
}

std::string Expectation::place(const Expected *recorded) const {
  return recorded == nullptr ? path_ : path_ + ':' + std::to_string(recorded->line);
}

std::string Expectation::told(const std::string &what, const Expected *recorded, const Call *made) {
  over_ = true;
  std::string text = place(recorded) + ": " + what;
  for (const Expected &each : passed_) {
    text += row("before  ", each.call.number, each.call.line());
    if (!each.answered.empty()) text += row("answered", each.made, each.answered);
  }
  if (recorded != nullptr) text += row("recorded", recorded->call.number, recorded->call.line());
  if (made != nullptr) text += row("made    ", made_, question_of(*made));
  return text;
}

void Expectation::pass(std::list<Expected> &from, std::list<Expected>::iterator which) {
  which->made = made_;
  passed_.splice(passed_.end(), from, which);
  if (passed_.size() > kFew) passed_.pop_front();
}

std::optional<std::string> Expectation::compare(const Call &call) {
  if (over_ || comparison_.is_ignored(call.name) || !filter_.fits(call)) return std::nullopt;
  ++made_;
  return comparison_.is_unordered(call.name) ? compare_unordered(call) : compare_ordered(call);
}

void Expectation::answered(uint64_t which, const Call &call) {
  const auto found = std::ranges::find(passed_, which, &Expected::made);
  if (found != passed_.end() && !same_answer(found->call, call)) found->answered = call.line();
}

std::optional<std::string> Expectation::compare_ordered(const Call &made) {
  if (ordered_.empty())
    return told("the program makes a call more than the recording has", nullptr, &made);
  const Expected &next = ordered_.front();
  if (next.call.name != made.name) return told("the program makes another call", &next, &made);
  const std::vector<std::string> names = comparison_.differences(next.call, made);
  if (!names.empty()) return told("the call differs in " + joined(names), &next, &made);
  pass(ordered_, ordered_.begin());
  return std::nullopt;
}

std::optional<std::string> Expectation::compare_unordered(const Call &made) {
  const auto found = std::ranges::find_if(
      unordered_, [&](const Expected &each) { return comparison_.same(each.call, made); });
  if (found != unordered_.end()) {
    pass(unordered_, found);
    return std::nullopt;
  }
  const auto like = std::ranges::find_if(
      unordered_, [&](const Expected &each) { return each.call.name == made.name; });
  return told("the recording has no such call, or not so often",
              like == unordered_.end() ? nullptr : &*like, &made);
}

std::optional<std::string> Expectation::end() {
  const size_t left = ordered_.size() + unordered_.size();
  if (over_ || left == 0) return std::nullopt;
  const Expected &next = ordered_.empty() ? unordered_.front() : ordered_.front();
  return told("the program ends before " + std::to_string(left) +
                  (left == 1 ? " recorded call" : " recorded calls"),
              &next, nullptr);
}

}  // namespace swprobe
