// SPDX-License-Identifier: MIT
// What chips in images cost: a call under each kind of lock beside one on a
// private chip, how long one waits beside a process or thread that locks in a
// loop, a fresh image, and a thousand boards at once. Each figure is the best of
// several rounds; it is beside the most that it may be.
#include <swctl-vchip/image.h>
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <linux/futex.h>
#include <signal.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

std::string directory;

std::string in_directory(const std::string &name) {
  return directory + "/" + name;
}

double since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

bool report(const char *what, double value, double limit, const char *unit) {
  printf("%-52s %9.2f %-10s limit %8.2f%s\n", what, value, unit, limit,
         value <= limit ? "" : "  EXCEEDED");
  fflush(stdout);
  return value <= limit;
}

// Runs work() in a child and answers what it answers there.
template <typename Work>
double in_child(const std::string &image, const char *lock, Work work) {
  int ends[2];
  if (pipe(ends) != 0) return 1e9;
  const pid_t child = fork();
  if (child == 0) {
    setenv("VCHIP_IMAGE", image.c_str(), 1);
    setenv("VCHIP_LOCK", lock, 1);
    const double answer = work();
    _exit(write(ends[1], &answer, sizeof answer) == sizeof answer ? 0 : 1);
  }
  close(ends[1]);
  double answer = 1e9;
  if (read(ends[0], &answer, sizeof answer) != sizeof answer) answer = 1e9;
  close(ends[0]);
  waitpid(child, nullptr, 0);
  return answer;
}

// Nanoseconds of a call.
double call_cost() {
  constexpr int kRounds = 20;
  constexpr int kCalls = 50000;
  double best = 1e9;
  uint32_t link = 0;
  for (int round = 0; round < kRounds; ++round) {
    const auto start = Clock::now();
    for (int call = 0; call < kCalls; ++call) rtk_port_link_get(0, 3, &link);
    best = std::min(best, since(start) * 1e9 / kCalls);
  }
  return best;
}

// Microseconds that 99 of 100 calls wait at most.
double waiting_time() {
  constexpr int kMoments = 20;
  constexpr size_t kCalls = 1000;
  double best = 1e9;
  for (int moment = 0; moment < kMoments; ++moment) {
    std::vector<double> times;
    for (size_t call = 0; call < kCalls; ++call) {
      uint32_t link = 0;
      const auto start = Clock::now();
      rtk_port_link_get(0, 3, &link);
      times.push_back(since(start) * 1e6);
      usleep(50);
    }
    std::sort(times.begin(), times.end());
    best = std::min(best, times[kCalls * 99 / 100]);
  }
  return best;
}

double beside_a_process(const std::string &image, const char *lock) {
  const pid_t other = fork();
  if (other == 0) {
    setenv("VCHIP_IMAGE", image.c_str(), 1);
    setenv("VCHIP_LOCK", lock, 1);
    for (;;) rtk_port_adminEnable_set(0, 5, 1);
  }
  while (vchip::image_status(image).users.empty()) usleep(1000);
  const double waited = in_child(image, lock, waiting_time);
  kill(other, SIGKILL);
  waitpid(other, nullptr, 0);
  return waited;
}

double beside_a_thread() {
  std::atomic<bool> stop = false;
  std::thread other([&] {
    while (!stop) rtk_port_adminEnable_set(0, 5, 1);
  });
  const double waited = waiting_time();
  stop = true;
  other.join();
  return waited;
}

bool bench_locks() {
  const std::string image = in_directory("lock.img"), other = in_directory("record.img");
  in_child(image, "", [] { return vchip_reset() * 1.0; });
  in_child(other, "record", [] { return vchip_reset() * 1.0; });
  bool good = report("a call on a private chip", in_child("", "", call_cost), 150, "ns");
  good &= report("a call on an image, robust futex", in_child(image, "", call_cost), 150, "ns");
  good &=
      report("a call on an image, record lock", in_child(other, "record", call_cost), 5000, "ns");
  good &= report("beside a process that locks in a loop, 99 of 100", beside_a_process(image, ""),
                 200, "us");
  return good & report("beside a thread that locks in a loop, 99 of 100",
                       in_child(image, "", beside_a_thread), 200, "us");
}

double disk_of(const std::string &path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 ? static_cast<double>(status.st_blocks) * 512 : 1e12;
}

bool bench_fresh() {
  const std::string image = in_directory("fresh.img");
  in_child(image, "", [] { return vchip_reset() * 1.0; });
  bool good = report("a fresh image on the disk", disk_of(image) / 1024, 256, "KB");
  double opening = 1e9, reset = 1e9;
  for (int round = 0; round < 50; ++round) {
    opening = std::min(opening, in_child(image, "", [] {
                         const auto start = Clock::now();
                         return vchip_open() == nullptr ? since(start) * 1e3 : 1e9;
                       }));
    reset = std::min(reset, in_child(image, "", [] {
                       vchip_open();
                       const auto start = Clock::now();
                       return vchip_reset() == 0 ? since(start) * 1e3 : 1e9;
                     }));
  }
  good &= report("to open it", opening, 1, "ms");
  return good & report("to reset it", reset, 1, "ms");
}

