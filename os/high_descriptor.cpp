// SPDX-License-Identifier: MIT
#include "os/high_descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace os {
namespace {

// A program that closes all descriptors opens its own files on the lowest
// numbers next; this one is far away from them.
constexpr int kHigh = 100;

void close_quietly(int descriptor) {
  const int saved = errno;
  close(descriptor);
  errno = saved;
}

// Takes every standard descriptor that is closed until the file is open.
// Reading and writing them fails meanwhile as it did before.
int open_above_standard(const char *path, int flags, mode_t mode) {
  const int lowest = open("/", O_PATH | O_CLOEXEC);
  if (lowest < 0) return -1;
  if (lowest > STDERR_FILENO) {
    close(lowest);
    return open(path, flags | O_CLOEXEC, mode);
  }
  const int opened = open_above_standard(path, flags, mode);
  close_quietly(lowest);
  return opened;
}

}  // namespace

int open_high(const std::string &path, int flags, mode_t mode) {
  const int opened = open_above_standard(path.c_str(), flags, mode);
  if (opened < 0) return -1;
  const int high = fcntl(opened, F_DUPFD_CLOEXEC, kHigh);
  if (high < 0) return opened;  // the process may not have so many
  close(opened);
  return high;
}

}  // namespace os
