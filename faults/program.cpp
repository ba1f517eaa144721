// SPDX-License-Identifier: MIT
#include "program.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "folder.h"

namespace swfaults {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPause = std::chrono::milliseconds(1);
constexpr int kWrite = O_WRONLY | O_CREAT | O_TRUNC;

double since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

std::vector<char *> pointers(std::vector<std::string> &words) {
  std::vector<char *> all;
  for (std::string &word : words) all.push_back(word.data());
  all.push_back(nullptr);
  return all;
}

// What this process has, but for the names that the order sets.
std::vector<std::string> environment_of(const Order &order) {
  std::vector<std::string> all;
  for (char **each = environ; *each != nullptr; ++each) {
    const std::string entry = *each;
    if (!order.environment.contains(entry.substr(0, entry.find('=')))) all.push_back(entry);
  }
  for (const auto &[name, value] : order.environment) all.push_back(name + '=' + value);
  return all;
}

// Where a program starts: its streams, and a process group of its own.
class Start {
 public:
  explicit Start(const Order &order) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawnattr_init(&attributes_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, order.output.c_str(), kWrite, 0600);
    posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, order.error.c_str(), kWrite, 0600);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
  }
  ~Start() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  Start(const Start &) = delete;
  Start &operator=(const Start &) = delete;

  pid_t go(const Order &order) {
    std::vector<std::string> words = order.words;
    std::vector<std::string> environment = environment_of(order);
    pid_t child = 0;
    const int error = posix_spawnp(&child, words[0].c_str(), &actions_, &attributes_,
                                   pointers(words).data(), pointers(environment).data());
    if (error == 0) return child;
    throw std::runtime_error("cannot run '" + words[0] + "': " + std::strerror(error));
  }

 private:
  posix_spawn_file_actions_t actions_;
  posix_spawnattr_t attributes_;
};

// False if the time was over first.
bool wait_for(pid_t child, double seconds, int &status) {
  const auto start = Clock::now();
  for (;;) {
    const pid_t ended = waitpid(child, &status, WNOHANG);
    if (ended == child || (ended < 0 && errno != EINTR)) return true;
    if (since(start) >= seconds) return false;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace

End run(const Order &order) {
  const auto start = Clock::now();
  const pid_t child = Start(order).go(order);
  int status = 0;
  const bool in_time = wait_for(child, order.seconds, status);
  kill(-child, SIGKILL);
  if (!in_time) waitpid(child, &status, 0);
  End end;
  end.seconds = since(start);
  if (!in_time) {
    end.kind = End::Kind::timed_out;
  } else if (WIFSIGNALED(status)) {
    end.kind = End::Kind::killed;
    end.code = WTERMSIG(status);
  } else {
    end.code = WEXITSTATUS(status);
  }
  end.output = text_of(order.output);
  end.error = text_of(order.error);
  return end;
}

}  // namespace swfaults
