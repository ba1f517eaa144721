// SPDX-License-Identifier: MIT
#include "judge.h"

#include <swctl/l2.h>
#include <swctl/platform/sdk.h>
#include <swctl/vlan.h>

#include <stdexcept>

namespace sweep {
namespace {

const std::string &name_of(const Seen &seen) {
  return call_names()[seen.call];
}

[[noreturn]] void fail(const std::string &why) {
  throw std::runtime_error(why);
}

bool is_kept(int32_t interface) {
  return interface == 0 || interface == 28;
}

int32_t wrapped_sum(int32_t left, int32_t right) {
  return static_cast<int32_t>(static_cast<uint32_t>(left) + static_cast<uint32_t>(right));
}

}  // namespace

void Judge::judge(int32_t result) {
  while (!ended_ && follow()) {
  }
  if (at_ < run_.size()) fail("goes on with " + name_of(run_[at_]));
  const int32_t wanted = result_.value_or(reference_.result);
  if (result != wanted)
    fail("answers " + std::to_string(result) + ", not " + std::to_string(wanted));
}

// One call. False at the end of the reference.
bool Judge::follow() {
  if (alone_ || expected_ == reference_.trace.size()) return follow_alone();
  const Seen &expected = reference_.trace[expected_++];
  const bool is_there = at_ < run_.size() && run_[at_].call == expected.call &&
                        (!gaps_ || has_same_arguments(run_[at_], expected));
  if (!is_there && gaps_) return true;
  if (at_ == run_.size()) fail("ends before " + name_of(expected));
  if (!is_there) fail("makes " + name_of(run_[at_]) + ", not " + name_of(expected));
  const Seen &seen = run_[at_++];
  hold_arguments(seen, expected);
  note_effect(seen, expected);
  apply(reference_.rules->rules[seen.call], seen, expected);
  if (expected_ == reference_.trace.size() && expected.result < 0 && seen.result >= 0)
    alone_ = true;
  return true;
}

// Where the reference is left or ended earlier: the rules alone count.
bool Judge::follow_alone() {
  if (!alone_ || at_ == run_.size()) return false;
  const Seen &seen = run_[at_++];
  if (seen.reached_chip && !seen.has_effect) fail(name_of(seen) + " was not measured");
  effects_.push_back(&seen.effect);
  apply(reference_.rules->rules[seen.call], seen, seen);
  return true;
}

bool Judge::has_same_arguments(const Seen &seen, const Seen &expected) const {
  return seen.digest == expected.digest && seen.port == expected.port;
}

void Judge::hold_arguments(const Seen &seen, const Seen &expected) const {
  if (loose_) return;
  if (seen.digest != expected.digest) fail(name_of(seen) + " has other arguments");
  const bool is_fed = usual_port_ != fed_port_ && expected.has_port && expected.port == usual_port_;
  const int32_t port = is_fed ? fed_port_ : expected.port;
  if (seen.port != port)
    fail(name_of(seen) + " has port " + std::to_string(seen.port) + ", not " +
         std::to_string(port));
}

// The same call does what it did in the reference; another one does what was
// measured.
void Judge::note_effect(const Seen &seen, const Seen &expected) {
  if (!seen.reached_chip || seen.result < 0) return;
  const bool is_known = has_same_arguments(seen, expected) && expected.result >= 0;
  if (!is_known && !seen.has_effect) fail(name_of(seen) + " was not expected and not measured");
  effects_.push_back(is_known ? &expected.effect : &seen.effect);
}

void Judge::stop_if(bool failed, int32_t result) {
  if (!failed) return;
  ended_ = true;
  result_ = result;
}

void Judge::apply(Rule rule, const Seen &seen, const Seen &expected) {
  const int32_t result = seen.result;
  switch (rule) {
    case Rule::none: fail("there is no rule for " + name_of(seen));
    case Rule::result: result_ = result; return;
    case Rule::stop: result_ = result; return stop_if(result < 0, result);
    case Rule::stop_quietly: return stop_if(result < 0, result);
    case Rule::stop_nonzero: result_ = result; return stop_if(result != 0, result);
    case Rule::refuse_nonzero: return stop_if(result != 0, result);
    case Rule::created:
      result_ = result;
      return stop_if(result != 0 && result != USER_VLAN_EXISTS, result);
    case Rule::sum:
      result_ = wrapped_sum(result_.value_or(-1), result);
      return stop_if(*result_ != 0, *result_);
    case Rule::join: result_ = result_.value_or(0) | result; return;
    case Rule::leave: ended_ = result < 0; return;
    case Rule::ignored:
    case Rule::zero: return;
    case Rule::carried:
    case Rule::port:
    case Rule::mask:
    case Rule::anything: return apply_to_arguments(rule, seen, expected);
    case Rule::end:
    case Rule::kept:
    case Rule::kept_silently:
    case Rule::purge:
    case Rule::skip:
    case Rule::trace: return apply_to_walk(rule, seen, expected);
  }
}

void Judge::apply_to_arguments(Rule rule, const Seen &seen, const Seen &expected) {
  if (rule == Rule::port) {
    usual_port_ = expected.result;
    fed_port_ = seen.result;
    return;
  }
  if (seen.result == expected.result) return;
  if (rule == Rule::anything) alone_ = true;
  loose_ = true;
}

void Judge::apply_to_walk(Rule rule, const Seen &seen, const Seen &expected) {
  const bool differs = (seen.result != 0) != (expected.result != 0);
  const bool failed = seen.result < 0 && expected.result >= 0;
  switch (rule) {
    case Rule::end:
      ++walked_;
      if (seen.result != 0) end_walk(seen, differs);
      return;
    case Rule::trace:
      if (seen.result != 0 && differs) take("sys_trace_add_log");
      return;
    case Rule::kept:
    case Rule::kept_silently:
      if (is_kept(expected.result) && !is_kept(seen.result)) take_removal(rule == Rule::kept);
      return;
    case Rule::purge:
      if (failed) purge();
      return;
    default:
      // What is added is the caller's, without what was not read.
      if (!failed) return;
      loose_ = true;
      ++expected_;
      return;
  }
}

const Seen &Judge::take(const std::string &name) {
  if (at_ == run_.size()) fail("ends before " + name);
  if (run_[at_].call != call_index(name)) fail("makes " + name_of(run_[at_]) + ", not " + name);
  return run_[at_++];
}

// Goes on after the reference's last step of the walk, for entries that were
// reached.
void Judge::end_walk(const Seen &seen, bool is_early) {
  for (size_t index = expected_; index < reference_.trace.size(); ++index)
    if (reference_.trace[index].call == seen.call) expected_ = index + 1;
  gaps_ = is_early || purged_;
  if (is_early && reference_.rules->end) result_ = reference_.rules->end;
}

// The entry that the walk has come by is removed.
void Judge::take_removal(bool is_recorded) {
  const chip_l2_ucast_entry &entry = reference_.entries.at(walked_ - 1);
  const Seen wanted = as_seen([&] { rtk_l2_addr_del(0, entry.vid, entry.mac); });
  const Seen &removal = take("rtk_l2_addr_del");
  if (removal.digest != wanted.digest) fail("removes another entry than the one it came by");
  if (removal.reached_chip) effects_.push_back(&removal.effect);
  if (!is_recorded || !STATIC_ENTRY_TEST(entry.flags)) return;
  if (take("sys_trace_get").result != 0) take("sys_trace_add_log");
  take("Log_logging_func");
}

// The next step of the walk follows, or what the function does at its end.
void Judge::purge() {
  take_removal(true);
  purged_ = true;
  const size_t step = call_index("rtk_l2_nextValidAddr_get");
  while (expected_ < reference_.trace.size() && reference_.trace[expected_].call != step)
    ++expected_;
  if (expected_ < reference_.trace.size()) return;
  if (reference_.rules->end) return stop_if(true, *reference_.rules->end);
  alone_ = true;
}

}  // namespace sweep
