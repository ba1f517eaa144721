// SPDX-License-Identifier: MIT
// One message to the kernel and its reply.
#include <swctl/kmsg.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <linux/netlink.h>
#include <sys/select.h>
#include <sys/socket.h>

#include "kmsg/cancellation.h"
#include "kmsg/thread_key.h"
#include "kmsg/thread_sockets.h"

namespace {

constexpr uint32_t kNetlinkHeader = NLMSG_HDRLEN;
constexpr uint32_t kMessageHeader = sizeof(KernelMsgHeader);
constexpr size_t kReceiveBuffer = 16400;
// The line that the message about a missing socket has always named.
constexpr int kNoSocketLine = 330;

static_assert(kNetlinkHeader == 16);

struct DataRequest {
  uint16_t dataLength;
  uint8_t data[SWCTL_KMSG_MAX_DATA];
};
static_assert(sizeof(DataRequest) == SWCTL_KMSG_DATA_REQUEST_SIZE);

// Header and payload of a message, which need not be aligned.
uint32_t message_size(const uint8_t *message) {
  uint32_t length;
  memcpy(&length, message + offsetof(KernelMsgHeader, length), sizeof length);
  return kMessageHeader + length;
}

// The datagram of a message. The netlink type and sequence number stay what
// the memory held: the module takes no meaning from them. There is no answer
// for "no memory" in the interface, so the block is used without a look, here
// and below: a program without memory ends where it has always ended.
nlmsghdr *new_datagram(const uint8_t *message, int32_t key) {
  const uint32_t size = message_size(message);
  auto *datagram = static_cast<nlmsghdr *>(malloc(NLMSG_ALIGN(kNetlinkHeader + size)));
  datagram->nlmsg_len = kNetlinkHeader + size;
  datagram->nlmsg_flags = 0;
  datagram->nlmsg_pid = static_cast<uint32_t>(key);
  memcpy(NLMSG_DATA(datagram), message, size);
  return datagram;
}

msghdr one_vector(sockaddr_nl *address, iovec *vector) {
  msghdr message = {};
  message.msg_name = address;
  message.msg_namelen = sizeof *address;
  message.msg_iov = vector;
  message.msg_iovlen = 1;
  return message;
}

// The bytes sent, or -1.
ssize_t send_to_kernel(int32_t socket, const uint8_t *message, int32_t key) {
  nlmsghdr *datagram = new_datagram(message, key);
  sockaddr_nl kernel = {};
  kernel.nl_family = AF_NETLINK;
  iovec vector = {datagram, datagram->nlmsg_len};
  const msghdr outgoing = one_vector(&kernel, &vector);
  return swctl::use_block<ssize_t>(datagram, [&] {
    const ssize_t sent = sendmsg(socket, &outgoing, 0);
    if (sent == -1) perror("sendmsg error:");
    return sent;
  });
}

// Callers know select(), with what interrupts it and what it answers. It is
// called on a set that has room for any descriptor, however many the process
// has open; an fd_set ends at FD_SETSIZE.
int32_t wait_readable(int32_t socket, int32_t seconds) {
  const auto index = static_cast<size_t>(socket);
  const size_t bytes = (index / FD_SETSIZE + 1) * sizeof(fd_set);
  auto *words = static_cast<fd_mask *>(__builtin_alloca(bytes));
  memset(words, 0, bytes);
  words[index / NFDBITS] = static_cast<fd_mask>(1UL << (index % NFDBITS));
  timeval limit = {};
  limit.tv_sec = seconds;
  return select(socket + 1, reinterpret_cast<fd_set *>(words), nullptr, nullptr, &limit);
}

// The reply's own length is believed, whatever was received: only the kernel's
// module sends to this socket, and its word is taken for the reply's size.
void *copy_of_message(const uint8_t *message) {
  const uint32_t size = message_size(message);
  return memcpy(malloc(size), message, size);
}

// What recvmsg() answered, after what is printed for a failure.
int32_t receive_into(uint8_t *buffer, int32_t socket) {
  sockaddr_nl sender = {};
  iovec vector = {buffer, kReceiveBuffer};
  msghdr incoming = one_vector(&sender, &vector);
  const auto received = static_cast<int32_t>(recvmsg(socket, &incoming, 0));
  if (received == 0) puts("Exit.");
  if (received == -1) {
    perror("recvmsg:");
    puts("Recive message error!~");
  }
  return received;
}

int32_t receive(int32_t socket, void **reply) {
  auto *buffer = static_cast<uint8_t *>(calloc(1, kReceiveBuffer));
  return swctl::use_block<int32_t>(buffer, [=] {
    const int32_t received = receive_into(buffer, socket);
    if (received != 0 && received != -1) *reply = copy_of_message(buffer + kNetlinkHeader);
    return received;
  });
}

uint32_t answer_word(const void *reply) {
  uint32_t word;
  memcpy(&word, static_cast<const uint8_t *>(reply) + kMessageHeader, sizeof word);
  return word;
}

}  // namespace

int32_t MSG_UserSendAndRecvMessage(const uint8_t *message, int32_t timeoutSeconds, void **reply) {
  const int32_t key = swctl::thread_key();
  if (message == nullptr) return 0;
  if (swctl::thread_sockets.ready == 0) InitThreadSocketData();
  const int32_t socket = GetThreadSocket(key);
  if (socket < 0) {
    printf("%s:%d ERROR to get socket!\n", "MSG_UserSendAndRecvMessage", kNoSocketLine);
    return -1;
  }
  const auto sent = static_cast<int32_t>(send_to_kernel(socket, message, key));
  if (sent == -1) return -1;
  const int32_t ready = wait_readable(socket, timeoutSeconds);
  if (ready < 0) return ready;
  if (ready == 0) {
    printf("Receive message time out! iRet:%d~ socket:0x%X iPid:0x%X\n", sent,
           static_cast<uint32_t>(socket), static_cast<uint32_t>(key));
    return 0;
  }
  return receive(socket, reply);
}

uint32_t user_send_data_to_kernel(uint32_t msgCode, const void *data, uint32_t dataLength) {
  DataRequest request;
  request.dataLength = static_cast<uint16_t>(dataLength);
  const size_t copied = data == nullptr ? 0 : request.dataLength;
  if (copied != 0) memcpy(request.data, data, copied);
  if (copied < sizeof request.data) memset(request.data + copied, 0, sizeof request.data - copied);

  const uint32_t code = (msgCode & 0xFFFF0000u) | SWCTL_KMSG_DATA_REQUEST;
  uint8_t *message = MSG_CreateUserToKernelMessage(
      code, reinterpret_cast<const uint8_t *>(&request), sizeof request);
  void *reply = nullptr;
  if (message != nullptr) {
    swctl::use_block<int32_t>(message, [message, &reply] {
      return MSG_UserSendAndRecvMessage(message, SWCTL_KMSG_TIMEOUT, &reply);
    });
  }
  return reply == nullptr ? SWCTL_KMSG_NO_ANSWER : answer_word(reply);
}
