// SPDX-License-Identifier: MIT
// The message channel against the real kernel and the reference module. Runs
// as root in the machine of kernel/vm. What the library did is judged by the
// kernel: its list of sockets, the module's answers, counters and log.
#include <swctl/kmsg.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <set>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "../module/protocol.h"

namespace {

using Bytes = std::vector<uint8_t>;

uint32_t code_of(uint32_t id) {
  return id << 16;
}

uint32_t ask(uint32_t id, const Bytes &data = {}) {
  return user_send_data_to_kernel(code_of(id), data.data(), static_cast<uint32_t>(data.size()));
}

Bytes word(uint32_t number) {
  Bytes bytes(sizeof number);
  memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

Bytes pattern(size_t length) {
  Bytes bytes(length);
  for (size_t index = 0; index < length; ++index) bytes[index] = SWITCH_PATTERN_BYTE(length, index);
  return bytes;
}

// Port ids of the sockets of the protocol as the kernel lists them, its own
// left out.
std::multiset<uint32_t> bound_ports() {
  std::multiset<uint32_t> ports;
  std::ifstream list("/proc/net/netlink");
  std::string line;
  while (std::getline(list, line)) {
    std::istringstream fields(line);
    std::string address;
    int protocol = -1;
    uint32_t port = 0;
    if (fields >> address >> protocol >> port && protocol == SWITCH_PROTOCOL && port != 0)
      ports.insert(port);
  }
  return ports;
}

int counter(const std::string &name) {
  int value = -1;
  std::ifstream("/sys/module/swctl_switch/parameters/" + name) >> value;
  return value;
}

// The key under which the library stored this thread's socket: the only port
// that its first request adds.
uint32_t own_key() {
  thread_local uint32_t key = 0;
  if (key != 0) return key;
  for (uint32_t port : bound_ports()) {
    sockaddr_nl address = {};
    socklen_t size = sizeof address;
    const int socket = GetSockData(port);
    if (socket < 0 || getsockname(socket, reinterpret_cast<sockaddr *>(&address), &size) != 0)
      continue;
    EXPECT_EQ(address.nl_pid, port);
    key = port;
  }
  return key;
}

std::string printed_by(const std::function<void()> &function) {
  testing::internal::CaptureStdout();
  function();
  return testing::internal::GetCapturedStdout();
}

// A request as a message, with a payload as the module wants it.
struct Message {
  KernelMsgHeader header = {SWITCH_ECHO, SWITCH_TO_KERNEL, SWITCH_DATA, 0, sizeof(switch_data)};
  switch_data data = {4, {1, 2, 3, 4}};
};

// Whether the module answers the message. It does so while the message is
// being sent, so there is nothing to wait for.
bool is_answered(const Message &message) {
  void *reply = nullptr;
  int32_t received = 0;
  printed_by([&] {
    received = MSG_UserSendAndRecvMessage(reinterpret_cast<const uint8_t *>(&message), 0, &reply);
  });
  free(reply);
  return received > 0;
}

TEST(Channel, EchoesAWord) {
  EXPECT_EQ(ask(SWITCH_ECHO, word(0x12345678)), 0x12345678u);
  EXPECT_EQ(ask(SWITCH_ECHO, word(0)), 0u);
  EXPECT_EQ(bound_ports().size(), 1u);
  EXPECT_GT(own_key(), 0u);
  EXPECT_LE(own_key(), 0x7FFFFFFFu);
}

TEST(Channel, KernelSumsTheData) {
  EXPECT_EQ(ask(SWITCH_SUM, {1, 2, 3, 250}), 256u);
  EXPECT_EQ(ask(SWITCH_SUM, Bytes(SWITCH_DATA_BYTES, 255)), 255u * SWITCH_DATA_BYTES);
  EXPECT_EQ(ask(SWITCH_SUM), 0u);
}

TEST(Channel, KernelFindsEveryByteInItsPlace) {
  for (size_t length : {size_t{0}, size_t{1}, size_t{5}, size_t{1000}, size_t{SWITCH_DATA_BYTES}}) {
    EXPECT_EQ(ask(SWITCH_PATTERN, pattern(length)), 1u) << length;
  }
  for (size_t wrong : {0, 1, 999, 2045}) {
    Bytes data = pattern(SWITCH_DATA_BYTES);
    data[wrong] ^= 0x10;
    EXPECT_EQ(ask(SWITCH_PATTERN, data), 0u) << wrong;
  }
}

TEST(Channel, RegistersKeepWhatIsStored) {
  for (uint32_t index = 0; index < SWITCH_REGISTERS; ++index) {
    EXPECT_EQ(ask(SWITCH_REGISTER_FIRST + index, word(index * 0x01010101u)), index * 0x01010101u);
  }
  for (uint32_t index = 0; index < SWITCH_REGISTERS; ++index) {
    EXPECT_EQ(ask(SWITCH_REGISTER_FIRST + index), index * 0x01010101u);
  }
}

TEST(Channel, WhatTheModuleDoesNotKnowIsRefused) {
  EXPECT_EQ(ask(0), SWITCH_REFUSED);
  EXPECT_EQ(ask(0xFFFF, word(1)), SWITCH_REFUSED);
  EXPECT_EQ(ask(SWITCH_ECHO, {1, 2, 3}), SWITCH_REFUSED);
  EXPECT_EQ(ask(SWITCH_REGISTER_FIRST, {1, 2, 3}), SWITCH_REFUSED);
  EXPECT_EQ(ask(SWITCH_REGISTER_FIRST + SWITCH_REGISTERS, word(1)), SWITCH_REFUSED);
}

TEST(Channel, ReplyIsHandedOutWhole) {
  const Message message;
  void *reply = nullptr;
  EXPECT_EQ(MSG_UserSendAndRecvMessage(reinterpret_cast<const uint8_t *>(&message), 5, &reply), 32);
  ASSERT_NE(reply, nullptr);
  const KernelMsgHeader expected = {SWITCH_ECHO, SWITCH_TO_USER, SWITCH_DATA, 0, 4};
  const uint8_t bytes[] = {1, 2, 3, 4};
  EXPECT_EQ(memcmp(reply, &expected, sizeof expected), 0);
  EXPECT_EQ(memcmp(static_cast<uint8_t *>(reply) + sizeof expected, bytes, sizeof bytes), 0);
  free(reply);
}

TEST(Channel, TenThousandRequestsInARow) {
  const int before = counter("answered");
  int wrong = 0;
  for (uint32_t index = 0; index < 10000; ++index) {
    if (ask(SWITCH_ECHO, word(index * 2654435761u)) != index * 2654435761u) ++wrong;
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(counter("answered") - before, 10000);
  EXPECT_EQ(bound_ports().size(), 1u);
}

TEST(Channel, SilenceEndsWithATimeout) {
  Message message;
  message.header.msgId = SWITCH_SILENCE;
  void *reply = nullptr;
  int32_t result = -9;
  const auto start = std::chrono::steady_clock::now();
  const std::string printed = printed_by([&] {
    result = MSG_UserSendAndRecvMessage(reinterpret_cast<const uint8_t *>(&message), 2, &reply);
  });
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(result, 0);
  EXPECT_EQ(reply, nullptr);
  EXPECT_GE(waited, std::chrono::milliseconds(1990));
  EXPECT_LT(waited, std::chrono::seconds(20));
  char expected[120];
  snprintf(expected, sizeof expected,
           "Receive message time out! iRet:2076~ socket:0x%X iPid:0x%X\n",
           static_cast<unsigned>(GetSockData(own_key())), own_key());
  EXPECT_EQ(printed, expected);
  EXPECT_EQ(ask(SWITCH_ECHO, word(5)), 5u) << "the channel goes on";
}

TEST(Module, DropsWhatIsNotSound) {
  std::vector<Message> messages(5);
  messages[0].header.direction = SWITCH_TO_USER;
  messages[1].header.msgType = SWITCH_DATA + 1;
  messages[2].header.reserved = 1;
  messages[3].data.length = SWITCH_DATA_BYTES + 1;
  messages[4].data.bytes[4] = 1;  // after the data
  const int before = counter("dropped");
  for (const Message &message : messages) EXPECT_FALSE(is_answered(message));
  EXPECT_EQ(counter("dropped") - before, 5);
  EXPECT_TRUE(is_answered(Message())) << "no harm is done";
}

TEST(Module, DropsAnotherSizeThanThatOfADataRequest) {
  const int before = counter("dropped");
  for (uint32_t length : {0u, 4u, 2047u}) {
    Message message;
    message.header.length = length;
    EXPECT_FALSE(is_answered(message)) << length;
  }
  EXPECT_EQ(counter("dropped") - before, 3);
  EXPECT_TRUE(is_answered(Message()));
}

TEST(Module, DropsDatagramsThatAreNoMessages) {
  const int socket = ::socket(AF_NETLINK, SOCK_RAW, SWITCH_PROTOCOL);
  const int before = counter("dropped");
  Bytes datagram(2076, 0xFF);
  for (size_t size : {1, 15, 16, 27, 28, 2075, 2076}) {
    sockaddr_nl kernel = {};
    kernel.nl_family = AF_NETLINK;
    EXPECT_EQ(sendto(socket, datagram.data(), size, 0, reinterpret_cast<sockaddr *>(&kernel),
                     sizeof kernel),
              static_cast<ssize_t>(size));
  }
  EXPECT_EQ(counter("dropped") - before, 7);
  close(socket);
  EXPECT_TRUE(is_answered(Message()));
}

TEST(Module, DropsRequestsOfUsersWithoutTheCapability) {
  const int before = counter("dropped");
  const pid_t child = fork();
  if (child == 0) {
    if (setuid(65534) != 0) _exit(2);
    // A new thread, since this one's key is taken by the parent's socket.
    bool answered = false;
    std::thread([&] { answered = is_answered(Message()); }).join();
    _exit(answered ? 1 : 0);
  }
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(counter("dropped") - before, 1);
}

TEST(Module, LogsAtDebugLevel) {
  const int log = open("/dev/kmsg", O_RDONLY | O_NONBLOCK);
  lseek(log, 0, SEEK_END);
  ask(SWITCH_ECHO, word(0xABCD));
  char record[1024] = {};
  ASSERT_GT(read(log, record, sizeof record - 1), 0);
  close(log);
  EXPECT_EQ(std::string(record).substr(0, 2), "7,") << "kernel facility, level debug";
  EXPECT_NE(std::string(record).find("swctl_switch: port " + std::to_string(own_key()) +
                                     ", request 0x1, 4 bytes: 0xabcd, result 0"),
            std::string::npos)
      << record;
}

// Has threads that hold their sockets until they are let go.
class Crowd {
 public:
  // Every thread sends and is answered, all at once.
  explicit Crowd(uint32_t threads) {
    for (uint32_t index = 0; index < threads; ++index) {
      threads_.emplace_back([this, index] { live(index); });
    }
    while (ready_ < threads) std::this_thread::yield();
  }
  void leave() {
    leaving_ = true;
    for (std::thread &thread : threads_) thread.join();
  }
  int wrong() const { return wrong_; }

 private:
  void live(uint32_t index) {
    for (uint32_t round = 0; round < 50; ++round) {
      const uint32_t number = index << 16 | round;
      if (ask(SWITCH_ECHO, word(number)) != number) ++wrong_;
    }
    ++ready_;
    while (!leaving_) usleep(1000);
  }

  std::vector<std::thread> threads_;
  std::atomic<uint32_t> ready_ = 0;
  std::atomic<int> wrong_ = 0;
  std::atomic<bool> leaving_ = false;
};

void release_all() {
  for (uint32_t port : bound_ports()) DeleteThreadSocket(port);
}

TEST(Threads, KeyThatIsTakenFailsInBind) {
  const int taken = socket(AF_NETLINK, SOCK_RAW, SWITCH_PROTOCOL);
  sockaddr_nl address = {};
  address.nl_family = AF_NETLINK;
  address.nl_pid = 4711;
  ASSERT_EQ(bind(taken, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
  testing::internal::CaptureStderr();
  EXPECT_EQ(CreateThreadSocket(4711), -1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "bind: Address already in use\n");
  EXPECT_EQ(GetSockData(4711), -1);
  close(taken);
}

TEST(Threads, ThirtyTwoAtOnceHaveSocketsOfTheirOwn) {
  release_all();
  ASSERT_EQ(bound_ports().size(), 0u);
  Crowd crowd(32);
  EXPECT_EQ(crowd.wrong(), 0);
  const auto ports = bound_ports();
  EXPECT_EQ(ports.size(), 32u);
  EXPECT_EQ(std::set<uint32_t>(ports.begin(), ports.end()).size(), 32u);
  std::set<int32_t> sockets;
  for (uint32_t port : ports) sockets.insert(GetSockData(port));
  EXPECT_EQ(sockets.size(), 32u);
  EXPECT_EQ(sockets.count(-1), 0u);
  EXPECT_EQ(GetFreeSockData(), -1);
  crowd.leave();
  EXPECT_EQ(bound_ports().size(), 32u) << "who ends leaves the socket";
}

TEST(Threads, ReleasedPlacesAreTakenAgain) {
  release_all();
  EXPECT_EQ(bound_ports().size(), 0u) << "the kernel has seen them closed";
  EXPECT_EQ(GetFreeSockData(), 0);
  Crowd crowd(31);
  EXPECT_EQ(crowd.wrong(), 0);
  EXPECT_EQ(bound_ports().size(), 31u);
  EXPECT_EQ(ask(SWITCH_ECHO, word(1)), 1u);
  EXPECT_EQ(bound_ports().size(), 32u);
  crowd.leave();
}

// What a command prints, and its status after it.
std::string output_of(const std::string &command) {
  FILE *pipe = popen((command + " 2>&1; echo [$?]").c_str(), "r");
  std::string output;
  char line[256];
  while (fgets(line, sizeof line, pipe) != nullptr) output += line;
  pclose(pipe);
  return output;
}

TEST(Shell, SendShowsTheAnswer) {
  EXPECT_EQ(output_of("swctl kernel send 2 010203fa"), "msgid   2\nanswer  256 (0x100)\n[0]\n");
  EXPECT_EQ(output_of("swctl -j kernel send 0x1ff 01010101"),
            "[{\"msgid\":511,\"answer\":16843009}]\n[0]\n");
  EXPECT_EQ(ask(0x1FF), 0x01010101u) << "the register is the kernel's";
  EXPECT_EQ(output_of("swctl kernel send 0x1ff -T 5"),
            "msgid   511\nanswer  16843009 (0x1010101)\n[0]\n");
}

TEST(Shell, SendSaysThatThereIsNoAnswer) {
  const std::string output = output_of("swctl kernel send 4 -T 1");
  EXPECT_EQ(output.find("Receive message time out! iRet:2076~ "), 0u) << output;
  EXPECT_NE(output.find("swctl: kernel send 4 -T 1: the kernel's switch module did not answer "
                        "within 1 s\n[2]\n"),
            std::string::npos)
      << output;
}

TEST(Shell, StatusShowsModuleAndSockets) {
  release_all();
  EXPECT_EQ(output_of("swctl kernel status"),
            "protocol  30\nmodule    present\nsockets   0\n[0]\n");
  ask(SWITCH_ECHO, word(1));
  EXPECT_EQ(output_of("swctl -j kernel status"),
            "[{\"protocol\":30,\"module\":true,\"sockets\":1}]\n[0]\n");
}

// The last of the program: it leaves the table locked.
TEST(FullTable, ThirtyThirdIsRefused) {
  release_all();
  EXPECT_EQ(ask(SWITCH_ECHO, word(1)), 1u);
  Crowd crowd(31);
  EXPECT_EQ(bound_ports().size(), 32u);
  uint32_t answer = 0;
  const std::string printed =
      printed_by([&] { std::thread([&] { answer = ask(SWITCH_ECHO, word(2)); }).join(); });
  EXPECT_EQ(answer, SWCTL_KMSG_NO_ANSWER);
  EXPECT_EQ(printed,
            "max thread number already!\nMSG_UserSendAndRecvMessage:330 ERROR to get socket!\n");
  EXPECT_EQ(bound_ports().size(), 32u) << "its socket is closed";
  EXPECT_EQ(ask(SWITCH_ECHO, word(3)), 3u) << "who has a socket goes on";
  crowd.leave();
}

}  // namespace
