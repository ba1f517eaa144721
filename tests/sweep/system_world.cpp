// SPDX-License-Identifier: MIT
#include "system_world.h"

#include <swctl/kmsg.h>
#include <swctl/l2.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

namespace sweep {

World &world() {
  static World only;
  return only;
}

namespace {

// Writes a call down; true if it is to fail.
bool fails(const char *name, const void *place) {
  World &own = world();
  own.playing = false;  // what happens here is not the library's
  const size_t number = own.calls.size();
  own.calls.emplace_back(name);
  own.places.insert(place);
  own.playing = true;
  errno = EIO;
  return number >= own.first_failing && number <= own.last_failing;
}

void *remember(void *block) {
  World &own = world();
  own.playing = false;
  own.blocks.insert(block);
  own.playing = true;
  return block;
}

struct Reply {
  uint8_t netlink[16];
  KernelMsgHeader header;
  uint32_t word;
};
static_assert(sizeof(Reply) == 32);
constexpr Reply kReply = {{}, {7, 2, SWCTL_KMSG_DATA_REQUEST, 0, 4}, kAnswerWord};

}  // namespace
}  // namespace sweep

#define FAILS(name) sweep::fails(#name, __builtin_return_address(0))

extern "C" {

int __real_close(int descriptor);
void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);
FILE *__real_fopen(const char *path, const char *mode);
size_t __real_fwrite(const void *items, size_t size, size_t count, FILE *file);
size_t __real_fread(void *items, size_t size, size_t count, FILE *file);
int __real_fclose(FILE *file);

int __wrap_socket(int, int, int) {
  return FAILS(socket) ? sweep::world().answer : sweep::kSocket;
}

int __wrap_bind(int, const sockaddr *, socklen_t) {
  return FAILS(bind) ? sweep::world().answer : 0;
}

ssize_t __wrap_sendmsg(int, const msghdr *message, int) {
  return FAILS(sendmsg) ? sweep::world().answer : static_cast<ssize_t>(message->msg_iov->iov_len);
}

int __wrap_select(int, fd_set *, fd_set *, fd_set *, timeval *) {
  return FAILS(select) ? sweep::world().answer : 1;
}

// An answer above 0 is that of a reply that was cut short.
ssize_t __wrap_recvmsg(int, msghdr *message, int) {
  const bool failing = FAILS(recvmsg);
  if (message->msg_iov->iov_base == nullptr) return -1;
  if (failing && sweep::world().answer <= 0) return sweep::world().answer;
  memcpy(message->msg_iov->iov_base, &sweep::kReply, sizeof sweep::kReply);
  return failing ? sweep::world().answer : static_cast<ssize_t>(sizeof sweep::kReply);
}

int __wrap_close(int descriptor) {
  if (!sweep::world().playing) return __real_close(descriptor);
  return FAILS(close) ? sweep::world().answer : 0;
}

void *__wrap_malloc(size_t size) {
  if (!sweep::world().playing) return __real_malloc(size);
  return FAILS(malloc) ? nullptr : sweep::remember(__real_malloc(size));
}

void *__wrap_calloc(size_t count, size_t size) {
  if (!sweep::world().playing) return __real_calloc(count, size);
  return FAILS(calloc) ? nullptr : sweep::remember(__real_calloc(count, size));
}

void __wrap_free(void *block) {
  sweep::world().blocks.erase(block);
  __real_free(block);
}

FILE *__wrap_fopen(const char *path, const char *mode) {
  if (!sweep::world().playing) return __real_fopen(path, mode);
  if (FAILS(fopen)) return nullptr;
  const bool is_fixed = strcmp(path, USER_MACTABLE_PATH) == 0;
  return __real_fopen(is_fixed ? sweep::world().table.c_str() : path, mode);
}

size_t __wrap_fwrite(const void *items, size_t size, size_t count, FILE *file) {
  if (!sweep::world().playing) return __real_fwrite(items, size, count, file);
  return FAILS(fwrite) ? 0 : __real_fwrite(items, size, count, file);
}

size_t __wrap_fread(void *items, size_t size, size_t count, FILE *file) {
  if (!sweep::world().playing) return __real_fread(items, size, count, file);
  return FAILS(fread) ? 0 : __real_fread(items, size, count, file);
}

// The file is gone, whatever the answer.
int __wrap_fclose(FILE *file) {
  if (!sweep::world().playing) return __real_fclose(file);
  const bool failing = FAILS(fclose);
  const int result = __real_fclose(file);
  return failing ? EOF : result;
}

}  // extern "C"
