// SPDX-License-Identifier: MIT
#include "spaces.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "os/descriptor.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

constexpr int kSpaces = CLONE_NEWNET | CLONE_NEWNS | CLONE_NEWUTS;
constexpr const char *kWhatHelps =
    "; root has it, and so has an ordinary user where the system allows user namespaces: see the "
    "settings user.max_user_namespaces, kernel.unprivileged_userns_clone and "
    "kernel.apparmor_restrict_unprivileged_userns of sysctl";

Refused denied() {
  return Refused(std::string("no right to make network namespaces: ") + strerror(errno) +
                 kWhatHelps);
}

void write_map(const char *file, const std::string &text) {
  const os::Descriptor map(open(file, O_WRONLY | O_CLOEXEC));
  if (!map || write(map.get(), text.data(), text.size()) != static_cast<ssize_t>(text.size()))
    throw denied();
}

// In it, this user is root, and there is no other.
void make_user_space() {
  const std::string user = std::to_string(geteuid());
  const std::string group = std::to_string(getegid());
  if (unshare(CLONE_NEWUSER | kSpaces) != 0) throw denied();
  write_map("/proc/self/setgroups", "deny");
  write_map("/proc/self/uid_map", "0 " + user + " 1");
  write_map("/proc/self/gid_map", "0 " + group + " 1");
}

// Interfaces in /sys are those of the network that was there when it was mounted. Where
// it cannot be mounted again, programs that look there see the old ones.
void furnish(const std::string &host_name) {
  mount(nullptr, "/", nullptr, MS_REC | MS_SLAVE, nullptr);
  mount("sysfs", "/sys", "sysfs", MS_NOSUID | MS_NODEV | MS_NOEXEC, nullptr);
  if (sethostname(host_name.data(), host_name.size()) != 0) throw denied();
}

void join(pid_t process, const char *kind) {
  const std::string path = "/proc/" + std::to_string(process) + "/ns/" + kind;
  const os::Descriptor space(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat there = {}, here = {};
  const bool known = space && fstat(space.get(), &there) == 0 &&
                     stat((std::string("/proc/self/ns/") + kind).c_str(), &here) == 0;
  if (known && there.st_ino == here.st_ino) return;
  if (!known || setns(space.get(), 0) != 0) throw Refused(path + ": " + strerror(errno));
}

}  // namespace

void leave_for_own_space(const std::string &host_name) {
  if (geteuid() != 0 || unshare(kSpaces) != 0) make_user_space();
  furnish(host_name);
}

void leave_for_further_space(const std::string &host_name) {
  if (unshare(kSpaces) != 0) throw denied();
  furnish(host_name);
}

// The user's first: it gives the right to join the others.
void enter_space_of(pid_t process) {
  for (const char *kind : {"user", "net", "uts", "mnt"}) join(process, kind);
}

}  // namespace vchipctl
