// SPDX-License-Identifier: MIT
#include "session.h"

#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <pthread.h>
#include <stdexcept>
#include <utility>

#include "line.h"
#include "plain_recording.h"
#include "recording.h"

namespace swprobe {
namespace {

// The platform's sentence for a failure; null without one.
const char *sentence_for(const Call &call) {
  if (!call.has_result || call.result >= 0) return nullptr;
  using Text = const char *(*)(int32_t);
  const auto text = reinterpret_cast<Text>(dlsym(RTLD_DEFAULT, "swctl_platform_result_text"));
  return text == nullptr ? nullptr : text(static_cast<int32_t>(call.result));
}

// The status of a program that does not do what is expected.
constexpr int kUnexpected = 3;

// The session, once there is one.
std::atomic<Session *> started = nullptr;

[[gnu::destructor]] void end_session() {
  Session::end();
}

}  // namespace

Session &Session::start() {
  try {
    return *(started = new Session(
                 read_settings(secure_getenv("SWPROBE"), secure_getenv("SWPROBE_FAIL"))));
  } catch (const std::exception &error) {
    refuse(error.what());
  }
}

Session &Session::get() {
  // Never destroyed: calls may come until the very end of the process.
  static Session &session = start();
  return session;
}

Session::Session(Settings settings)
    : expectation_(std::move(settings.expectation)),
      answers_(std::move(settings.answers)),
      writers_(std::move(settings.traces), std::move(settings.recordings),
               std::move(settings.filter)),
      watching_library_(writers_.any_library()) {
  const bool judges = !settings.rules.empty() || expectation_ || answers_;
  if (judges || writers_.any()) look_ = Look::at_all;
  if (!judges && writers_.are_plain_recordings()) look_ = Look::to_record;
  for (Rule &rule : settings.rules) plan_.add_rule(std::move(rule));
  // A child of fork() must not inherit the lock from a thread it does not have.
  pthread_atfork([] { get().mutex_.lock(); }, [] { get().mutex_.unlock(); },
                 [] {
                   get().judged_ = false;
                   LineFile::in_child();
                   get().mutex_.unlock();
                 });
}

void Session::end() {
  if (started != nullptr) started.load()->say_complaints();
}

void Session::say_complaints() {
  const std::lock_guard lock(mutex_);
  if (!judged_) return;
  for (const std::string &each : plan_.complaints()) complain(each);
  if (!expectation_) return;
  const auto difference = expectation_->end();
  if (difference && expectation_->stops()) refuse(*difference, kUnexpected);
  if (difference) complain(*difference);
}

bool Session::watches(const Site &site) const {
  return site.layer == Layer::library ? watching_library_ : look() != Look::none;
}

void Session::open_short_way(Site &site, void *next) {
  const std::lock_guard lock(mutex_);
  if (!watches(site)) site.idle.store(next, std::memory_order_relaxed);
}

void Session::expect(const Call &call, uint64_t &expected) {
  if (!expectation_) return;
  const uint64_t before = expectation_->made();
  const auto difference = expectation_->compare(call);
  // A call that is not looked at has no number.
  expected = expectation_->made() == before ? 0 : expectation_->made();
  if (!difference) return;
  if (expectation_->stops()) refuse(*difference, kUnexpected);
  complain(*difference);
}

std::optional<Verdict> Session::judge(const Call &call, uint64_t &expected) {
  const std::lock_guard lock(mutex_);
  judged_ = true;
  expect(call, expected);
  std::optional<Verdict> verdict = plan_.judge(call);
  if (verdict || !answers_) return verdict;
  std::string complaint;
  verdict = answers_->answer(call, complaint);
  if (!complaint.empty()) complain(complaint);
  return verdict;
}

void Session::add(Call call, uint64_t expected) {
  const char *sentence = writers_.any_trace() ? sentence_for(call) : nullptr;
  const std::lock_guard lock(mutex_);
  call.number = ++number_;
  if (expectation_) expectation_->answered(expected, call);
  writers_.add(call, sentence);
  if (keeping_) kept_.push_back(std::move(call));
}

void Session::record(PlainRecording &recording) {
  const std::lock_guard lock(mutex_);
  writers_.record(recording.line(++number_));
}

void Session::leave(Call call) {
  const char *sentence = writers_.any_trace() ? sentence_for(call) : nullptr;
  const std::lock_guard lock(mutex_);
  call.number = ++number_;
  writers_.leave(std::move(call), sentence);
}

void Session::close_short_ways() {
  for (Site *site : known_calls()) site->idle.store(nullptr, std::memory_order_relaxed);
}

void Session::keep() {
  const std::lock_guard lock(mutex_);
  if (keeping_) return;
  keeping_ = true;
  look_ = Look::at_all;
  close_short_ways();
}

std::vector<Call> Session::take() {
  keep();
  const std::lock_guard lock(mutex_);
  return std::exchange(kept_, {});
}

void Session::add_rule(Rule rule) {
  keep();
  const std::lock_guard lock(mutex_);
  plan_.add_rule(std::move(rule));
}

void Session::add_answer(Rule rule) {
  keep();
  const std::lock_guard lock(mutex_);
  plan_.add_answer(std::move(rule));
}

void Session::clear_plan() {
  const std::lock_guard lock(mutex_);
  plan_.clear();
}

uint64_t Session::verdicts() {
  const std::lock_guard lock(mutex_);
  return plan_.verdicts();
}

}  // namespace swprobe
