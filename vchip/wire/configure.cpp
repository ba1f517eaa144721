// SPDX-License-Identifier: MIT
#include "configure.h"

#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fault.h"

extern char **environ;

namespace vchipd {
namespace {

constexpr const char *kShell = "swctl";

// The one beside this program, else the one that the path finds.
std::string shell_path() {
  std::error_code fault;
  const std::filesystem::path own = std::filesystem::read_symlink("/proc/self/exe", fault);
  std::string beside = own.parent_path() / kShell;
  return !fault && access(beside.c_str(), X_OK) == 0 ? beside : kShell;
}

}  // namespace

void configure(const std::string &file) {
  std::string words[] = {shell_path(), "-b", file};
  char *arguments[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
  pid_t child = -1;
  errno = posix_spawnp(&child, words[0].c_str(), nullptr, nullptr, arguments, environ);
  if (errno != 0) throw system_fault("swctl cannot be run");
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) throw system_fault("waiting for swctl");
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    throw Fault("--config " + file + ": swctl has refused it");
}

}  // namespace vchipd
