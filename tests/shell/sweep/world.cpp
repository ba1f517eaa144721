// SPDX-License-Identifier: MIT
#include "world.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>
#include <swctl/l2.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <unistd.h>

#include "config/pending.h"

namespace {

template <typename Function>
Function *next_of(const char *name) {
  return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// How far the clock is ahead, by the sleeps that were not slept.
timespec slept;

bool dump_file_is_allowed = true;

void add_to(timespec &time, const timespec &more) {
  constexpr long kSecond = 1000000000;
  time.tv_sec += more.tv_sec;
  time.tv_nsec += more.tv_nsec;
  if (time.tv_nsec < kSecond) return;
  time.tv_nsec -= kSecond;
  ++time.tv_sec;
}

}  // namespace

// The program's own come before those of libc.
unsigned sleep(unsigned seconds) {
  add_to(slept, {static_cast<time_t>(seconds), 0});
  return 0;
}

int nanosleep(const timespec *time, timespec *) {
  add_to(slept, *time);
  return 0;
}

int clock_nanosleep(clockid_t, int, const timespec *time, timespec *) {
  add_to(slept, *time);
  return 0;
}

int clock_gettime(clockid_t clock, timespec *time) {
  static auto *const next = next_of<int(clockid_t, timespec *)>("clock_gettime");
  const int result = next(clock, time);
  if (clock == CLOCK_MONOTONIC) add_to(*time, slept);
  return result;
}

// The one dump file that the library names itself is a file of ours.
FILE *fopen(const char *path, const char *mode) {
  static auto *const next = next_of<FILE *(const char *, const char *)>("fopen");
  if (strcmp(path, USER_MACTABLE_PATH) != 0) return next(path, mode);
  errno = EACCES;
  return dump_file_is_allowed ? next("mactable", mode) : nullptr;
}

// A process that waits for a confirmation is not started, and not there when it is looked for.
int posix_spawn(pid_t *process, const char *, const posix_spawn_file_actions_t *,
                const posix_spawnattr_t *, char *const *, char *const *) {
  constexpr pid_t kNobody = 0x3fffffff;
  *process = kNobody;
  return 0;
}

namespace shell_sweep {

Commands read_commands(const std::string &path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + " cannot be read");
  Commands commands;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    if (line.starts_with("+ ")) {
      commands.preparing.push_back(line.substr(2));
    } else {
      commands.swept.push_back(line);
    }
  }
  return commands;
}

void let_things_happen(uint32_t unit) {
  const vchip_partner_t negotiates = {1, VCHIP_ABILITY_100_FULL | VCHIP_ABILITY_1000_FULL};
  vchip_cable_plug(unit, 2, &negotiates);
  vchip_cable_plug(unit, 3, &negotiates);
  vchip_medium_set(unit, 24, 1);
  vchip_cable_plug(unit, 24, &negotiates);
  const vchip_station_t station = {1, {0x02, 0, 0, 0, 0, 0x09}, 0};
  const vchip_station_t moved = {10, {0x02, 0, 0, 0, 0, 0x01}, 0};
  vchip_station_learn(unit, 5, &station);
  vchip_station_learn(unit, 6, &moved);  // a violation: the address is static
  for (const int32_t port : {2, 3})
    for (const uint32_t counter : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u})
      vchip_counter_set(unit, port, counter, 1000u * counter + static_cast<uint32_t>(port));
  vchip_storm_exceed(unit, 2, 1);
  vchip_acl_count(unit, 5, 7, 900);
}

void allow_dump_file(bool allowed) {
  dump_file_is_allowed = allowed;
}

void enter_new_directory() {
  char name[] = "/tmp/shell_sweep.XXXXXX";
  if (mkdtemp(name) == nullptr || chdir(name) != 0) throw std::runtime_error("no directory");
  swsh::set_waiting_program("nobody");
  setenv("SWCTL_STATE_DIRECTORY", (std::string(name) + "/state").c_str(), 1);
}

std::string content_of(const std::string &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace shell_sweep
