// SPDX-License-Identifier: MIT
#include "exchange.h"

#include <swctl/kmsg.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <libmnl/libmnl.h>
#include <linux/netlink.h>
#include <sys/select.h>
#include <sys/socket.h>

#include "../module/protocol.h"

namespace {

constexpr size_t kBuffer = 16400;
constexpr size_t kMessage = NLMSG_HDRLEN + sizeof(switch_header) + sizeof(switch_data);
constexpr size_t kAnswerAt = NLMSG_HDRLEN + sizeof(switch_header);

[[noreturn]] void die(const char *what) {
  perror(what);
  exit(1);
}

void fill_request(void *place, uint32_t word) {
  const switch_header header = {SWITCH_ECHO, SWITCH_TO_KERNEL, SWITCH_DATA, 0, sizeof(switch_data)};
  switch_data data = {};
  data.length = sizeof word;
  memcpy(data.bytes, &word, sizeof word);
  memcpy(place, &header, sizeof header);
  memcpy(static_cast<uint8_t *>(place) + sizeof header, &data, sizeof data);
}

void wait_for(int socket) {
  fd_set set;
  FD_ZERO(&set);
  FD_SET(socket, &set);
  timeval limit = {SWCTL_KMSG_TIMEOUT, 0};
  if (select(socket + 1, &set, nullptr, nullptr, &limit) != 1) die("select");
}

uint32_t answer_in(const uint8_t *datagram) {
  uint32_t word;
  memcpy(&word, datagram + kAnswerAt, sizeof word);
  return word;
}

struct BareSocket {
  int descriptor;
  uint32_t port;
};

BareSocket open_bare() {
  const int descriptor = socket(AF_NETLINK, SOCK_RAW, SWITCH_PROTOCOL);
  sockaddr_nl own = {};
  own.nl_family = AF_NETLINK;
  socklen_t size = sizeof own;
  if (descriptor < 0 || bind(descriptor, reinterpret_cast<sockaddr *>(&own), sizeof own) != 0 ||
      getsockname(descriptor, reinterpret_cast<sockaddr *>(&own), &size) != 0)
    die("bare socket");
  return {descriptor, own.nl_pid};
}

uint32_t bare(uint32_t word, bool is_bounded, uint8_t *reply) {
  static const BareSocket socket = open_bare();
  alignas(nlmsghdr) static uint8_t buffer[kMessage];
  auto *netlink = reinterpret_cast<nlmsghdr *>(buffer);
  *netlink = {kMessage, 0, 0, 0, socket.port};
  fill_request(NLMSG_DATA(netlink), word);

  sockaddr_nl kernel = {};
  kernel.nl_family = AF_NETLINK;
  iovec vector = {buffer, kMessage};
  msghdr message = {};
  message.msg_name = &kernel;
  message.msg_namelen = sizeof kernel;
  message.msg_iov = &vector;
  message.msg_iovlen = 1;
  if (sendmsg(socket.descriptor, &message, 0) != kMessage) die("sendmsg");
  if (is_bounded) wait_for(socket.descriptor);
  vector = {reply, kBuffer};
  if (recvmsg(socket.descriptor, &message, 0) < 0) die("recvmsg");
  return answer_in(reply);
}

// Its own memory for a reply, with zeros where the reply does not reach.
uint32_t bare_with_new_memory(uint32_t word, bool is_bounded) {
  auto *reply = static_cast<uint8_t *>(calloc(1, kBuffer));
  if (reply == nullptr) die("calloc");
  const uint32_t answer = bare(word, is_bounded, reply);
  free(reply);
  return answer;
}

mnl_socket *open_libmnl() {
  mnl_socket *socket = mnl_socket_open(SWITCH_PROTOCOL);
  if (socket == nullptr || mnl_socket_bind(socket, 0, MNL_SOCKET_AUTOPID) < 0) die("libmnl socket");
  return socket;
}

}  // namespace

uint32_t through_library(uint32_t word) {
  return user_send_data_to_kernel(SWITCH_ECHO << 16, &word, sizeof word);
}

uint32_t through_libmnl(uint32_t word) {
  static mnl_socket *const socket = open_libmnl();
  alignas(nlmsghdr) static uint8_t buffer[kBuffer];
  nlmsghdr *netlink = mnl_nlmsg_put_header(buffer);
  netlink->nlmsg_pid = mnl_socket_get_portid(socket);
  fill_request(mnl_nlmsg_put_extra_header(netlink, sizeof(switch_header) + sizeof(switch_data)),
               word);
  if (mnl_socket_sendto(socket, netlink, netlink->nlmsg_len) < 0) die("mnl_socket_sendto");
  wait_for(mnl_socket_get_fd(socket));
  if (mnl_socket_recvfrom(socket, buffer, sizeof buffer) < 0) die("mnl_socket_recvfrom");
  return answer_in(buffer);
}

uint32_t through_bare_calls(uint32_t word) {
  return bare_with_new_memory(word, true);
}

uint32_t through_bare_calls_unbounded(uint32_t word) {
  return bare_with_new_memory(word, false);
}

uint32_t through_bare_calls_kept_memory(uint32_t word) {
  static uint8_t reply[kBuffer];
  return bare(word, true, reply);
}
