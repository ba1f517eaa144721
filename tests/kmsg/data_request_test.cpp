// SPDX-License-Identifier: MIT
// Data to the kernel, and the word that it answers.
#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdlib>

#include "kmsg/thread_sockets.h"
#include "scripted_world.h"

namespace {

using namespace kmsg_test;

constexpr uint32_t kNoAnswer = 0xFFFFFFFFu;

class DataRequest : public KmsgTest {
 protected:
  void SetUp() override {
    KmsgTest::SetUp();
    swctl::thread_sockets.ready = 1;
    SetSockData(70, 0x1234);
  }
  // Sends and returns the answer; the copy of the reply that the library
  // leaves is released.
  uint32_t ask(uint32_t code, const void *data, uint32_t length) {
    uint32_t answer = 0;
    observed_ = observe([&] { answer = user_send_data_to_kernel(code, data, length); });
    left_ = world().allocated.size();
    while (!world().allocated.empty()) free(world().allocated.begin()->first);
    return answer;
  }
  void reply_with(uint32_t number) {
    world().replies.push_back(kNetlink + header(0x1234, 2, 3, 0, 4) + word(number));
  }
  static Bytes payload_sent() { return bytes_at(world().sent.data() + 28, 2048); }

  Observed observed_;
  size_t left_ = 0;
};

TEST_F(DataRequest, DatagramHas2076Bytes) {
  reply_with(1);
  ask(0x12340000, "\x01\x02\x03\x04\x05", 5);
  ASSERT_EQ(world().sent.size(), 2076u);
  EXPECT_EQ(bytes_at(world().sent.data(), 4), word(2076));
  EXPECT_EQ(bytes_at(world().sent.data() + 6, 2), half_word(0));
  EXPECT_EQ(bytes_at(world().sent.data() + 12, 4), word(0x1234));
  EXPECT_EQ(bytes_at(world().sent.data() + 16, 12), header(0x1234, 1, 3, 0, 2048));
  EXPECT_EQ(payload_sent(), (half_word(5) + Bytes{1, 2, 3, 4, 5} + zeros(2041)));
}

TEST_F(DataRequest, IsOneExchangeOf120Seconds) {
  reply_with(1);
  ask(0x12340000, "data", 4);
  EXPECT_EQ(
      observed_.calls,
      (Lines{"calloc(2060)", "malloc(2076)", "sendmsg(70, {16, 0, 0, 0}, 12, 2076 bytes, 0) = 2076",
             "free(2076)", "select(71, {70}, 120 s 0 us) = 1", "calloc(16400)",
             "recvmsg(70, {0, 0, 0, 0}, 12, 16400 bytes, 0) = 32", "malloc(16)", "free(16400)",
             "free(2060)"}));
  EXPECT_PRINTED(observed_.printed, "", "");
}

TEST_F(DataRequest, LowHalfOfTheCodeIsReplaced) {
  for (uint32_t low : {0u, 3u, 0xFFFFu, 0x8000u}) {
    reply_with(1);
    ask(0xBEEF0000u | low, nullptr, 0);
    EXPECT_EQ(bytes_at(world().sent.data() + 16, 12), header(0xBEEF, 1, 3, 0, 2048));
  }
}

TEST_F(DataRequest, LengthIsItsLow16Bits) {
  const Bytes data = {1, 2, 3, 4, 5, 6, 7, 8};
  reply_with(1);
  ask(0, data.data(), 0x10005);
  EXPECT_EQ(payload_sent(), (half_word(5) + Bytes{1, 2, 3, 4, 5} + zeros(2041)));
  reply_with(1);
  ask(0, data.data(), 0xABCD0000u);
  EXPECT_EQ(payload_sent(), zeros(2048));
}

TEST_F(DataRequest, DataFillsTheRequestUpTo2046Bytes) {
  const Bytes data(2046, 0x5A);
  reply_with(1);
  ask(0, data.data(), 2046);
  EXPECT_EQ(payload_sent(), half_word(2046) + data);
}

TEST_F(DataRequest, LengthIsNotHeldAgainstTheRoom) {
  const Bytes data(0x10000, 0x5A);
  world().oversized = data.data();
  for (uint32_t length : {2047u, 0xFFFFu}) {
    reply_with(1);
    ask(0, data.data(), length);
    EXPECT_EQ(observed_.calls.front(), "memcpy(" + std::to_string(length) + ")");
    EXPECT_EQ(bytes_at(world().sent.data() + 28, 2), half_word(static_cast<uint16_t>(length)));
  }
}

TEST_F(DataRequest, NullDataIsZeros) {
  reply_with(1);
  ask(0, nullptr, 5);
  EXPECT_EQ(payload_sent(), half_word(5) + zeros(2046));
}

TEST_F(DataRequest, AnswerIsTheFirstWordOfTheReply) {
  world().replies = {kNetlink + header(0x1234, 2, 3, 0, 4) + word(42),
                     kNetlink + header(0x1234, 2, 3, 0, 8) + word(0x80000001u) + word(7),
                     kNetlink + header(0x1234, 2, 3, 0, 4) + word(0)};
  EXPECT_EQ(ask(0x12340000, "x", 1), 42u);
  EXPECT_EQ(ask(0x12340000, "x", 1), 0x80000001u);
  EXPECT_EQ(ask(0x12340000, "x", 1), 0u);
}

TEST_F(DataRequest, EveryAnsweredCallLeavesItsReplyAllocated) {
  reply_with(1);
  ask(0, "x", 1);
  EXPECT_EQ(left_, 1u);
  world().select_result = 0;
  ask(0, "x", 1);
  EXPECT_EQ(left_, 0u);
}

TEST_F(DataRequest, WithoutMemoryNothingIsSent) {
  world().out_of_memory = true;
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_EQ(observed_.calls, (Lines{"calloc(2060)"}));
  EXPECT_PRINTED(observed_.printed, "", "");
}

TEST_F(DataRequest, WithoutASocketThereIsNoAnswer) {
  world().identity = 0x77;
  world().socket_error = EPROTONOSUPPORT;
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_EQ(observed_.calls, (Lines{"calloc(2060)", "socket(16, 3, 30) = -1", "free(2060)"}));
  EXPECT_PRINTED(observed_.printed,
                 "ERROR in CreateThreadSocket:162 create socket\n"
                 "MSG_UserSendAndRecvMessage:330 ERROR to get socket!\n",
                 "socket: Protocol not supported\n");
}

TEST_F(DataRequest, FailureToSendIsNoAnswer) {
  world().send_error = ENOBUFS;
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_PRINTED(observed_.printed, "", "sendmsg error:: No buffer space available\n");
  EXPECT_EQ(left_, 0u);
}

TEST_F(DataRequest, FailedWaitIsNoAnswer) {
  world().select_error = EINTR;
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_PRINTED(observed_.printed, "", "");
  EXPECT_EQ(left_, 0u);
}

TEST_F(DataRequest, TimeoutIsNoAnswer) {
  world().select_result = 0;
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_PRINTED(observed_.printed,
                 "Receive message time out! iRet:2076~ socket:0x46 iPid:0x1234\n", "");
}

TEST_F(DataRequest, EndOfTheSocketIsNoAnswer) {
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_PRINTED(observed_.printed, "Exit.\n", "");
  EXPECT_EQ(left_, 0u);
}

TEST_F(DataRequest, FailureToReceiveIsNoAnswer) {
  world().receive_error = ENOMEM;
  EXPECT_EQ(ask(0, "x", 1), kNoAnswer);
  EXPECT_PRINTED(observed_.printed, "Recive message error!~\n",
                 "recvmsg:: Cannot allocate memory\n");
  EXPECT_EQ(left_, 0u);
}

}  // namespace
