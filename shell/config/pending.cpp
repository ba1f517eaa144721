// SPDX-License-Identifier: MIT
#include "config/pending.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>
#include <vector>

#include "config/change.h"
#include "config/file.h"
#include "config/store.h"
#include "fault.h"

extern char **environ;

namespace swsh {
namespace {

const char *waiting_program = nullptr;

// The old configuration while a load waits; the first line has the process.
std::string pending_file(uint32_t unit) {
  return unit_directory(unit) + "/pending";
}

// The process that waits; 0 if none does. A machine that was started again has
// no such process any more.
pid_t waiting_process(uint32_t unit) {
  std::ifstream file(pending_file(unit));
  char mark = 0;
  pid_t process = 0;
  if (!(file >> mark >> process) || mark != '#') return 0;
  return kill(process, 0) == 0 || errno == EPERM ? process : 0;
}

CommandError no_process(int error) {
  Fault fault;
  fault.status = kRefused;
  fault.message = std::string("nothing was changed: no process can wait for the confirmation: ") +
                  strerror(error);
  return CommandError(fault);
}

// This program once more, in a session of its own and without our files.
pid_t start_waiting(uint32_t unit, int64_t seconds) {
  if (waiting_program == nullptr) throw no_process(ENOSYS);
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  std::vector<std::string> words = {"swctl", "-unit", std::to_string(unit), "-bring-back",
                                    std::to_string(seconds)};
  std::vector<char *> arguments;
  for (std::string &word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t process = 0;
  const int error =
      posix_spawn(&process, waiting_program, &files, &attributes, arguments.data(), environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  if (error != 0) throw no_process(error);
  return process;
}

void sleep_for(int64_t seconds) {
  timespec end = {};
  clock_gettime(CLOCK_BOOTTIME, &end);
  end.tv_sec += static_cast<time_t>(seconds);
  while (clock_nanosleep(CLOCK_BOOTTIME, TIMER_ABSTIME, &end, nullptr) == EINTR) {
  }
}

}  // namespace

void set_waiting_program(const char *path) {
  waiting_program = path;
}

void await_confirmation(uint32_t unit, int64_t seconds, const std::string &text) {
  if (waiting_process(unit) != 0)
    throw CommandError(
        wrong_usage("another load waits for its confirmation", std::nullopt, {"config confirm"}));
  signal(SIGCHLD, SIG_IGN);  // nobody waits for it
  const pid_t process = start_waiting(unit, seconds);
  try {
    write_whole(pending_file(unit), "# " + std::to_string(process) + '\n' + text);
  } catch (const CommandError &) {
    kill(process, SIGKILL);
    throw;
  }
}

bool confirm(uint32_t unit) {
  const pid_t process = waiting_process(unit);
  // Removing the file is what decides: only one of two processes can.
  if (unlink(pending_file(unit).c_str()) != 0 || process == 0) return false;
  kill(process, SIGTERM);
  return true;
}

int bring_back_after(const Context &context, int64_t seconds) {
  sleep_for(seconds);
  const std::string pending = pending_file(context.unit);
  if (waiting_process(context.unit) != getpid()) return kDone;
  const std::string taken = pending + ".taken";
  if (rename(pending.c_str(), taken.c_str()) != 0) return kDone;
  std::string message = "the load was not confirmed: the configuration of before is back";
  int status = kDone;
  try {
    const Board board;
    const FileState before = read_file(taken, context, board);
    expect_good(before);
    change_to(before.state, context, board);
  } catch (const CommandError &error) {
    message = "the load was not confirmed: " + fault_line(error.fault());
    status = kRefused;
  }
  unlink(taken.c_str());
  write_whole(unit_directory(context.unit) + "/last-rollback", message + '\n');
  return status;
}

}  // namespace swsh
