// SPDX-License-Identifier: MIT
#include "image/file_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vchip {
namespace {

constexpr off_t kFarBehindTheEnd = 0x40000000;

struct flock bytes(short type, off_t first, off_t count) {
  struct flock lock = {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = first;
  lock.l_len = count;
  return lock;
}

struct flock far_bytes(short type, uint32_t first, uint32_t count) {
  return bytes(type, kFarBehindTheEnd + static_cast<off_t>(first), static_cast<off_t>(count));
}

Attempt attempt(int descriptor, int command, struct flock lock) {
  while (fcntl(descriptor, command, &lock) != 0) {
    if (errno == EAGAIN || errno == EACCES) return Attempt::busy;
    if (errno != EINTR) return Attempt::failed;
  }
  return Attempt::done;
}

}  // namespace

Attempt try_lock_file(int descriptor) {
  return attempt(descriptor, F_SETLK, bytes(F_WRLCK, 0, 1));
}

void unlock_file(int descriptor) {
  attempt(descriptor, F_SETLK, bytes(F_UNLCK, 0, 1));
}

int32_t file_lock_holder(int descriptor) {
  struct flock lock = bytes(F_WRLCK, 0, 1);
  if (fcntl(descriptor, F_GETLK, &lock) != 0 || lock.l_type == F_UNLCK) return 0;
  return lock.l_pid;
}

bool can_lock_file(int descriptor) {
  struct flock lock = bytes(F_WRLCK, 0, 1);
  return fcntl(descriptor, F_GETLK, &lock) == 0;
}

Attempt try_lock_byte(int descriptor, uint32_t byte, Hold hold) {
  const short type = hold == Hold::exclusive ? F_WRLCK : F_RDLCK;
  return attempt(descriptor, F_OFD_SETLK, far_bytes(type, byte, 1));
}

void unlock_byte(int descriptor, uint32_t byte) {
  attempt(descriptor, F_OFD_SETLK, far_bytes(F_UNLCK, byte, 1));
}

bool is_byte_locked(int descriptor, uint32_t first, uint32_t count) {
  struct flock lock = far_bytes(F_WRLCK, first, count);
  return fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace vchip
