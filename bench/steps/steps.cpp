// SPDX-License-Identifier: MIT
// Times every function that makes more than one call of the platform, against
// the same calls made directly, on the virtual chip.
//
// The program runs twice. First, with the probe, it learns: what each function
// calls is in the recording that STEPS_LEARN announces, between marks. Then,
// without the probe, STEPS_RECORDING names that recording, and rounds through the
// library take turns with rounds of the recorded calls.
#include <swctl-probe/probe.h>
#include <swctl/platform/log.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" {
#include "marks.h"
}

namespace {

constexpr int kRounds = 25;
constexpr double kRoundSeconds = 0.0004;
constexpr char kMark[] = "bench";

using Clock = std::chrono::steady_clock;
using Steps = std::vector<std::function<void()>>;

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double median(std::vector<double> numbers) {
  std::nth_element(numbers.begin(), numbers.begin() + kRounds / 2, numbers.end());
  return numbers[kRounds / 2];
}

// One function under way.
struct Subject {
  std::string name;
  Steps steps;
  int calls_a_round = 0;  // 0: not yet known
  Clock::time_point start;
  std::vector<double> through, direct, ratio;

  void finish_round() {
    through.push_back(seconds_since(start) / calls_a_round);
    start = Clock::now();
    for (int call = 0; call < calls_a_round; ++call)
      for (const auto &step : steps) step();
    direct.push_back(seconds_since(start) / calls_a_round);
    ratio.push_back(through.back() / direct.back());
  }
};

class Bench {
 public:
  Bench() {
    const char *recording = getenv("STEPS_RECORDING");
    if (recording != nullptr) read(recording);
  }

  void begin(const char *name) {
    subject_ = {};
    subject_.name = name;
    if (learns_) return mark(name);
    const Lesson &lesson = lessons_.at(next_++);
    if (lesson.name != name) throw std::runtime_error("the recording is of another program");
    for (const swprobe::Call &call : lesson.calls) subject_.steps.push_back(swprobe::prepare(call));
  }

  int round() { return learns_ ? learning_round() : timed_round(); }

 private:
  // What one call of a function did, in the order of the program.
  struct Lesson {
    std::string name;
    std::vector<swprobe::Call> calls;
  };

  void read(const char *path) {
    learns_ = false;
    bool between = true;
    for (const swprobe::Call &call : swprobe::read_recording(path)) {
      if (call.name == "sys_trace_add_log" && call.arguments[1].text == kMark) {
        between = call.arguments[0].text.empty();
        if (!between) lessons_.push_back({call.arguments[0].text, {}});
      } else if (!between) {
        lessons_.back().calls.push_back(call);
      }
    }
  }

  void mark(const char *text) { sys_trace_add_log(text, kMark); }

  int learning_round() {
    if (subject_.calls_a_round++ == 0) return 1;
    mark("");
    return 0;
  }

  int timed_round() {
    Subject &now = subject_;
    if (now.steps.empty()) return 0;
    if (now.calls_a_round == 0) {
      now.calls_a_round = calls_for_a_round();
    } else {
      now.finish_round();
    }
    if (now.ratio.size() == kRounds) return report();
    now.start = Clock::now();
    return now.calls_a_round;
  }

  int calls_for_a_round() {
    const auto start = Clock::now();
    for (const auto &step : subject_.steps) step();
    return std::clamp(static_cast<int>(kRoundSeconds / seconds_since(start)), 1, 2000);
  }

  int report() {
    const Subject &now = subject_;
    fprintf(stderr, "steps %s %zu %.1f %.1f %.3f\n", now.name.c_str(), now.steps.size(),
            median(now.through) * 1e9, median(now.direct) * 1e9, median(now.ratio));
    return 0;
  }

  bool learns_ = true;
  std::vector<Lesson> lessons_;
  size_t next_ = 0;
  Subject subject_;
};

Bench &bench() {
  static Bench only;
  return only;
}

}  // namespace

void steps_begin(const char *name) {
  bench().begin(name);
}

int steps_round(void) {
  return bench().round();
}
