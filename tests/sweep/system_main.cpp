// SPDX-License-Identifier: MIT
// system_sweep_test [FILE]: fails every system call, allocation and file
// operation of the kernel channel and of the dump files, alone and with all
// that follow, and holds what the functions then do against system.def. The
// file gets what was swept, for complete.py.
#include <swctl-vchip/vchip.h>
#include <swctl/kmsg.h>
#include <swctl/l2.h>
#include <swctl/mcast_l2.h>
#include <swctl/platform/sdk.h>

#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

#include "kmsg/thread_key.h"
#include "kmsg/thread_sockets.h"
#include "system_world.h"

namespace {

using sweep::World;
using sweep::world;

constexpr size_t kNever = SIZE_MAX;

struct Step {
  std::string call;
  bool repeats;
  char rule;
};

struct Line {
  const char *name;
  int32_t usual;
  int32_t failed;
  std::vector<Step> steps;
};

std::vector<Step> steps_of(const char *text) {
  std::vector<Step> steps;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const size_t colon = word.find(':');
    const bool repeats = word[colon - 1] == '*';
    steps.push_back({word.substr(0, repeats ? colon - 1 : colon), repeats, word.at(colon + 1)});
  }
  return steps;
}

const std::vector<Line> &lines() {
  static const std::vector<Line> all = {
#define SYSTEM(name, usual, failed, calls) {name, usual, failed, steps_of(calls)},
#include "system.def"
#undef SYSTEM
  };
  return all;
}

// A function with its arguments, and what has to be there before.
struct Subject {
  std::function<void()> prepare;
  std::function<int32_t()> call;
};

struct Outcome {
  int32_t result = 0;
  std::vector<std::string> calls;
  size_t blocks = 0;
  int32_t sockets = 0;  // taken in the table

  bool operator==(const Outcome &) const = default;
};

// Which calls fail, and how.
struct Failure {
  size_t first = kNever;
  size_t last = 0;
  int32_t answer = -1;
  bool holds(size_t place) const { return place >= first && place <= last; }
};

struct Figures {
  size_t functions = 0;
  size_t runs = 0;
  size_t survived = 0;
  size_t died = 0;
  std::vector<std::string> problems;
};
Figures figures;

void begin(const Subject &subject) {
  swctl::thread_sockets = {PTHREAD_MUTEX_INITIALIZER, {}, 0, 0};
  subject.prepare();
  world().calls.clear();
}

Outcome run(const Subject &subject, const Failure &failure) {
  World &own = world();
  begin(subject);
  const int32_t sockets = swctl::thread_sockets.count;
  own.first_failing = failure.first;
  own.last_failing = failure.last;
  own.answer = failure.answer;
  own.playing = true;
  const int32_t result = subject.call();
  own.playing = false;
  const Outcome outcome = {result, own.calls, own.blocks.size(),
                           swctl::thread_sockets.count - sockets};
  for (void *block : std::set<void *>(own.blocks)) free(block);
  return outcome;
}

// In a child process, which is expected to die.
bool dies(const Subject &subject, const Failure &failure) {
  const int process = fork();
  if (process == 0) {
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    signal(SIGSEGV, SIG_DFL);
    run(subject, failure);
    _exit(0);
  }
  int status = 0;
  waitpid(process, &status, 0);
  return status != 0;
}

// Goes through the calls of a run without failures by the table's line.
class Prediction {
 public:
  Prediction(const Line &line, const Outcome &usual, const Failure &failure)
      : line_(line), usual_(usual), failure_(failure), outcome_(usual) {
    outcome_.calls.clear();
    while (!ended_ && place_ < usual.calls.size()) follow();
    if (ended_ && !has_socket_) outcome_.sockets = 0;
  }
  const Outcome &outcome() const { return outcome_; }
  bool dies() const { return dies_; }

