// SPDX-License-Identifier: MIT
// The probe of this process: who watches, what was seen, what is planned.
#ifndef SWCTL_PROBE_SESSION_H
#define SWCTL_PROBE_SESSION_H

#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

#include "plan.h"
#include "settings.h"

namespace swprobe {

class PlainRecording;

// What is done with a call of the platform: nothing, its line in a recording and
// nothing else, or whatever somebody wants of it.
enum class Look { none, to_record, at_all };

class Session {
 public:
  // The first use reads the environment; a wrong word there ends the process.
  static Session &get();

  Look look() const { return look_.load(std::memory_order_relaxed); }
  // Whether functions of the library are looked at.
  bool watches_library() const { return watching_library_; }
  // Until somebody watches, the site's calls go straight to `next`. The lookup
  // of `next` is the caller's: the dynamic linker has a lock of its own, which
  // must not be waited for under ours.
  void open_short_way(Site &site, void *next);
  // Holds a call that is about to be made against what is expected, and asks
  // who answers it: none is the platform. `expected` becomes its number among
  // the calls that are compared.
  std::optional<Verdict> judge(const Call &call, uint64_t &expected);
  // Numbers, keeps and writes a call that has returned.
  void add(Call call, uint64_t expected);
  void record(PlainRecording &recording);
  // A function of the library has been called; has returned; will never return.
  void enter(const Call &call) { writers_.enter(call); }
  void leave(Call call);
  void abandon() { Writers::abandon(); }

  // From here on calls are watched and kept in memory.
  void keep();
  std::vector<Call> take();
  void add_rule(Rule rule);
  void add_answer(Rule rule);
  void clear_plan();
  uint64_t verdicts();

  // Whether a recording answers in the place of the platform.
  bool answers() const { return answers_ != nullptr; }

  // At the end of a process that has judged calls: says what is wrong with the
  // rules of the environment.
  static void end();

 private:
  explicit Session(Settings settings);
  static Session &start();
  void say_complaints();
  void expect(const Call &call, uint64_t &expected);
  bool watches(const Site &site) const;
  void close_short_ways();

  std::mutex mutex_;
  std::atomic<Look> look_ = Look::none;
  bool keeping_ = false;
  bool judged_ = false;  // a call, in this process
  uint64_t number_ = 0;
  Plan plan_;
  std::vector<Call> kept_;
  std::unique_ptr<Expectation> expectation_;
  std::unique_ptr<Answers> answers_;
  Writers writers_;
  bool watching_library_;
};

}  // namespace swprobe

#endif
