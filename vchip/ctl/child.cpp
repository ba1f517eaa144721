// SPDX-License-Identifier: MIT
#include "child.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "os/program.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

constexpr int kNotFound = 127;
constexpr int kNotAllowed = 126;
constexpr useconds_t kLook = 10'000;
constexpr int kLooksASecond = 100;

void take_default_signals() {
  for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGPIPE}) signal(number, SIG_DFL);
}

}  // namespace

Child::Child(const std::function<int()> &run) {
  fflush(nullptr);
  const pid_t parent = getpid();
  process_ = fork();
  if (process_ < 0) throw Refused(std::string("no process: ") + strerror(errno));
  if (process_ > 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(kNotFound);
  take_default_signals();
  const int status = run();
  fflush(nullptr);
  _exit(status);
}

Child::~Child() {
  if (has_ended()) return;
  kill(process_, SIGKILL);
  wait();
}

bool Child::has_ended() {
  if (process_ > 0 && waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
  return process_ < 0;
}

int Child::wait() {
  while (process_ > 0 && waitpid(process_, &status_, 0) < 0)
    if (errno != EINTR) break;
  process_ = -1;
  return WIFSIGNALED(status_) ? 128 + WTERMSIG(status_) : WEXITSTATUS(status_);
}

void Child::end(int seconds) {
  if (has_ended()) return;
  kill(process_, SIGTERM);
  for (int look = 0; look < seconds * kLooksASecond && !has_ended(); ++look) usleep(kLook);
}

int become(const std::vector<std::string> &words) {
  std::vector<std::string> copies = words;
  std::vector<char *> arguments;
  for (std::string &word : copies) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execvp(os::find_program(words.front()).c_str(), arguments.data());
  const int fault = errno;
  fprintf(stderr, "vchipctl: %s: %s\n", words.front().c_str(), strerror(fault));
  return fault == ENOENT ? kNotFound : kNotAllowed;
}

std::string user_shell() {
  const char *shell = getenv("SHELL");
  return shell != nullptr && shell[0] != '\0' ? shell : "/bin/sh";
}

}  // namespace vchipctl
