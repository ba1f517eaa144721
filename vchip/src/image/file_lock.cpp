// SPDX-License-Identifier: MIT
#include "image/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vchip {
namespace {

// A record lock on the first byte.
struct flock first_byte(short type) {
  struct flock lock = {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_len = 1;
  return lock;
}

bool set_lock(int descriptor, short type) {
  struct flock lock = first_byte(type);
  while (fcntl(descriptor, F_SETLKW, &lock) != 0) {
    if (errno != EINTR) return false;
  }
  return true;
}

}  // namespace

bool lock_file(int descriptor) {
  return set_lock(descriptor, F_WRLCK);
}

bool unlock_file(int descriptor) {
  return set_lock(descriptor, F_UNLCK);
}

bool can_lock_file(int descriptor) {
  struct flock lock = first_byte(F_WRLCK);
  return fcntl(descriptor, F_GETLK, &lock) == 0;
}

}  // namespace vchip
