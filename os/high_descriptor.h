// SPDX-License-Identifier: MIT
#ifndef SWCTL_OS_HIGH_DESCRIPTOR_H
#define SWCTL_OS_HIGH_DESCRIPTOR_H

#include <string>
#include <sys/types.h>

namespace os {

// open(2), close-on-exec, on a descriptor that no other file of the process
// gets by chance. What the process prints must not end in this file, even if it
// has closed its standard streams, or all descriptors. -1 with errno set.
int open_high(const std::string &path, int flags, mode_t mode = 0);

}  // namespace os

#endif