// What the boards and who started them see.
struct Board {
  std::atomic<uint32_t> round;
  std::atomic<uint32_t> done;
  std::atomic<uint32_t> failures;
};

constexpr uint32_t kBoards = 1000;

void wait_while(std::atomic<uint32_t> &word, uint32_t value) {
  while (word == value) syscall(SYS_futex, &word, FUTEX_WAIT, value, nullptr, nullptr, 0);
}
void wake_all(std::atomic<uint32_t> &word) {
  syscall(SYS_futex, &word, FUTEX_WAKE, INT_MAX, nullptr, nullptr, 0);
}

int32_t make_tables(uint32_t number) {
  int32_t fault = 0;
  const uint32_t members = 0xffffff, untagged = 0;
  for (uint32_t vid = 10; vid < 20; ++vid) {
    fault |= rtk_vlan_create(0, vid);
    fault |= rtk_vlan_port_set(0, vid, &members, &untagged);
  }
  for (uint32_t count = 0; count < 100; ++count) {
    chip_l2_ucast_entry entry = {};
    entry.vid = 10;
    const uint8_t mac[6] = {2,
                            0,
                            static_cast<uint8_t>(number >> 8),
                            static_cast<uint8_t>(number),
                            1,
                            static_cast<uint8_t>(count)};
    memcpy(entry.mac, mac, sizeof mac);
    entry.port = static_cast<int32_t>(count % 24);
    fault |= rtk_l2_addr_add(0, &entry);
  }
  return fault;
}

// What a daemon asks and sets when it starts.
int32_t use_as_a_daemon() {
  int32_t fault = 0;
  for (int turn = 0; turn < 10; ++turn)
    for (int32_t port = 0; port < 28; ++port) {
      uint32_t word = 0;
      fault |= rtk_port_link_get(0, port, &word);
      fault |= rtk_port_adminEnable_set(0, port, 1);
      fault |= rtk_vlan_portPvid_set(0, port, 10);
      fault |= rtk_vlan_portPvid_get(0, port, &word);
    }
  return fault;
}

[[noreturn]] void be_board(uint32_t number, Board &board) {
  setenv("VCHIP_IMAGE", in_directory("board." + std::to_string(number)).c_str(), 1);
  uint32_t seen = board.round;
  if (make_tables(number) != 0 || use_as_a_daemon() != 0) ++board.failures;
  for (;;) {
    if (++board.done == kBoards) wake_all(board.done);
    wait_while(board.round, seen);
    ++seen;
    uint32_t word = 0;
    if (rtk_port_link_get(0, 3, &word) != 0) ++board.failures;
  }
}

void wait_for_all(Board &board) {
  for (uint32_t done; (done = board.done) != kBoards;) wait_while(board.done, done);
}

double round_of_calls(Board &board) {
  board.done = 0;
  const auto start = Clock::now();
  ++board.round;
  wake_all(board.round);
  wait_for_all(board);
  return since(start) * 1e3;
}

// Of all processes, each page shared out among those that have it.
double memory_of(const std::vector<pid_t> &processes) {
  double kilobytes = 0;
  for (const pid_t process : processes) {
    std::ifstream lines("/proc/" + std::to_string(process) + "/smaps_rollup");
    for (std::string line; std::getline(lines, line);)
      if (line.starts_with("Pss:")) kilobytes += strtod(line.c_str() + 4, nullptr);
  }
  return kilobytes / 1024;
}

bool bench_boards() {
  void *memory =
      mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  Board &board = *new (memory) Board();
  std::vector<pid_t> processes;
  const auto start = Clock::now();
  for (uint32_t number = 0; number < kBoards; ++number) {
    const pid_t process = fork();
    if (process == 0) be_board(number, board);
    processes.push_back(process);
  }
  wait_for_all(board);
  bool good = report("1,000 boards, a process each: to make them", since(start), 5, "s");
  double disk = 0;
  for (uint32_t number = 0; number < kBoards; ++number)
    disk += disk_of(in_directory("board." + std::to_string(number)));
  good &= report("their memory, and their images on the disk",
                 memory_of(processes) + disk / 1024 / 1024, 1536, "MB");
  double best = 1e9;
  for (int round = 0; round < 50; ++round) best = std::min(best, round_of_calls(board));
  good &= report("a round of one call each", best, 20, "ms");
  for (const pid_t process : processes) kill(process, SIGKILL);
  for (const pid_t process : processes) waitpid(process, nullptr, 0);
  if (board.failures != 0) printf("%u calls were refused\n", board.failures.load());
  return good && board.failures == 0;
}

}  // namespace

int main(int count, char **words) {
  std::string name = std::string(count > 1 ? words[1] : "/tmp") + "/swctl-image-bench-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) {
    perror(name.c_str());
    return 2;
  }
  directory = name;
  setenv("VCHIP_LOG", "none", 1);
  bool good = bench_locks();
  good &= bench_fresh();
  good &= bench_boards();
  std::filesystem::remove_all(directory);
  return good ? 0 : 1;
}
