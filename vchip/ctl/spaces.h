// SPDX-License-Identifier: MIT
// Namespaces of Linux: a network, mounts and a host name of a process's own.
#ifndef VCHIPCTL_SPACES_H
#define VCHIPCTL_SPACES_H

#include <string>
#include <sys/types.h>

namespace vchipctl {

// Gives this process a network of its own; an ordinary user gets the rights for it by a
// user namespace, in which he is root. Throws Refused where the system denies that, and
// says what would help.
void leave_for_own_space(const std::string &host_name);
// The same for one that has done so before: further ones need no right.
void leave_for_further_space(const std::string &host_name);
// Into those of another process. Throws Refused.
void enter_space_of(pid_t process);

}  // namespace vchipctl

#endif