 private:
  void follow() {
    const std::string &call = usual_.calls[place_];
    if (line_.steps.at(step_).repeats && line_.steps[step_].call != call) ++step_;
    const Step &step = line_.steps.at(step_);
    if (step.call != call) throw std::runtime_error("the table has no " + call + " there");
    // By its place in this run, which may be another than in the usual one.
    const bool failing = failure_.holds(outcome_.calls.size());
    outcome_.calls.push_back(call);
    ++place_;
    if (failing) apply(step.rule);
    if (call == "bind" && !ended_) has_socket_ = true;
    if (!step.repeats) ++step_;
  }

  void apply(char rule) {
    const int32_t answer = failure_.answer;
    switch (rule) {
      case '!': return end_if(answer < 0, line_.failed);
      case '1': return end_if(answer == -1, line_.failed);
      case 's': return end_if(answer <= 0, answer);
      case 'S': return end_if(answer <= 0, line_.failed);
      case 'r':
        outcome_.result = answer;
        return end_if(answer <= 0, answer == 0 ? 0 : line_.failed);
      case 'R': return end_if(answer <= 0, line_.failed);
      case 'n': return end_if(true, line_.failed);
      case 'b': outcome_.calls.push_back("recvmsg"); return end_if(true, line_.failed);
      case 'x': dies_ = ended_ = true; return;
      case 'e':
        while (usual_.calls[place_] == "fread") ++place_;
        return;
      case '.': return;
      default: throw std::runtime_error(std::string("the table has no rule ") + rule);
    }
  }

  void end_if(bool ends, int32_t result) {
    if (!ends) return;
    ended_ = true;
    outcome_.result = result;
    outcome_.blocks = 0;
  }

  const Line &line_;
  const Outcome &usual_;
  const Failure &failure_;
  Outcome outcome_;
  size_t place_ = 0;
  size_t step_ = 0;
  bool ended_ = false;
  bool dies_ = false;
  bool has_socket_ = false;
};

// How often a file is read and written depends on what was written before.
std::vector<std::string> without_repeats(const std::vector<std::string> &calls) {
  std::vector<std::string> kept;
  for (const std::string &call : calls)
    if (kept.empty() || kept.back() != call || (call != "fread" && call != "fwrite"))
      kept.push_back(call);
  return kept;
}

std::string text_of(const Outcome &outcome) {
  std::string text = std::to_string(outcome.result) + " after";
  for (const std::string &call : without_repeats(outcome.calls)) text += " " + call;
  return text + ", " + std::to_string(outcome.blocks) + " blocks, " +
         std::to_string(outcome.sockets) + " sockets";
}

void fail_once(const Line &line, const Subject &subject, const Outcome &usual,
               const Failure &failure) {
  const Prediction prediction(line, usual, failure);
  const std::string where = std::string(line.name) + ", call " + std::to_string(failure.first) +
                            " " + usual.calls[failure.first] +
                            (failure.last == kNever ? " and all after it" : "") + " answering " +
                            std::to_string(failure.answer) + ": ";
  ++figures.runs;
  if (prediction.dies()) {
    if (dies(subject, failure)) {
      ++figures.died;
    } else {
      figures.problems.push_back(where + "survives");
    }
    return;
  }
  const std::string is = text_of(run(subject, failure));
  const std::string wanted = text_of(prediction.outcome());
  if (is == wanted) {
    ++figures.survived;
  } else {
    figures.problems.push_back(where + is + ", not " + wanted);
  }
}

// Pointers and counts of items have one way to fail, numbers have several.
std::vector<int32_t> answers_of(const std::string &call) {
  static const std::map<std::string, std::vector<int32_t>> kAnswers = {
      {"socket", {-1, INT_MIN}},   {"bind", {-1, INT_MIN, 7}},      {"sendmsg", {-1, INT_MIN, 7}},
      {"close", {-1, INT_MIN, 7}}, {"select", {-1, INT_MIN, 0, 7}}, {"recvmsg", {-1, 0, 7}}};
  const auto found = kAnswers.find(call);
  return found == kAnswers.end() ? std::vector<int32_t>{-1} : found->second;
}

