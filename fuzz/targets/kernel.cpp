// SPDX-License-Identifier: MIT
// The kernel channel over system calls that answer what the input says. The
// linker puts them in place of the real ones.
#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdlib>
#include <set>
#include <sys/select.h>
#include <sys/socket.h>

#include "kmsg/thread_sockets.h"
#include "library/arguments.h"
#include "support/stage.h"

namespace {

using swfuzz::Input;

// What the calls answer; null while the real ones are meant.
Input *script = nullptr;
// Memory that the library took: what it hands out is released here.
std::set<void *> blocks;

// What the script says: a result, or an error.
int32_t answer(int32_t good) {
  constexpr uint8_t kFails = 240;
  const uint8_t word = script->byte();
  if (word < kFails) return good;
  errno = word;
  return -1;
}

// A payload of exactly the bytes that are said to be there.
void call(Input &input, std::string_view, uint8_t *(*create)(uint32_t, const uint8_t *, int32_t)) {
  const uint32_t code = input.number();
  const auto length = static_cast<int32_t>(input.number());
  const size_t bytes = length < 0 ? 0 : std::min<size_t>(static_cast<size_t>(length), 1u << 16);
  const auto payload = std::make_unique<uint8_t[]>(bytes);
  input.fill(payload.get(), std::min<size_t>(bytes, 64));
  if (bytes == static_cast<size_t>(std::max(length, 0))) create(code, payload.get(), length);
}

void call(Input &input, std::string_view, int32_t (*exchange)(const uint8_t *, int32_t, void **)) {
  const KernelMsgHeader header = {input.half_word(), input.half_word(), input.half_word(),
                                  input.half_word(), input.number() % SWCTL_KMSG_MAX_PAYLOAD};
  uint8_t *message = MSG_CreateMessage(&header);
  void *reply = nullptr;
  const int32_t result = exchange(message, static_cast<int32_t>(input.number()), &reply);
  if ((reply != nullptr) != (result > 0)) swfuzz::wrong("a reply without its result");
}

void call(Input &input, std::string_view name, uint32_t (*send)(uint32_t, const void *, uint32_t)) {
  const uint32_t code = input.number();
  const uint32_t length = swfuzz::Argument<uint32_t>(input, swfuzz::bound_of(name, 2)).get();
  const auto data = std::make_unique<uint8_t[]>(length);
  input.fill(data.get(), length);
  send(code, length == 0 ? nullptr : data.get(), length);
}

template <class Function>
void call(Input &input, std::string_view name, Function function) {
  swfuzz::call_with_input(input, name, function);
}

using Call = void (*)(Input &);
#define SWFUZZ_CALL(name) [](Input &input) { call(input, #name, name); },
constexpr Call kCalls[] = {
#include "exported_kernel.inc"
};

void make_calls(Input &input) {
  constexpr int kMostCalls = 16;
  for (int made = 0; made < kMostCalls && !input.empty() && GetFreeSockData() >= 0; ++made)
    kCalls[input.byte() % std::size(kCalls)](input);
}

}  // namespace

extern "C" {

void *__real_malloc(size_t size);
void *__real_calloc(size_t count, size_t size);
void __real_free(void *block);

int __wrap_socket(int, int, int) {
  return answer(script->byte());
}

int __wrap_bind(int, const sockaddr *, socklen_t) {
  return answer(0);
}

ssize_t __wrap_sendmsg(int, const msghdr *message, int) {
  const iovec &vector = *message->msg_iov;
  // Every byte is there to be read.
  const std::string sent(static_cast<const char *>(vector.iov_base), vector.iov_len);
  return answer(static_cast<int32_t>(sent.size()));
}

int __wrap_select(int, fd_set *, fd_set *, fd_set *, timeval *) {
  return answer(script->byte() & 1);
}

// A reply may be cut anywhere; its length is one that the bounds allow.
ssize_t __wrap_recvmsg(int, msghdr *message, int) {
  constexpr size_t kNetlinkHeader = 16;
  const iovec &vector = *message->msg_iov;
  auto *buffer = static_cast<uint8_t *>(vector.iov_base);
  const size_t size = std::min<size_t>(script->number(), vector.iov_len);
  script->fill(buffer, size);
  KernelMsgHeader header;
  memcpy(&header, buffer + kNetlinkHeader, sizeof header);
  if (header.length < swfuzz::kShortestReply || header.length > swfuzz::kLongestReply)
    header.length = swfuzz::kShortestReply;
  memcpy(buffer + kNetlinkHeader, &header, sizeof header);
  return answer(static_cast<int32_t>(size));
}

int __wrap_close(int) {
  return 0;
}

void *__wrap_malloc(size_t size) {
  void *block = __real_malloc(size);
  if (script != nullptr) blocks.insert(block);
  return block;
}

void *__wrap_calloc(size_t count, size_t size) {
  void *block = __real_calloc(count, size);
  if (script != nullptr) blocks.insert(block);
  return block;
}

void __wrap_free(void *block) {
  blocks.erase(block);
  __real_free(block);
}

}  // extern "C"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  Input input(data, size);
  swctl::thread_sockets = {PTHREAD_MUTEX_INITIALIZER, {}, 0, 0};
  script = &input;
  make_calls(input);
  script = nullptr;
  for (void *block : std::set<void *>(std::move(blocks))) __real_free(block);
  blocks.clear();
  return 0;
}
