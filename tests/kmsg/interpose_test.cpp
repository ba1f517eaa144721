// SPDX-License-Identifier: MIT
// This program has its own versions of the channel's functions, which count
// and hand on. The library reaches its own functions by their exported names,
// so it is these that are called.
#include <swctl/kmsg.h>

#include <dlfcn.h>
#include <map>
#include <sys/socket.h>

#include "support/library_test.h"

namespace {

std::map<std::string, int> seen;
int next_descriptor = 500;

// The library's own function of that name.
template <typename Function>
Function next_of(const char *name) {
  ++seen[name];
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

#define HAND_ON(name, ...) return next_of<decltype(&name)>(#name)(__VA_ARGS__)

}  // namespace

uint8_t *MSG_CreateMessage(const KernelMsgHeader *header) {
  HAND_ON(MSG_CreateMessage, header);
}
uint8_t *MSG_CreateUserToKernelMessage(uint32_t code, const uint8_t *payload, int32_t length) {
  HAND_ON(MSG_CreateUserToKernelMessage, code, payload, length);
}
int32_t MSG_UserSendAndRecvMessage(const uint8_t *message, int32_t seconds, void **reply) {
  HAND_ON(MSG_UserSendAndRecvMessage, message, seconds, reply);
}
int32_t InitThreadSocketData() {
  HAND_ON(InitThreadSocketData);
}
int32_t CreateThreadSocket(int32_t key) {
  HAND_ON(CreateThreadSocket, key);
}
int32_t GetThreadSocket(int32_t key) {
  HAND_ON(GetThreadSocket, key);
}
int32_t DeleteThreadSocket(uint32_t key) {
  HAND_ON(DeleteThreadSocket, key);
}
int32_t __HandleThreadExit(uint32_t pid, uint32_t thread) {
  HAND_ON(__HandleThreadExit, pid, thread);
}
int32_t GetFreeSockData() {
  HAND_ON(GetFreeSockData);
}
int32_t SetFreeSockData(uint32_t key) {
  HAND_ON(SetFreeSockData, key);
}
int32_t SetSockData(int32_t socket, uint32_t key) {
  HAND_ON(SetSockData, socket, key);
}
int32_t GetSockData(uint32_t key) {
  HAND_ON(GetSockData, key);
}

// A socket that cannot be sent on: what is asked for is the way there.
extern "C" {
int socket(int, int, int) noexcept {
  return next_descriptor++;
}
int bind(int, const sockaddr *, socklen_t) noexcept {
  return 0;
}
ssize_t sendmsg(int, const msghdr *, int) {
  return -1;
}
}

namespace {

using Counts = std::map<std::string, int>;

Counts seen_during(void (*function)()) {
  seen.clear();
  swctl_test::printed_by(function);
  return seen;
}

TEST(Interpose, RequestPassesEveryStepByName) {
  const Counts counts =
      seen_during([] { EXPECT_EQ(user_send_data_to_kernel(0, "x", 1), SWCTL_KMSG_NO_ANSWER); });
  EXPECT_EQ(counts, (Counts{{"MSG_CreateUserToKernelMessage", 1},
                            {"MSG_CreateMessage", 1},
                            {"MSG_UserSendAndRecvMessage", 1},
                            {"InitThreadSocketData", 1},
                            {"GetThreadSocket", 1},
                            {"GetSockData", 1},
                            {"CreateThreadSocket", 1},
                            {"SetSockData", 1},
                            {"GetFreeSockData", 1}}));
}

TEST(Interpose, LaterRequestNeitherClearsNorCreates) {
  seen_during([] { user_send_data_to_kernel(0, "x", 1); });
  const Counts counts = seen_during([] { user_send_data_to_kernel(0, "x", 1); });
  EXPECT_EQ(counts, (Counts{{"MSG_CreateUserToKernelMessage", 1},
                            {"MSG_CreateMessage", 1},
                            {"MSG_UserSendAndRecvMessage", 1},
                            {"GetThreadSocket", 1},
                            {"GetSockData", 1}}));
}

TEST(Interpose, ExitPassesEveryStepByName) {
  const Counts counts = seen_during([] { EXPECT_EQ(HandleThreadExit(), -1); });
  EXPECT_EQ(counts,
            (Counts{{"__HandleThreadExit", 1}, {"DeleteThreadSocket", 1}, {"SetFreeSockData", 1}}));
}

}  // namespace
