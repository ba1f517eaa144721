// SPDX-License-Identifier: MIT
#include "os/program.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace os {
namespace {

// What the program has as standard streams. There may be no standard error.
class Streams {
 public:
  explicit Streams(Input input) {
    posix_spawn_file_actions_init(&actions_);
    if (input == Input::none)
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

pid_t start(std::vector<std::string> words, Input input) {
  const std::string program = find_program(words.front());
  std::vector<char *> arguments;
  for (std::string &word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const Streams streams(input);
  pid_t child = -1;
  const int fault =
      posix_spawnp(&child, program.c_str(), streams.get(), nullptr, arguments.data(), environ);
  if (fault != 0) throw std::runtime_error(program + " cannot be run: " + strerror(fault));
  return child;
}

}  // namespace

std::string own_folder() {
  std::error_code fault;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", fault);
  return fault ? "" : own.parent_path().string();
}

std::string find_program(const std::string &name) {
  const std::string folder = own_folder();
  const bool plain = name.find('/') == name.npos;
  const std::string beside = folder + '/' + name;
  return plain && !folder.empty() && access(beside.c_str(), X_OK) == 0 ? beside : name;
}

Ending run_program(const std::vector<std::string> &words, Input input) {
  fflush(stdout);
  const pid_t child = start(words, input);
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR)
      throw std::runtime_error("waiting for " + words.front() + ": " + strerror(errno));
  if (WIFSIGNALED(status)) return {0, WTERMSIG(status)};
  return {WEXITSTATUS(status), 0};
}

}  // namespace os
