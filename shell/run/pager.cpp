// SPDX-License-Identifier: MIT
#include "run/pager.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sstream>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace swsh {
namespace {

constexpr char kUsualPager[] = "less -FRX";
constexpr char kUsualProgram[] = "less";
constexpr char kNoPager[] = "cat";
// What the shell ends with if it cannot run a command.
constexpr int kCannotRun = 126;
constexpr int kNotFound = 127;

std::string value_of(const char *name) {
  const char *value = getenv(name);
  return value == nullptr ? "" : value;
}

bool is_in_path(const std::string &program) {
  std::istringstream path(value_of("PATH"));
  for (std::string directory; std::getline(path, directory, ':');)
    if (access((directory + '/' + program).c_str(), X_OK) == 0) return true;
  return false;
}

std::string pager_named() {
  if (getenv("SWCTL_PAGER") != nullptr) return value_of("SWCTL_PAGER");
  const std::string pager = value_of("PAGER");
  if (!pager.empty()) return pager;
  return is_in_path(kUsualProgram) ? kUsualPager : "";
}

// The line that the prompt needs afterwards is one too many.
bool fits_terminal(const std::string &text, int descriptor) {
  winsize size = {};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_row == 0) return true;
  const size_t columns = std::max<size_t>(size.ws_col, 1);
  size_t rows = 0;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find('\n', start), text.size());
    rows += std::max<size_t>((end - start + columns - 1) / columns, 1);
    start = end + 1;
  }
  return rows < size.ws_row;
}

// Keys that interrupt are the pager's while it runs.
class PagerSignals {
 public:
  PagerSignals() {
    struct sigaction action = {};
    action.sa_handler = SIG_IGN;
    sigaction(SIGINT, &action, &interrupt_);
    sigaction(SIGQUIT, &action, &quit_);
    sigaction(SIGPIPE, &action, &pipe_);
    action.sa_handler = SIG_DFL;
    sigaction(SIGCHLD, &action, &child_);
  }
  ~PagerSignals() {
    sigaction(SIGINT, &interrupt_, nullptr);
    sigaction(SIGQUIT, &quit_, nullptr);
    sigaction(SIGPIPE, &pipe_, nullptr);
    sigaction(SIGCHLD, &child_, nullptr);
  }
  PagerSignals(const PagerSignals &) = delete;
  PagerSignals &operator=(const PagerSignals &) = delete;

 private:
  struct sigaction interrupt_ = {};
  struct sigaction quit_ = {};
  struct sigaction pipe_ = {};
  struct sigaction child_ = {};
};

// 0 if it cannot be started.
pid_t start_pager(const std::string &pager, int input, int output) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&files, output, STDOUT_FILENO);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t usual;
  sigemptyset(&usual);
  for (const int signal : {SIGINT, SIGQUIT, SIGPIPE}) sigaddset(&usual, signal);
  posix_spawnattr_setsigdefault(&attributes, &usual);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
  std::string words[] = {"sh", "-c", pager};
  char *arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
  pid_t process = 0;
  const int error = posix_spawn(&process, "/bin/sh", &files, &attributes, arguments, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return error == 0 ? process : 0;
}

// A pager may end before it has read all.
void feed(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return;
    text.remove_prefix(static_cast<size_t>(written));
  }
}

// Whether the pager could be run.
bool has_run(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0)
    if (errno != EINTR) return true;
  return !WIFEXITED(status) ||
         (WEXITSTATUS(status) != kCannotRun && WEXITSTATUS(status) != kNotFound);
}

}  // namespace

std::string pager_for(int descriptor) {
  const std::string terminal = value_of("TERM");
  if (isatty(descriptor) == 0 || terminal.empty() || terminal == "dumb") return "";
  const std::string pager = pager_named();
  return pager == kNoPager ? "" : pager;
}

bool show_by_pager(const std::string &pager, const std::string &text, int descriptor) {
  if (pager.empty() || fits_terminal(text, descriptor)) return false;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const PagerSignals signals;
  const pid_t process = start_pager(pager, ends[0], descriptor);
  close(ends[0]);
  if (process != 0) feed(ends[1], text);
  close(ends[1]);
  return process != 0 && has_run(process);
}

}  // namespace swsh
