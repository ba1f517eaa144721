// SPDX-License-Identifier: MIT
#include "scripted_world.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <linux/netlink.h>
#include <pthread.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "kmsg/thread_sockets.h"

namespace kmsg_test {

World &world() {
  static World only;
  return only;
}

namespace {

__attribute__((format(printf, 1, 2))) void note(const char *format, ...) {
  char text[160];
  va_list arguments;
  va_start(arguments, format);
  vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  world().calls.emplace_back(text);
}

int answer(int result, int error) {
  if (error == 0) return result;
  errno = error;
  return -1;
}

std::string text_of(const void *address, socklen_t length) {
  sockaddr_nl netlink = {};
  memcpy(&netlink, address, std::min<size_t>(length, sizeof netlink));
  char text[80];
  snprintf(text, sizeof text, "{%u, %u, %u, %u}, %u", netlink.nl_family, netlink.nl_pad,
           netlink.nl_pid, netlink.nl_groups, length);
  return text;
}

// What every message has in common; "strange" if it has more.
std::string text_of(const msghdr *message) {
  if (message->msg_iovlen != 1 || message->msg_control != nullptr || message->msg_controllen != 0 ||
      message->msg_flags != 0)
    return "strange";
  return text_of(message->msg_name, message->msg_namelen) + ", " +
         std::to_string(message->msg_iov->iov_len) + " bytes";
}

void *remember(void *block, size_t size) {
  world().allocated[block] = size;
  return block;
}

}  // namespace

__attribute__((noinline)) void soil_stack() {
  uint8_t soil[16384];
  memset(soil, 0xA5, sizeof soil);
  // The compiler is told that somebody reads it.
  asm volatile("" : : "r"(soil) : "memory");
}

Lines system_calls(const Lines &calls) {
  Lines kept;
  for (const std::string &call : calls) {
    const bool memory = call.find("alloc(") != std::string::npos || call.starts_with("free(");
    if (!memory && call != "lock" && call != "unlock") kept.push_back(call);
  }
  return kept;
}

void KmsgTest::begin_again() {
  world() = {};
  swctl::thread_sockets = {PTHREAD_MUTEX_INITIALIZER, {}, 0, 0};
}

void KmsgTest::TearDown() {
  // What the library leaves allocated is the test's to know and to release.
  EXPECT_TRUE(world().allocated.empty()) << world().allocated.size() << " blocks";
  for (const auto &[block, size] : world().allocated) free(block);
}

int Child::split() {
  const int process = fork();
  if (process != 0) return process;
  // The default action, for the test program may be started with another.
  ::signal(SIGALRM, SIG_DFL);
  alarm(2);
  world().playing = true;
  return 0;
}

void Child::leave() {
  _exit(0);
}

int Child::signal() {
  int status = 0;
  EXPECT_EQ(waitpid(process_, &status, 0), process_);
  return WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
}

Bytes bytes_at(const void *address, size_t count) {
  const auto *first = static_cast<const uint8_t *>(address);
  return {first, first + count};
}

Bytes half_word(uint16_t number) {
  return bytes_at(&number, sizeof number);
}

Bytes word(uint32_t number) {
  return bytes_at(&number, sizeof number);
}

Bytes zeros(size_t count) {
  return Bytes(count);
}

Bytes operator+(Bytes left, const Bytes &right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

Bytes header(uint16_t id, uint16_t direction, uint16_t type, uint16_t reserved, uint32_t length) {
  return half_word(id) + half_word(direction) + half_word(type) + half_word(reserved) +
         word(length);
}

}  // namespace kmsg_test

using namespace kmsg_test;

// The linker's names: __real_X is the X that would have been called.
extern "C" {

int __real_close(int descriptor);
int __real_getpid(void);
pthread_t __real_pthread_self(void);
int __real_pthread_mutex_lock(pthread_mutex_t *mutex);
int __real_pthread_mutex_unlock(pthread_mutex_t *mutex);
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
void *__real_memcpy(void *to, const void *from, size_t size);

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
void __asan_handle_no_return(void);
#define ADDRESS_SANITIZER
#endif
#endif

// The stack below a cancelled call is left at one go, and the address sanitizer
// is not told: it takes what lay there for what lies there now.
static void stack_is_left() {
#ifdef ADDRESS_SANITIZER
  __asan_handle_no_return();
#endif
}

// Cancels the thread in its own call of that name, if the test wants it so.
static void cancel_in(const char *call) {
  if (!world().playing || world().cancelled_in != call) return;
  world().cancelling = true;
  pthread_cancel(__real_pthread_self());
}

// The same in a call that is a cancellation point, as POSIX lists them.
static void cancellation_point(const char *call) {
  cancel_in(call);
  stack_is_left();
  if (world().playing) pthread_testcancel();
}

int __wrap_socket(int family, int type, int protocol) {
  cancel_in("socket");
  const int result = answer(world().next_descriptor, world().socket_error);
  if (result >= 0) ++world().next_descriptor;
  note("socket(%d, %d, %d) = %d", family, type, protocol, result);
  return result;
}

int __wrap_bind(int descriptor, const sockaddr *address, socklen_t length) {
  cancel_in("bind");
  const int result = answer(0, world().bind_error);
  note("bind(%d, %s) = %d", descriptor, text_of(address, length).c_str(), result);
  return result;
}

ssize_t __wrap_sendmsg(int descriptor, const msghdr *message, int flags) {
  cancellation_point("sendmsg");
  world().sent = bytes_at(message->msg_iov->iov_base, message->msg_iov->iov_len);
  const int result = answer(static_cast<int>(message->msg_iov->iov_len), world().send_error);
  note("sendmsg(%d, %s, %d) = %d", descriptor, text_of(message).c_str(), flags, result);
  return result;
}

int __wrap_select(int count, fd_set *reading, fd_set *writing, fd_set *exceptional,
                  timeval *limit) {
  cancellation_point("select");
  std::string set;
  const auto *words = reinterpret_cast<const fd_mask *>(reading);
  for (int each = 0; each < count; ++each) {
    const auto bit = static_cast<unsigned long>(words[each / NFDBITS]) >> (each % NFDBITS);
    if ((bit & 1) != 0) set += (set.empty() ? "" : " ") + std::to_string(each);
  }
  const int result = answer(world().select_result, world().select_error);
  note("select(%d, {%s}%s, %ld s %ld us) = %d", count, set.c_str(),
       writing == nullptr && exceptional == nullptr ? "" : " and more",
       static_cast<long>(limit->tv_sec), static_cast<long>(limit->tv_usec), result);
  return result;
}

ssize_t __wrap_recvmsg(int descriptor, msghdr *message, int flags) {
  cancellation_point("recvmsg");
  Bytes reply;
  if (!world().replies.empty()) reply = world().replies.front();
  const int result = answer(static_cast<int>(reply.size()), world().receive_error);
  const iovec &vector = *message->msg_iov;
  const bool zeroed = bytes_at(vector.iov_base, vector.iov_len) == zeros(vector.iov_len);
  note("recvmsg(%d, %s%s, %d) = %d", descriptor, text_of(message).c_str(),
       zeroed ? "" : " not zeroed", flags, result);
  if (result < 0) return result;
  auto *buffer = static_cast<uint8_t *>(vector.iov_base);
  std::copy(reply.begin(), reply.end(), buffer);
  if (world().reply_is_oversized) world().oversized = buffer + kNetlink.size();
  if (!world().replies.empty()) world().replies.pop_front();
  return result;
}

int __wrap_close(int descriptor) {
  if (!world().playing) return __real_close(descriptor);
  cancellation_point("close");
  note("close(%d)", descriptor);
  return 0;
}

int __wrap_getpid(void) {
  return world().playing ? world().pid : __real_getpid();
}

pthread_t __wrap_pthread_self(void) {
  return world().playing ? (pthread_t)world().identity : __real_pthread_self();
}

int __wrap_pthread_mutex_lock(pthread_mutex_t *mutex) {
  if (mutex == &swctl::thread_sockets.mutex) {
    cancel_in("lock");
    note("lock");
  }
  return __real_pthread_mutex_lock(mutex);
}

int __wrap_pthread_mutex_unlock(pthread_mutex_t *mutex) {
  if (mutex == &swctl::thread_sockets.mutex) note("unlock");
  return __real_pthread_mutex_unlock(mutex);
}

void *__wrap_malloc(size_t size) {
  void *block = __real_malloc(size);
  if (!world().playing) return block;
  cancel_in("malloc");
  note("malloc(%zu)", size);
  return remember(memset(block, world().memory, size), size);
}

void *__wrap_calloc(size_t count, size_t size) {
  if (!world().playing) return __real_calloc(count, size);
  cancel_in("calloc");
  note("calloc(%zu)", count * size);
  if (world().out_of_memory) return nullptr;
  return remember(__real_calloc(count, size), count * size);
}

void *__wrap_memcpy(void *to, const void *from, size_t size) {
  if (!world().playing || from != world().oversized) return __real_memcpy(to, from, size);
  note("memcpy(%zu)", size);
  return __real_memcpy(to, from, SWCTL_KMSG_MAX_DATA);
}

#ifdef __clang__
// What Clang's address sanitizer calls in its place.
void *__wrap___asan_memcpy(void *to, const void *from, size_t size) {
  return __wrap_memcpy(to, from, size);
}
#endif

void __wrap_free(void *block) {
  if (world().cancelling) stack_is_left();
  const auto known = world().allocated.find(block);
  if (known != world().allocated.end()) {
    if (world().playing) note("free(%zu)", known->second);
    world().allocated.erase(known);
  }
  __real_free(block);
}

}  // extern "C"
