// SPDX-License-Identifier: MIT
// The state of the kernel channel: the sockets of a process's threads.
#ifndef SWCTL_SRC_KMSG_THREAD_SOCKETS_H
#define SWCTL_SRC_KMSG_THREAD_SOCKETS_H

#include <swctl/kmsg.h>

#include <cstdint>
#include <pthread.h>

namespace swctl {

struct ThreadSocketSlot {
  uint32_t key;  // 0 in a slot never used or released
  int32_t socket;
  uint32_t inUse;
};

struct ThreadSocketTable {
  pthread_mutex_t mutex;
  ThreadSocketSlot slots[SWCTL_KMSG_MAX_THREADS];
  int8_t ready;
  int32_t count;  // slots taken; nothing here reads it
};

extern ThreadSocketTable thread_sockets;

}  // namespace swctl

#endif