void sweep_line(const Line &line, const Subject &subject) {
  const Outcome usual = run(subject, {});
  ++figures.functions;
  if (usual.calls.empty()) throw std::runtime_error("makes no call");
  if (usual.result != line.usual)
    throw std::runtime_error("answers " + std::to_string(usual.result) + " if nothing fails");
  for (size_t place = 0; place < usual.calls.size(); ++place) {
    for (const int32_t answer : answers_of(usual.calls[place]))
      fail_once(line, subject, usual, {place, place, answer});
    fail_once(line, subject, usual, {place, kNever, -1});
  }
}

constexpr uint32_t kCode = 0x70005;

struct Message {
  KernelMsgHeader header;
  uint8_t payload[4];
};
constexpr Message kMessage = {{7, SWCTL_KMSG_TO_KERNEL, 5, 0, 4}, {1, 2, 3, 4}};

int32_t made(uint8_t *message) {
  free(message);
  return message != nullptr;
}

int32_t exchange() {
  void *reply = nullptr;
  const int32_t result =
      MSG_UserSendAndRecvMessage(reinterpret_cast<const uint8_t *>(&kMessage), 1, &reply);
  free(reply);
  return result;
}

void fill_table() {
  for (int32_t number = 0; number < SWCTL_KMSG_MAX_THREADS; ++number)
    SetSockData(100 + number, static_cast<uint32_t>(1000 + number));
}

void nothing() {}

FILE *file_for(const char *mode) {
  return fopen(world().table.c_str(), mode);
}

// With two records of the kind to read.
template <typename Entry>
FILE *&records() {
  static FILE *file = nullptr;
  if (file != nullptr) fclose(file);
  file = file_for("w+");
  const Entry entries[2] = {};
  fwrite(entries, sizeof *entries, 2, file);
  rewind(file);
  return file;
}

std::map<std::string, Subject> kmsg_subjects() {
  constexpr uint32_t kKey = 4711;
  const auto own = [] { SetSockData(sweep::kSocket, kKey); };
  const auto composite = [] { SetSockData(sweep::kSocket, (2u << 16) | 1u); };
  const auto exiting = [] {
    const auto thread = static_cast<uint32_t>(swctl::thread_identity());
    SetSockData(sweep::kSocket, (thread << 16) | static_cast<uint32_t>(getpid()));
  };
  return {
      {"CreateThreadSocket", {nothing, [] { return CreateThreadSocket(kKey); }}},
      {"CreateThreadSocket@full", {fill_table, [] { return CreateThreadSocket(kKey); }}},
      {"GetThreadSocket", {nothing, [] { return GetThreadSocket(kKey); }}},
      {"DeleteThreadSocket", {own, [] { return DeleteThreadSocket(kKey); }}},
      {"SetFreeSockData", {own, [] { return SetFreeSockData(kKey); }}},
      {"__HandleThreadExit", {composite, [] { return __HandleThreadExit(1, 2); }}},
      {"HandleThreadExit", {exiting, [] { return HandleThreadExit(); }}},
      {"MSG_CreateMessage", {nothing, [] { return made(MSG_CreateMessage(&kMessage.header)); }}},
      {"MSG_CreateUserToKernelMessage",
       {nothing,
        [] {
          return made(
              MSG_CreateUserToKernelMessage(kCode, kMessage.payload, sizeof kMessage.payload));
        }}},
      {"MSG_UserSendAndRecvMessage", {nothing, exchange}},
      {"user_send_data_to_kernel",
       {nothing,
        [] { return static_cast<int32_t>(user_send_data_to_kernel(kCode, kMessage.payload, 4)); }}},
  };
}

