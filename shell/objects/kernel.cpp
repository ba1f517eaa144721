// SPDX-License-Identifier: MIT
#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "chip/kernel_module.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

constexpr const char *kSocketList = "/proc/net/netlink";
constexpr int64_t kLongestWait = 86400;

std::vector<uint8_t> bytes_given(const Arguments &arguments) {
  std::vector<uint8_t> bytes;
  if (!arguments.has("BYTES")) return bytes;
  for (const int64_t byte : arguments.numbers("BYTES")) bytes.push_back(static_cast<uint8_t>(byte));
  return bytes;
}

std::string word_text(uint32_t word) {
  char text[32];
  snprintf(text, sizeof text, "%u (0x%x)", word, word);
  return text;
}

Answer send(const Arguments &arguments, const Context &) {
  const auto id = static_cast<uint16_t>(arguments.number("MSGID"));
  const int64_t seconds = arguments.has("-T") ? arguments.number("-T") : SWCTL_KMSG_TIMEOUT;
  const uint32_t word = ask_kernel(id, bytes_given(arguments), static_cast<int32_t>(seconds));
  Record record;
  record.add("msgid", int64_t{id});
  record.add("answer", int64_t{word}, word_text(word));
  return {Shape::detail, {record}, ""};
}

Answer status(const Arguments &, const Context &) {
  std::ifstream list(kSocketList);
  if (!list) {
    Fault fault;
    fault.status = kRefused;
    fault.message = std::string(kSocketList) + ": " + strerror(errno);
    throw CommandError(fault);
  }
  const ChannelState state = channel_state(list);
  Record record;
  record.add("protocol", int64_t{NETLINK_SWITCH_PROTOCOL});
  record.add("module", state.module, state.module ? "present" : "absent");
  record.add("sockets", state.sockets);
  return {Shape::detail, {record}, ""};
}

Node send_command() {
  return {
      .name = "send",
      .help = "Send data to the kernel's switch module, show its answer",
      .positional = {required("MSGID", number(0, 0xFFFF), "What is asked, as the module knows it"),
                     {.name = "BYTES", .type = bytes(SWCTL_KMSG_MAX_DATA), .help = "The data"}},
      .keywords = {{.name = "-T",
                    .type = number(0, kLongestWait, "s"),
                    .help = "How long to wait for the answer; without, 120 s"}},
      .details = "The answer is one word. Without BYTES, the request has no data.\n",
      .run = send,
  };
}

Node status_command() {
  return {
      .name = "status",
      .help = "Show whether the module is there, and the channel's sockets",
      .details = "sockets are those of all programs that talk to the module.\n",
      .run = status,
  };
}

}  // namespace

Node kernel_object() {
  return {
      .name = "kernel",
      .help = "The message channel to the kernel's switch module",
      .children = {send_command(), status_command()},
      .needs_platform = false,
  };
}

}  // namespace swsh
