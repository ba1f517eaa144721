// SPDX-License-Identifier: MIT
#include "chip/kernel_module.h"

#include <swctl/kmsg.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>

#include "fault.h"

namespace swsh {
namespace {

struct Release {
  void operator()(void *block) const { free(block); }
};
using Block = std::unique_ptr<uint8_t, Release>;

[[noreturn]] void fail(const std::string &message) {
  Fault fault;
  fault.status = kRefused;
  fault.message = message;
  throw CommandError(fault);
}

Block data_request(uint16_t id, const std::vector<uint8_t> &data) {
  uint8_t payload[SWCTL_KMSG_DATA_REQUEST_SIZE] = {};
  const auto length = static_cast<uint16_t>(data.size());
  memcpy(payload, &length, sizeof length);
  if (!data.empty()) memcpy(payload + sizeof length, data.data(), data.size());
  const uint32_t code = uint32_t{id} << 16 | SWCTL_KMSG_DATA_REQUEST;
  return Block(MSG_CreateUserToKernelMessage(code, payload, sizeof payload));
}

// Not user_send_data_to_kernel(): its answer for a missing reply is a word
// that a module may answer too.
Block reply_to(const Block &request, int32_t seconds) {
  void *reply = nullptr;
  const int32_t received = MSG_UserSendAndRecvMessage(request.get(), seconds, &reply);
  if (received < 0) fail("the kernel's switch module cannot be reached");
  if (reply == nullptr)
    fail("the kernel's switch module did not answer within " + std::to_string(seconds) + " s");
  return Block(static_cast<uint8_t *>(reply));
}

}  // namespace

uint32_t ask_kernel(uint16_t id, const std::vector<uint8_t> &data, int32_t seconds) {
  const Block reply = reply_to(data_request(id, data), seconds);
  KernelMsgHeader header;
  uint32_t word;
  memcpy(&header, reply.get(), sizeof header);
  if (header.length < sizeof word) fail("the kernel's switch module answered without a word");
  memcpy(&word, reply.get() + sizeof header, sizeof word);
  return word;
}

ChannelState channel_state(std::istream &list) {
  ChannelState state;
  std::string line;
  while (std::getline(list, line)) {
    std::istringstream fields(line);
    std::string address;
    int protocol = 0;
    uint32_t port = 0;
    if (!(fields >> address >> protocol >> port) || protocol != NETLINK_SWITCH_PROTOCOL) continue;
    if (port == 0) {
      state.module = true;
    } else {
      ++state.sockets;
    }
  }
  return state;
}

}  // namespace swsh
