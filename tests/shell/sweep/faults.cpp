// SPDX-License-Identifier: MIT
// shell_fault_sweep COMMANDS [EVERY [WORD]...]: every command of the shell meets
// a platform that refuses. Each of its calls fails, once alone, once with all
// calls of its name that follow, once with all calls that follow. A command
// that says that it is done has answered and done what it would have without;
// any other names a call and its result. Of all these faults every EVERYth is
// tried. With words, only of commands that begin with one of them.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <regex>
#include <set>

#include "cover.h"
#include "run.h"
#include "world.h"

namespace {

using namespace shell_sweep;

constexpr int kResult = -77;

// What these calls answer where nothing is wrong but that there is nothing: a
// failure that looks the same has to be told from it too.
const std::map<std::string, int> kUsualResults = {
    {"adp_intf_2_phy_id", -1},
    {"adp_phy_2_intf_id", -1},
    {"rtk_l2_nextValidAddr_get", -1031},
    {"rtk_l2_nextValidMcastAddr_get", -1031},
    {"rtk_sec_attackPreventAction_get", -1005},
    {"rtk_vlan_port_get", -1041},
};

struct Fault {
  std::string plan;
  int result;
};

// Of many calls of a name, those at both ends and one between.
bool is_looked_at(size_t place, size_t count) {
  constexpr size_t kEnd = 2;
  return place < kEnd || place + kEnd >= count || place == count / 2;
}

void add_faults(std::vector<Fault> &faults, const std::string &call, size_t occurrence,
                size_t place, int result) {
  const std::string end = " result " + std::to_string(result);
  faults.push_back({call + " nth " + std::to_string(occurrence) + end, result});
  faults.push_back({call + " from " + std::to_string(occurrence) + end, result});
  faults.push_back({"* from " + std::to_string(place) + end, result});
}

std::vector<Fault> faults_of(const std::vector<std::string> &calls) {
  std::map<std::string, size_t> count;
  for (const std::string &call : calls) ++count[call];
  std::map<std::string, size_t> seen;
  std::vector<Fault> faults;
  for (size_t place = 0; place < calls.size(); ++place) {
    const std::string &call = calls[place];
    const size_t occurrence = seen[call]++;
    if (call.empty() || !is_looked_at(occurrence, count[call])) continue;
    add_faults(faults, call, occurrence + 1, place + 1, kResult);
    const auto usual = kUsualResults.find(call);
    if (usual != kUsualResults.end())
      add_faults(faults, call, occurrence + 1, place + 1, usual->second);
  }
  return faults;
}

// What is wrong with a run; empty if nothing is.
std::string judge(const Run &run, const Run &reference, int result) {
  static const std::regex kCall("\\b(rtk|adp|user|User)_\\w+");
  if (run.status != reference.status && run.status != 2) return "has another status";
  if (run.status == reference.status && run.status != 2) {
    if (run.answer != reference.answer) return "answers something else";
    if (run.file != reference.file) return "writes another file";
    if (!run.is_as) return "leaves another chip";
    return "";
  }
  if (run.status == reference.status && run.answer == reference.answer) return "";
  if (!std::regex_search(run.message, kCall)) return "names no call";
  if (run.message.find("result " + std::to_string(result)) == std::string::npos)
    return "does not name the result";
  return "";
}

class Sweep {
 public:
  explicit Sweep(size_t every) : every_(every) {}

  void add(const std::string &line) {
    ++commands_;
    const Run reference = run({.line = line, .keep_in = &after_});
    // One that reads the whole chip makes thousands of calls, most of them alike.
    const bool reads_all = line.starts_with("config ") || line.starts_with("monitor") ||
                           line.find(" replace ") != std::string::npos;
    const size_t every = reads_all ? 64 * every_ : every_;
    for (const Fault &fault : faults_of(reference.calls)) {
      if (seen_++ % every != 0) continue;
      const Run failed = run({.line = line, .plan = fault.plan, .as = &after_});
      if (failed.failed == 0) complain(line, fault, failed, "is not reached by the plan");
      ++faults_;
      const std::string wrong = judge(failed, reference, fault.result);
      if (!wrong.empty()) complain(line, fault, failed, wrong);
    }
  }

  bool report() const {
    printf("fault sweep: %zu commands, %zu faults, %zu problems\n", commands_, faults_, problems_);
    return problems_ == 0 && faults_ != 0;
  }

 private:
  void complain(const std::string &line, const Fault &fault, const Run &run,
                const std::string &wrong) {
    ++problems_;
    printf("%s [%s]: %s (status %d)\n  %s\n", line.c_str(), fault.plan.c_str(), wrong.c_str(),
           run.status, run.status == 0 ? run.answer.substr(0, 200).c_str() : run.message.c_str());
  }

  SharedChip after_;
  size_t every_;
  size_t seen_ = 0;
  size_t commands_ = 0;
  size_t faults_ = 0;
  size_t problems_ = 0;
};

// A count that goes through a file which cannot be written is no count.
bool refuses_without_dump_file() {
  allow_dump_file(false);
  const Run refused = run({.line = "mac count violations"});
  allow_dump_file(true);
  const bool is_right =
      refused.status == 2 &&
      refused.message.find("/var/mactable cannot be written: Permission denied") !=
          std::string::npos;
  if (!is_right) printf("mac count violations without its file: %s\n", refused.message.c_str());
  return is_right;
}

bool is_wanted(const std::string &line, int count, char **words) {
  if (count <= 3) return true;
  return std::any_of(words + 3, words + count,
                     [&](const char *word) { return line.starts_with(word); });
}

}  // namespace

int main(int count, char **words) {
  if (count < 2) return 2;
  const Commands commands = read_commands(words[1]);
  enter_new_directory();
  if (!covers_everything(commands)) return 1;
  const SharedChip &chip = prepared_chip(commands, 0);
  chip.put_back();
  Sweep sweep(count > 2 ? std::stoul(words[2]) : 1);
  for (const std::string &line : commands.swept)
    if (is_wanted(line, count, words)) sweep.add(line);
  const bool is_told = refuses_without_dump_file();
  return sweep.report() && is_told ? 0 : 1;
}