std::map<std::string, Subject> dump_subjects() {
  static FILE *file = nullptr;
  static uint32_t count;
  static user_l2_addr_t record;
  static User_mcast_addr_t group;
  static chip_l2_ucast_entry entry;
  static chip_l2_mcast_entry mcast_entry;
  const auto unicast = [] { file = records<chip_l2_ucast_entry>(); };
  const auto multicast = [] { file = records<chip_l2_mcast_entry>(); };
  constexpr int32_t kPort = 3;
  return {
      {"user_mac_table_show",
       {nothing, [] { return user_mac_table_show(0, world().table.c_str()); }}},
      {"user_mac_mcast_table_show",
       {nothing, [] { return user_mac_mcast_table_show(0, world().table.c_str()); }}},
      {"test_fun3_callback", {unicast, [] { return test_fun3_callback(0, &entry, file); }}},
      {"test_fun4_callback", {multicast, [] { return test_fun4_callback(0, &mcast_entry, file); }}},
      {"user_l2_mactable_fread",
       {unicast, [] { return user_l2_mactable_fread(&record, file, 0); }}},
      {"user_l2_mactable_fread@group",
       {multicast, [] { return user_l2_mactable_fread(&group, file, 1); }}},
      {"user_mac_violate_count_get_by_port",
       {nothing, [] { return user_mac_violate_count_get_by_port(kPort, &count); }}},
      {"user_mac_violate_del_by_port",
       {nothing, [] { return user_mac_violate_del_by_port(kPort); }}},
  };
}

// Two entries and two groups in the default VLAN.
void fill_chip() {
  constexpr uint32_t kDefaultVlan = 1;
  for (const uint8_t number : {uint8_t{1}, uint8_t{2}}) {
    chip_l2_ucast_entry entry = {};
    entry.vid = kDefaultVlan;
    entry.mac[5] = number;
    entry.port = 3;
    rtk_l2_addr_add(0, &entry);
    vchip_l2_mark(0, kDefaultVlan, entry.mac, 1, 0);
    chip_l2_mcast_entry group = {};
    group.vid = kDefaultVlan;
    group.mac[0] = 1;
    group.mac[5] = number;
    rtk_l2_mcastAddr_add(0, &group);
  }
}

void sweep_all() {
  std::map<std::string, Subject> subjects = kmsg_subjects();
  subjects.merge(dump_subjects());
  for (const Line &line : lines()) {
    try {
      sweep_line(line, subjects.at(line.name));
    } catch (const std::exception &why) {
      figures.problems.push_back(std::string(line.name) + ": " + why.what());
    }
  }
}

bool write_list(const char *path, const char *base) {
  FILE *const file = fopen(path, "w");
  if (file == nullptr) return false;
  for (const Line &line : lines())
    fprintf(file, "function %s\n",
            std::string(line.name).substr(0, strcspn(line.name, "@")).c_str());
  for (const void *place : world().places)
    fprintf(file, "place %zx\n", static_cast<size_t>(static_cast<const char *>(place) - base));
  return fclose(file) == 0;
}

}  // namespace

extern "C" const char __executable_start;

int main(int count, char **arguments) {
  setenv("VCHIP_LOG", "none", 1);
  unsetenv("VCHIP_IMAGE");
  char directory[] = "/tmp/sweep.XXXXXX";
  if (mkdtemp(directory) == nullptr) return 2;
  world().table = std::string(directory) + "/table";
  // What the library prints is the affair of other tests.
  FILE *const output = stdout;
  stdout = stderr = fopen("/dev/null", "w");
  fill_chip();
  sweep_all();
  stdout = output;
  unlink(world().table.c_str());
  rmdir(directory);
  const bool is_listed = count < 2 || write_list(arguments[1], &__executable_start);
  for (const std::string &problem : figures.problems) printf("system sweep: %s\n", problem.c_str());
  printf(
      "system sweep: %zu sets of arguments, %zu call sites, %zu failures injected, "
      "%zu survived as they should, %zu died as they must\n",
      figures.functions, world().places.size(), figures.runs, figures.survived, figures.died);
  return figures.problems.empty() && is_listed ? 0 : 1;
}
