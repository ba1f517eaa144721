// SPDX-License-Identifier: MIT
#include "kmsg/thread_sockets.h"

#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <linux/netlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include "kmsg/cancellation.h"
#include "kmsg/thread_key.h"

static_assert(sizeof(sockaddr_nl) == 12);

namespace swctl {

ThreadSocketTable thread_sockets = {PTHREAD_MUTEX_INITIALIZER, {}, 0, 0};

}  // namespace swctl

namespace {

using swctl::thread_sockets;
using swctl::ThreadSocketSlot;
using swctl::Uncancellable;

// The line that the message about a failed socket has always named.
constexpr int kSocketLine = 162;

// Holds the table's mutex while it lives.
class TableLock {
 public:
  TableLock() { pthread_mutex_lock(&thread_sockets.mutex); }
  ~TableLock() {
    if (!left_locked_) pthread_mutex_unlock(&thread_sockets.mutex);
  }
  TableLock(const TableLock &) = delete;
  TableLock &operator=(const TableLock &) = delete;
  void leave_locked() { left_locked_ = true; }

 private:
  Uncancellable uncancellable_;
  bool left_locked_ = false;
};

int32_t report_no_socket() {
  // Printing may fail for a reason of its own.
  const int error = errno;
  printf("ERROR in %s:%d create socket\n", "CreateThreadSocket", kSocketLine);
  errno = error;
  perror("socket");
  return -1;
}

int32_t bind_to_key(int32_t socket, int32_t key) {
  sockaddr_nl address = {};
  address.nl_family = AF_NETLINK;
  address.nl_pid = static_cast<uint32_t>(key);
  return bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

}  // namespace

int32_t InitThreadSocketData() {
  {
    const TableLock lock;
    if (thread_sockets.ready != 1) {
      memset(thread_sockets.slots, 0, sizeof thread_sockets.slots);
      thread_sockets.ready = 1;
    }
  }
  return thread_sockets.ready;
}

int32_t GetFreeSockData() {
  for (int32_t index = 0; index < SWCTL_KMSG_MAX_THREADS; ++index) {
    if (thread_sockets.slots[index].inUse == 0) return index;
  }
  return -1;
}

int32_t SetSockData(int32_t socket, uint32_t key) {
  TableLock lock;
  const int32_t index = GetFreeSockData();
  if (index == -1) {
    puts("max thread number already!");
    lock.leave_locked();  // programs rely on it
    return -1;
  }
  ThreadSocketSlot &slot = thread_sockets.slots[index];
  slot.inUse = 1;
  slot.socket = socket;
  slot.key = key;
  ++thread_sockets.count;
  return 0;
}

int32_t GetSockData(uint32_t key) {
  for (const ThreadSocketSlot &slot : thread_sockets.slots) {
    if (slot.key == key) return slot.socket;
  }
  return -1;
}

int32_t SetFreeSockData(uint32_t key) {
  const Uncancellable uncancellable;
  for (ThreadSocketSlot &slot : thread_sockets.slots) {
    if (slot.key != key) continue;
    close(slot.socket);
    slot.key = 0;
    slot.inUse = 0;
    --thread_sockets.count;
  }
  return -1;
}

int32_t DeleteThreadSocket(uint32_t key) {
  const TableLock lock;
  return SetFreeSockData(key);
}

int32_t __HandleThreadExit(uint32_t pid, uint32_t thread) {
  return DeleteThreadSocket((thread << 16) | pid);
}

int32_t HandleThreadExit() {
  return __HandleThreadExit(static_cast<uint32_t>(getpid()),
                            static_cast<uint32_t>(swctl::thread_identity()));
}

int32_t CreateThreadSocket(int32_t key) {
  if (key <= 0) return -1;
  const Uncancellable uncancellable;
  const int32_t descriptor = socket(AF_NETLINK, SOCK_RAW, NETLINK_SWITCH_PROTOCOL);
  if (descriptor < 0) return report_no_socket();
  if (bind_to_key(descriptor, key) == -1) {
    perror("bind");
    return -1;  // with the socket open: programs rely on it
  }
  if (SetSockData(descriptor, static_cast<uint32_t>(key)) == -1) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

int32_t GetThreadSocket(int32_t key) {
  if (key <= 0) return -1;
  const int32_t socket = GetSockData(static_cast<uint32_t>(key));
  return socket != -1 ? socket : CreateThreadSocket(key);
}
