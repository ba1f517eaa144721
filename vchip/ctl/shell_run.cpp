// SPDX-License-Identifier: MIT
#include "shell_run.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "usage_error.h"

extern char **environ;

namespace vchipctl {
namespace {

constexpr const char *kShell = "swctl";

std::string shell_path() {
  std::error_code fault;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", fault);
  std::string beside = own.parent_path() / kShell;
  return !fault && access(beside.c_str(), X_OK) == 0 ? beside : kShell;
}

// Nothing to read, and standard output left to the results of this program. There may
// be no standard error.
class Streams {
 public:
  Streams() {
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (fcntl(STDERR_FILENO, F_GETFD) >= 0) {
      posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
    } else {
      posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
  }
  Streams(const Streams &) = delete;
  Streams &operator=(const Streams &) = delete;
  ~Streams() { posix_spawn_file_actions_destroy(&actions_); }
  const posix_spawn_file_actions_t *get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_ = {};
};

pid_t start(const std::string &shell, const std::string &file) {
  std::string words[] = {shell, "-b", file};
  char *arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
  const Streams streams;
  pid_t child = -1;
  const int fault = posix_spawnp(&child, shell.c_str(), streams.get(), nullptr, arguments, environ);
  if (fault != 0) throw Refused(shell + " cannot be run: " + strerror(fault));
  return child;
}

int wait_for(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) throw Refused(std::string("waiting for swctl: ") + strerror(errno));
  return status;
}

}  // namespace

void run_shell(const std::string &file) {
  fflush(stdout);
  const int status = wait_for(start(shell_path(), file));
  if (WIFSIGNALED(status))
    throw Refused(file + ": swctl was ended by signal " + std::to_string(WTERMSIG(status)));
  if (WEXITSTATUS(status) != 0)
    throw Refused(file + ": swctl ended with status " + std::to_string(WEXITSTATUS(status)));
}

}  // namespace vchipctl
