// SPDX-License-Identifier: MIT
#include "exchange.h"

#include <swctl/kmsg.h>

#include <cstddef>
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
constexpr size_t kRequest = sizeof(switch_header) + sizeof(switch_data);
constexpr size_t kDatagram = NLMSG_HDRLEN + kRequest;

[[noreturn]] void die(const char *what) {
  perror(what);
  exit(1);
}

// A data request with a word for its data, made where it is to be.
void fill_request(void *place, uint32_t word) {
  const switch_header header = {SWITCH_ECHO, SWITCH_TO_KERNEL, SWITCH_DATA, 0, sizeof(switch_data)};
  auto *data = static_cast<uint8_t *>(memcpy(place, &header, sizeof header)) + sizeof header;
  memset(data, 0, sizeof(switch_data));
  const uint16_t length = sizeof word;
  memcpy(data + offsetof(switch_data, length), &length, sizeof length);
  memcpy(data + offsetof(switch_data, bytes), &word, sizeof word);
}

void wait_for(int socket) {
  fd_set set;
  FD_ZERO(&set);
  FD_SET(socket, &set);
  timeval limit = {SWCTL_KMSG_TIMEOUT, 0};
  if (select(socket + 1, &set, nullptr, nullptr, &limit) != 1) die("select");
}

uint32_t answer_in(const void *reply) {
  uint32_t word;
  memcpy(&word, static_cast<const uint8_t *>(reply) + sizeof(switch_header), sizeof word);
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

const BareSocket &bare_socket() {
  static const BareSocket socket = open_bare();
  return socket;
}

msghdr to_or_from_kernel(sockaddr_nl *address, iovec *vector) {
  msghdr message = {};
  message.msg_name = address;
  message.msg_namelen = sizeof *address;
  message.msg_iov = vector;
  message.msg_iovlen = 1;
  return message;
}

// The request is in its place; the netlink header is not.
void send_datagram(uint8_t *datagram) {
  *reinterpret_cast<nlmsghdr *>(datagram) = {kDatagram, 0, 0, 0, bare_socket().port};
  sockaddr_nl kernel = {};
  kernel.nl_family = AF_NETLINK;
  iovec vector = {datagram, kDatagram};
  const msghdr message = to_or_from_kernel(&kernel, &vector);
  if (sendmsg(bare_socket().descriptor, &message, 0) != kDatagram) die("sendmsg");
}

void receive_into(uint8_t *buffer) {
  sockaddr_nl sender = {};
  iovec vector = {buffer, kBuffer};
  msghdr message = to_or_from_kernel(&sender, &vector);
  if (recvmsg(bare_socket().descriptor, &message, 0) < 0) die("recvmsg");
}

uint8_t *obtained(void *block) {
  if (block == nullptr) die("no memory");
  return static_cast<uint8_t *>(block);
}

uint8_t *zeros(size_t size) {
  return obtained(calloc(1, size));
}

void *copy_of_reply(const void *reply) {
  switch_header header;
  memcpy(&header, reply, sizeof header);
  const size_t size = sizeof header + header.length;
  return memcpy(obtained(malloc(size)), reply, size);
}

void send_in_one_datagram(uint32_t word) {
  alignas(nlmsghdr) static uint8_t datagram[kDatagram];
  fill_request(datagram + NLMSG_HDRLEN, word);
  send_datagram(datagram);
}

uint32_t receive_into_one_buffer() {
  static uint8_t buffer[kBuffer];
  receive_into(buffer);
  return answer_in(buffer + NLMSG_HDRLEN);
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
  fill_request(mnl_nlmsg_put_extra_header(netlink, kRequest), word);
  if (mnl_socket_sendto(socket, netlink, netlink->nlmsg_len) < 0) die("mnl_socket_sendto");
  wait_for(mnl_socket_get_fd(socket));
  if (mnl_socket_recvfrom(socket, buffer, sizeof buffer) < 0) die("mnl_socket_recvfrom");
  return answer_in(buffer + NLMSG_HDRLEN);
}

uint32_t through_bare_calls(uint32_t word) {
  uint8_t request[kRequest];
  fill_request(request, word);
  void *message = memcpy(zeros(kRequest), request, kRequest);

  uint8_t *datagram = obtained(malloc(kDatagram));
  memcpy(datagram + NLMSG_HDRLEN, message, kRequest);
  send_datagram(datagram);
  free(datagram);

  wait_for(bare_socket().descriptor);
  uint8_t *buffer = zeros(kBuffer);
  receive_into(buffer);
  const void *reply = copy_of_reply(buffer + NLMSG_HDRLEN);
  free(buffer);
  free(message);
  return answer_in(reply);  // which stays allocated, as after the library
}

uint32_t through_bare_calls_one_datagram(uint32_t word) {
  send_in_one_datagram(word);
  wait_for(bare_socket().descriptor);
  uint8_t *buffer = zeros(kBuffer);
  receive_into(buffer);
  const uint32_t answer = answer_in(buffer + NLMSG_HDRLEN);
  free(buffer);
  return answer;
}

uint32_t through_bare_calls_one_memory(uint32_t word) {
  send_in_one_datagram(word);
  wait_for(bare_socket().descriptor);
  return receive_into_one_buffer();
}

uint32_t through_bare_calls_unbounded(uint32_t word) {
  send_in_one_datagram(word);
  return receive_into_one_buffer();
}
