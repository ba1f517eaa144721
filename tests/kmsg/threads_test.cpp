// SPDX-License-Identifier: MIT
// Many threads at once, and what a thread leaves to the next. Every thread is
// answered by itself: the system calls keep what they need per thread, so that
// they order nothing between threads that the library does not order.
#include <swctl/kmsg.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <linux/netlink.h>
#include <set>
#include <sys/select.h>
#include <sys/socket.h>
#include <thread>

#include "kmsg/thread_key.h"
#include "kmsg/thread_sockets.h"
#include "support/library_test.h"

namespace {

constexpr int kFirstDescriptor = 2000;
constexpr size_t kPayloadAt = 28;
std::atomic<int> next_descriptor;
std::atomic<int> closed;

struct Kernel {
  int bound = -1;       // the socket
  uint32_t port = 0;    // and its port id
  int wrong_sends = 0;  // over another socket, or as somebody else
  uint8_t word[4] = {};
};
thread_local Kernel kernel;

}  // namespace

extern "C" {

int __real_close(int descriptor);

int __wrap_socket(int, int, int) {
  return next_descriptor.fetch_add(1, std::memory_order_relaxed);
}

int __wrap_bind(int descriptor, const sockaddr *address, socklen_t) {
  sockaddr_nl netlink;
  memcpy(&netlink, address, sizeof netlink);
  kernel.bound = descriptor;
  kernel.port = netlink.nl_pid;
  return 0;
}

ssize_t __wrap_sendmsg(int descriptor, const msghdr *message, int) {
  const auto *datagram = static_cast<const uint8_t *>(message->msg_iov->iov_base);
  uint32_t port;
  memcpy(&port, datagram + 12, sizeof port);
  if (descriptor != kernel.bound || port != kernel.port) ++kernel.wrong_sends;
  // The data follow their length of two bytes.
  memcpy(kernel.word, datagram + kPayloadAt + 2, sizeof kernel.word);
  return static_cast<ssize_t>(message->msg_iov->iov_len);
}

int __wrap_select(int, fd_set *, fd_set *, fd_set *, timeval *) {
  return 1;
}

ssize_t __wrap_recvmsg(int descriptor, msghdr *message, int) {
  if (descriptor != kernel.bound) ++kernel.wrong_sends;
  const KernelMsgHeader header = {7, 2, 3, 0, 4};
  auto *reply = static_cast<uint8_t *>(message->msg_iov->iov_base);
  memcpy(reply + 16, &header, sizeof header);
  memcpy(reply + kPayloadAt, kernel.word, sizeof kernel.word);
  return kPayloadAt + 4;
}

int __wrap_close(int descriptor) {
  if (descriptor < kFirstDescriptor) return __real_close(descriptor);
  ++closed;
  return 0;
}

}  // extern "C"

namespace {

// Sends numbers of its own and says how many came back otherwise. The copies
// of the replies that user_send_data_to_kernel() would leave are avoided by
// sending the message itself.
int wrong_echoes(uint32_t thread, uint32_t requests) {
  int wrong = 0;
  for (uint32_t index = 0; index < requests; ++index) {
    const uint32_t number = thread << 16 | index;
    uint8_t payload[6] = {0, 4};
    memcpy(payload + 2, &number, sizeof number);
    uint8_t *message = MSG_CreateUserToKernelMessage(3, payload, sizeof payload);
    void *reply = nullptr;
    const int32_t received = MSG_UserSendAndRecvMessage(message, 5, &reply);
    free(message);
    if (received != 32 || memcmp(static_cast<uint8_t *>(reply) + 12, &number, 4) != 0) ++wrong;
    free(reply);
  }
  return wrong + kernel.wrong_sends;
}

// Lets its threads loose at one moment.
class Threads {
 public:
  template <typename Work>
  void add(Work work) {
    threads_.emplace_back([this, work] {
      while (!started_) std::this_thread::yield();
      work();
    });
  }
  void run() {
    started_ = true;
    for (std::thread &thread : threads_) thread.join();
    threads_.clear();
  }

 private:
  std::atomic<bool> started_ = false;
  std::vector<std::thread> threads_;
};

class ThreadsTest : public testing::Test {
 protected:
  void SetUp() override {
    swctl::thread_sockets = {PTHREAD_MUTEX_INITIALIZER, {}, 0, 0};
    next_descriptor = kFirstDescriptor;
    closed = 0;
  }
};

TEST_F(ThreadsTest, ThirtyTwoThreadsHaveSocketsOfTheirOwn) {
  std::atomic<int> wrong = 0;
  Threads threads;
  for (uint32_t index = 0; index < 32; ++index) {
    threads.add([&wrong, index] { wrong += wrong_echoes(index, 200); });
  }
  threads.run();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(swctl::thread_sockets.count, 32);
  std::set<uint32_t> keys;
  std::set<int32_t> sockets;
  for (const auto &slot : swctl::thread_sockets.slots) {
    EXPECT_EQ(slot.inUse, 1u);
    keys.insert(slot.key);
    sockets.insert(slot.socket);
  }
  EXPECT_EQ(keys.size(), 32u);
  EXPECT_EQ(sockets.size(), 32u);
}

TEST_F(ThreadsTest, PlacesAreReleasedAndTakenAtTheSameTime) {
  std::atomic<int> wrong = 0;
  InitThreadSocketData();
  Threads threads;
  for (uint32_t index = 0; index < 16; ++index) {
    threads.add([&wrong, index] {
      for (uint32_t round = 0; round < 50; ++round) {
        wrong += wrong_echoes(index, 2);
        DeleteThreadSocket(static_cast<uint32_t>(swctl::thread_key()));
      }
    });
  }
  threads.run();
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(swctl::thread_sockets.count, 0);
  EXPECT_EQ(closed, 16 * 50);
  EXPECT_EQ(next_descriptor, kFirstDescriptor + 16 * 50);
}

TEST_F(ThreadsTest, ThreadThatDoesNotReleaseLeavesItsPlace) {
  int32_t key = 0;
  std::thread([&key] {
    key = swctl::thread_key();
    wrong_echoes(1, 1);
  }).join();
  EXPECT_EQ(swctl::thread_sockets.count, 1);
  EXPECT_EQ(GetSockData(static_cast<uint32_t>(key)), kFirstDescriptor);
  EXPECT_EQ(closed, 0);
}

TEST_F(ThreadsTest, LaterThreadWithTheSameIdentityGoesOnWithTheSocket) {
  // Threads one after the other are given the same memory, as a rule.
  std::set<int32_t> keys;
  for (int index = 0; index < 100 && next_descriptor < kFirstDescriptor + 32; ++index) {
    std::thread([&keys] {
      const int32_t key = swctl::thread_key();
      const bool known = !keys.insert(key).second;
      const int before = next_descriptor;
      EXPECT_GE(GetThreadSocket(key), kFirstDescriptor);
      EXPECT_EQ(next_descriptor - before, known ? 0 : 1);
    }).join();
  }
  EXPECT_EQ(swctl::thread_sockets.count, static_cast<int32_t>(keys.size()));
}

}  // namespace
