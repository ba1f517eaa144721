// SPDX-License-Identifier: MIT
#include "faults.h"

#include <swctl-probe/probe.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <fnmatch.h>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "folder.h"

namespace swfaults {
namespace {

// Calls whose result says something: those of the SDK and of the adapter.
constexpr char kFailing[] = "[ra][td][kp]_*";

bool can_fail(const swprobe::Call &call) {
  return !call.of_library && call.has_result && fnmatch(kFailing, call.name.c_str(), 0) == 0;
}

bool is_wanted(const Settings &settings, const std::string &name) {
  const auto fits = [&](const std::string &word) {
    return fnmatch(word.c_str(), name.c_str(), 0) == 0;
  };
  return settings.only.empty() || std::ranges::any_of(settings.only, fits);
}

std::string question_of(swprobe::Call call) {
  call.has_result = call.made_up = false;
  for (swprobe::Argument &argument : call.arguments) argument.after.clear();
  return call.line();
}

// One run of the program with files and a chip of its own.
class Bench {
 public:
  Bench(const Settings &settings, const Folder &folder, const std::string &name)
      : settings_(settings), folder_(folder), name_(name) {}
  ~Bench() {
    std::error_code ignored;
    for (const char *kind : {".img", ".calls", ".out", ".err"})
      std::filesystem::remove(file(kind), ignored);
  }
  Bench(const Bench &) = delete;
  Bench &operator=(const Bench &) = delete;

  End go(const std::string &plan) const {
    if (!settings_.image.empty()) std::filesystem::copy_file(settings_.image, file(".img"));
    return run({settings_.words,
                {{"LD_PRELOAD", preload()},
                 {"SWPROBE", "record:" + file(".calls")},
                 {"SWPROBE_FAIL", plan},
                 {"VCHIP_IMAGE", file(".img")}},
                file(".out"),
                file(".err"),
                settings_.seconds});
  }
  std::vector<swprobe::Call> calls() const {
    if (!std::filesystem::exists(file(".calls"))) return {};
    std::vector<swprobe::Call> all = swprobe::read_recording(file(".calls"));
    std::erase_if(all, [](const swprobe::Call &call) { return !can_fail(call); });
    return all;
  }

 private:
  std::string file(const char *kind) const { return folder_.file(name_ + kind); }
  std::string preload() const {
    const char *others = getenv("LD_PRELOAD");
    return others == nullptr || *others == '\0' ? settings_.probe : settings_.probe + ':' + others;
  }

  const Settings &settings_;
  const Folder &folder_;
  std::string name_;
};

void expect_end(const End &end, const Settings &settings) {
  if (end.kind == End::Kind::timed_out)
    throw std::runtime_error("'" + settings.words[0] +
                             "' did not end by itself without a fault; give it a way to, or more "
                             "time (--timeout)");
  if (end.kind == End::Kind::killed)
    throw std::runtime_error("'" + settings.words[0] + "' was ended by signal " +
                             std::to_string(end.code) + " without a fault");
}

std::vector<Fault> faults_in(const std::vector<swprobe::Call> &calls, const Settings &settings) {
  std::vector<Fault> all;
  for (size_t i = 0; i < calls.size(); ++i) {
    if (!is_wanted(settings, calls[i].name)) continue;
    for (const bool and_after : {false, true})
      all.push_back({i + 1, and_after, calls[i].name, question_of(calls[i])});
  }
  return all;
}

// What the rules of the probe say when they have no effect is not the
// program's.
std::string without_probe(const std::string &error) {
  std::string rest;
  for (size_t at = 0; at < error.size();) {
    const size_t end = std::min(error.find('\n', at), error.size() - 1) + 1;
    if (error.compare(at, 9, "swprobe: ") != 0) rest += error.substr(at, end - at);
    at = end;
  }
  return rest;
}

Run try_one(const Settings &settings, const Folder &folder, size_t number, const Fault &fault,
            const Outcome &outcome, const End &usual) {
  const Bench bench(settings, folder, std::to_string(number));
  End end = bench.go(plan_of(fault, settings.result));
  end.error = without_probe(end.error);
  const bool reached = std::ranges::any_of(bench.calls(), &swprobe::Call::made_up);
  return {fault, verdict_of(outcome, usual, end, reached), end};
}

unsigned workers_for(const Settings &settings, size_t runs) {
  const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
  const unsigned wanted = settings.processes == 0 ? cores : settings.processes;
  return static_cast<unsigned>(std::min<size_t>(wanted, std::max<size_t>(runs, 1)));
}

// Runs work(index) for each index, several at a time. The first exception ends
// all.
template <class Work>
void in_parallel(unsigned workers, size_t count, Work work) {
  std::atomic<size_t> next = 0;
  std::mutex mutex;
  std::exception_ptr failure;
  const auto loop = [&] {
    for (size_t index = next++; index < count; index = next++) {
      try {
        work(index);
      } catch (...) {
        const std::lock_guard lock(mutex);
        if (!failure) failure = std::current_exception();
        next = count;
      }
    }
  };
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < workers; ++i) threads.emplace_back(loop);
  for (std::thread &thread : threads) thread.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace

bool is_bad(Verdict verdict) {
  return verdict == Verdict::silent || verdict == Verdict::crashed || verdict == Verdict::hung;
}

const char *word_of(Verdict verdict) {
  switch (verdict) {
    case Verdict::told: return "told";
    case Verdict::silent: return "silent";
    case Verdict::crashed: return "crashed";
    case Verdict::hung: return "hung";
    case Verdict::not_reached: return "not reached";
  }
  return "";
}

std::string plan_of(const Fault &fault, int32_t result) {
  return std::string(kFailing) + (fault.and_after ? " from " : " nth ") +
         std::to_string(fault.call) + " result " + std::to_string(result);
}

Verdict verdict_of(const Outcome &outcome, const End &usual, const End &end, bool reached) {
  if (end.kind == End::Kind::timed_out) return Verdict::hung;
  if (end.kind == End::Kind::killed) return Verdict::crashed;
  if (!reached) return Verdict::not_reached;
  const bool same_output = outcome.output_varies || end.output == usual.output;
  const bool same_error = outcome.error_varies || end.error == usual.error;
  return end.code == usual.code && same_output && same_error ? Verdict::silent : Verdict::told;
}

Outcome try_faults(const Settings &settings) {
  const Folder folder;
  const Bench bench(settings, folder, "usual");
  End usual = bench.go("");
  expect_end(usual, settings);
  usual.error = without_probe(usual.error);
  const std::vector<swprobe::Call> calls = bench.calls();
  if (calls.empty())
    throw std::runtime_error("'" + settings.words[0] + "' made no call that the probe can fail");
  const Bench again(settings, folder, "again");
  const End second = again.go("");
  Outcome outcome;
  outcome.calls = calls.size();
  outcome.status = usual.code;
  outcome.output_varies = second.output != usual.output;
  outcome.error_varies = without_probe(second.error) != usual.error;
  const std::vector<Fault> faults = faults_in(calls, settings);
  outcome.runs.resize(faults.size());
  in_parallel(workers_for(settings, faults.size()), faults.size(), [&](size_t i) {
    outcome.runs[i] = try_one(settings, folder, i, faults[i], outcome, usual);
  });
  return outcome;
}

}  // namespace swfaults
