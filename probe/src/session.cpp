// SPDX-License-Identifier: MIT
#include "session.h"

#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <pthread.h>
#include <stdexcept>
#include <utility>

#include "line.h"
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
    : watching_(!settings.traces.empty() || !settings.recordings.empty() ||
                !settings.rules.empty()),
      traces_(std::move(settings.traces)),
      recordings_(std::move(settings.recordings)) {
  for (Rule &rule : settings.rules) plan_.add_rule(std::move(rule));
  for (LineFile &file : recordings_) file.write(recording_header());
  // A child of fork() must not inherit the lock from a thread it does not have.
  pthread_atfork([] { get().mutex_.lock(); }, [] { get().mutex_.unlock(); },
                 [] {
                   get().judged_ = false;
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
}

bool Session::watches() {
  const std::lock_guard lock(mutex_);
  return watching_;
}

void Session::open_short_way(Site &site, void *next) {
  const std::lock_guard lock(mutex_);
  if (!watching_) site.idle.store(next, std::memory_order_relaxed);
}

std::optional<Verdict> Session::judge(const Call &call) {
  const std::lock_guard lock(mutex_);
  judged_ = true;
  return plan_.judge(call);
}

void Session::add(Call call) {
  const char *sentence = traces_.empty() ? nullptr : sentence_for(call);
  const std::lock_guard lock(mutex_);
  call.number = ++number_;
  for (LineFile &file : recordings_) file.write(recording_line(call));
  if (!traces_.empty()) {
    const std::string line = line_of(call, sentence);
    for (LineFile &file : traces_) file.write(line);
  }
  if (keeping_) kept_.push_back(std::move(call));
}

void Session::close_short_ways() {
  for (Site *site : known_calls()) site->idle.store(nullptr, std::memory_order_relaxed);
}

void Session::keep() {
  const std::lock_guard lock(mutex_);
  if (keeping_) return;
  keeping_ = watching_ = true;
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
