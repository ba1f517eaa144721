// SPDX-License-Identifier: MIT
// One message out, one reply in.
#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdlib>

#include "kmsg/thread_key.h"
#include "kmsg/thread_sockets.h"
#include "scripted_world.h"

namespace {

using namespace kmsg_test;
using swctl::thread_sockets;

class Exchange : public KmsgTest {
 protected:
  // Sends `message`; the caller finds what came of it in the members.
  Observed send(const Bytes &message, int32_t seconds = 5) {
    reply_ = untouched();
    return observe([&] { result_ = MSG_UserSendAndRecvMessage(message.data(), seconds, &reply_); });
  }
  // Makes the thread's socket beforehand, so that only the exchange is seen.
  void open() {
    observe([] {
      InitThreadSocketData();
      ASSERT_EQ(GetThreadSocket(static_cast<int32_t>(world().identity)), 70);
    });
  }
  Bytes take_reply() {
    const Bytes bytes = bytes_at(reply_, world().allocated.at(reply_));
    free(reply_);
    return bytes;
  }
  void *untouched() { return this; }

  const Bytes message_ = header(7, 1, 5, 0, 4) + Bytes{1, 2, 3, 4};
  int32_t result_ = 0;
  void *reply_ = nullptr;
};

TEST_F(Exchange, FirstMessageMakesTableAndSocket) {
  world().replies = {kNetlink + header(7, 2, 5, 0, 4) + Bytes{9, 8, 7, 6}};
  const Observed observed = send(message_);
  EXPECT_EQ(result_, 32);
  EXPECT_EQ(
      observed.calls,
      (Lines{"lock", "unlock", "socket(16, 3, 30) = 70", "bind(70, {16, 0, 4660, 0}, 12) = 0",
             "lock", "unlock", "malloc(32)", "sendmsg(70, {16, 0, 0, 0}, 12, 32 bytes, 0) = 32",
             "free(32)", "select(71, {70}, 5 s 0 us) = 1", "calloc(16400)",
             "recvmsg(70, {0, 0, 0, 0}, 12, 16400 bytes, 0) = 32", "malloc(16)", "free(16400)"}));
  EXPECT_PRINTED(observed.printed, "", "");
  EXPECT_EQ(take_reply(), header(7, 2, 5, 0, 4) + (Bytes{9, 8, 7, 6}));
  EXPECT_EQ(thread_sockets.ready, 1);
}

TEST_F(Exchange, LaterMessageIsThreeSystemCalls) {
  open();
  world().replies = {kNetlink + header(7, 2, 5, 0, 4) + Bytes{9, 8, 7, 6}};
  EXPECT_EQ(
      send(message_).calls,
      (Lines{"malloc(32)", "sendmsg(70, {16, 0, 0, 0}, 12, 32 bytes, 0) = 32", "free(32)",
             "select(71, {70}, 5 s 0 us) = 1", "calloc(16400)",
             "recvmsg(70, {0, 0, 0, 0}, 12, 16400 bytes, 0) = 32", "malloc(16)", "free(16400)"}));
  take_reply();
}

TEST_F(Exchange, DatagramIsTheMessageBehindANetlinkHeader) {
  open();
  world().replies = {kNetlink + header(7, 2, 5, 0, 0)};
  send(message_);
  take_reply();
  const Bytes type_as_it_was = {0xA5, 0xA5};
  const Bytes sequence_as_it_was = {0xA5, 0xA5, 0xA5, 0xA5};
  EXPECT_EQ(world().sent, word(32) + type_as_it_was + half_word(0) + sequence_as_it_was +
                              word(0x1234) + message_);
  world().memory = 0x3C;
  world().replies = {kNetlink + header(7, 2, 5, 0, 0)};
  send(message_);
  take_reply();
  EXPECT_EQ(world().sent[4], 0x3C);
  EXPECT_EQ(world().sent[8], 0x3C);
}

TEST_F(Exchange, DatagramsMemoryIsRoundedUpToFourBytes) {
  open();
  const std::map<uint32_t, const char *> sizes = {{0, "malloc(28)"}, {1, "malloc(32)"},
                                                  {3, "malloc(32)"}, {4, "malloc(32)"},
                                                  {5, "malloc(36)"}, {16384, "malloc(16412)"}};
  for (const auto &[length, allocation] : sizes) {
    const Bytes message = header(7, 1, 5, 0, length) + Bytes(length, 0x11);
    world().replies = {kNetlink + header(7, 2, 5, 0, 0)};
    EXPECT_EQ(send(message).calls[0], allocation);
    take_reply();
    EXPECT_EQ(world().sent.size(), 28 + length);
    EXPECT_EQ(bytes_at(world().sent.data() + 16, 12 + length), message);
  }
}

TEST_F(Exchange, MessageNeedNotBeAligned) {
  open();
  const Bytes shifted = Bytes{0} + message_;
  world().replies = {kNetlink + header(7, 2, 5, 0, 0)};
  observe([&] { MSG_UserSendAndRecvMessage(shifted.data() + 1, 5, &reply_); });
  take_reply();
  EXPECT_EQ(bytes_at(world().sent.data() + 16, 16), message_);
}

TEST_F(Exchange, EveryThreadHasItsOwnKey) {
  for (uintptr_t identity : {uintptr_t{0x1234}, uintptr_t{0x7FFFFFFF}, UINTPTR_MAX - 0xFFFF}) {
    world().identity = identity;
    world().replies = {kNetlink + header(7, 2, 5, 0, 0)};
    send(message_);
    take_reply();
    const auto key = static_cast<uint32_t>(swctl::key_of_identity(identity));
    EXPECT_EQ(bytes_at(world().sent.data() + 12, 4), word(key));
    EXPECT_NE(GetSockData(key), -1);
  }
  EXPECT_EQ(thread_sockets.count, 3);
}

TEST_F(Exchange, NullMessageDoesNothing) {
  reply_ = untouched();
  const Observed observed =
      observe([&] { EXPECT_EQ(MSG_UserSendAndRecvMessage(nullptr, 5, &reply_), 0); });
  EXPECT_EQ(observed.calls, Lines{});
  EXPECT_PRINTED(observed.printed, "", "");
  EXPECT_EQ(reply_, untouched());
  EXPECT_EQ(thread_sockets.ready, 0);
}

TEST_F(Exchange, TableThatIsReadyIsNotClearedAgain) {
  thread_sockets.ready = 1;
  SetSockData(44, 0x1234);
  world().replies = {kNetlink + header(7, 2, 5, 0, 0)};
  EXPECT_EQ(system_calls(send(message_).calls).front(),
            "sendmsg(44, {16, 0, 0, 0}, 12, 32 bytes, 0) = 32");
  take_reply();
}

TEST_F(Exchange, WithoutASocketNothingIsSent) {
  world().socket_error = EPROTONOSUPPORT;
  const Observed observed = send(message_);
  EXPECT_EQ(result_, -1);
  EXPECT_EQ(observed.calls, (Lines{"lock", "unlock", "socket(16, 3, 30) = -1"}));
  EXPECT_PRINTED(observed.printed,
                 "ERROR in CreateThreadSocket:162 create socket\n"
                 "MSG_UserSendAndRecvMessage:330 ERROR to get socket!\n",
                 "socket: Protocol not supported\n");
  EXPECT_EQ(reply_, untouched());
}

TEST_F(Exchange, SocketThatCannotBeBoundIsNoSocket) {
  world().bind_error = EADDRINUSE;
  const Observed observed = send(message_);
  EXPECT_EQ(result_, -1);
  EXPECT_PRINTED(observed.printed, "MSG_UserSendAndRecvMessage:330 ERROR to get socket!\n",
                 "bind: Address already in use\n");
}

TEST_F(Exchange, FullTableIsNoSocket) {
  for (uint32_t key = 1; key <= 32; ++key) SetSockData(1, key);
  thread_sockets.ready = 1;
  const Observed observed = send(message_);
  EXPECT_EQ(result_, -1);
  EXPECT_PRINTED(observed.printed,
                 "max thread number already!\n"
                 "MSG_UserSendAndRecvMessage:330 ERROR to get socket!\n",
                 "");
  EXPECT_EQ(observed.calls, (Lines{"socket(16, 3, 30) = 70", "bind(70, {16, 0, 4660, 0}, 12) = 0",
                                   "lock", "close(70)"}));
}

TEST_F(Exchange, FailureToSendIsReported) {
  open();
  world().send_error = ECONNREFUSED;
  const Observed observed = send(message_);
  EXPECT_EQ(result_, -1);
  EXPECT_EQ(observed.calls,
            (Lines{"malloc(32)", "sendmsg(70, {16, 0, 0, 0}, 12, 32 bytes, 0) = -1", "free(32)"}));
  EXPECT_PRINTED(observed.printed, "", "sendmsg error:: Connection refused\n");
  EXPECT_EQ(reply_, untouched());
}

TEST_F(Exchange, FailedWaitIsHandedOnInSilence) {
  open();
  for (int result : {-1, -7, INT32_MIN}) {
    world().select_result = result;
    const Observed observed = send(message_);
    EXPECT_EQ(result_, result);
    EXPECT_EQ(system_calls(observed.calls).size(), 2u);
    EXPECT_EQ(observed.calls.back(), "select(71, {70}, 5 s 0 us) = " + std::to_string(result));
    EXPECT_PRINTED(observed.printed, "", "");
    EXPECT_EQ(reply_, untouched());
  }
}

TEST_F(Exchange, InterruptedWaitIsNotRepeated) {
  open();
  world().select_error = EINTR;
  const Observed observed = send(message_);
  EXPECT_EQ(result_, -1);
  EXPECT_EQ(system_calls(observed.calls), (Lines{"sendmsg(70, {16, 0, 0, 0}, 12, 32 bytes, 0) = 32",
                                                 "select(71, {70}, 5 s 0 us) = -1"}));
  EXPECT_PRINTED(observed.printed, "", "");
}

TEST_F(Exchange, TimeoutIsReportedWithBytesSocketAndKey) {
  open();
  world().select_result = 0;
  const Observed observed = send(message_, 9);
  EXPECT_EQ(result_, 0);
  EXPECT_EQ(observed.calls, (Lines{"malloc(32)", "sendmsg(70, {16, 0, 0, 0}, 12, 32 bytes, 0) = 32",
                                   "free(32)", "select(71, {70}, 9 s 0 us) = 0"}));
  EXPECT_PRINTED(observed.printed, "Receive message time out! iRet:32~ socket:0x46 iPid:0x1234\n",
                 "");
  EXPECT_EQ(reply_, untouched());
}

TEST_F(Exchange, TimeoutIsGivenInSecondsAsItIs) {
  open();
  world().select_result = 0;
  for (int32_t seconds : {0, 1, 120, -3}) {
    EXPECT_EQ(send(message_, seconds).calls.back(),
              "select(71, {70}, " + std::to_string(seconds) + " s 0 us) = 0");
  }
}

TEST_F(Exchange, WaitTakesADescriptorOfAnySize) {
  for (int descriptor : {0, 31, 32, 63, 64, 1023, 1024, 5000}) {
    world().next_descriptor = descriptor;
    world().identity = static_cast<uintptr_t>(descriptor) + 1;
    world().select_result = 0;
    const std::string number = std::to_string(descriptor);
    EXPECT_EQ(send(message_).calls.back(),
              "select(" + std::to_string(descriptor + 1) + ", {" + number + "}, 5 s 0 us) = 0");
  }
}

TEST_F(Exchange, EndOfTheSocketIsReported) {
  open();
  world().replies = {Bytes{}};
  const Observed observed = send(message_);
  EXPECT_EQ(result_, 0);
  EXPECT_PRINTED(observed.printed, "Exit.\n", "");
  EXPECT_EQ(observed.calls.back(), "free(16400)");
  EXPECT_EQ(reply_, untouched());
}

TEST_F(Exchange, FailureToReceiveIsReported) {
  open();
  world().receive_error = ENOBUFS;
  const Observed observed = send(message_);
  EXPECT_EQ(result_, -1);
  EXPECT_PRINTED(observed.printed, "Recive message error!~\n",
                 "recvmsg:: No buffer space available\n");
  EXPECT_EQ(observed.calls.back(), "free(16400)");
  EXPECT_EQ(reply_, untouched());
}

TEST_F(Exchange, SystemErrorIsReportedBeforeTheRest) {
  open();
  world().receive_error = ENOBUFS;
  EXPECT_EQ(printed_in_order([&] { MSG_UserSendAndRecvMessage(message_.data(), 5, &reply_); }),
            "recvmsg:: No buffer space available\n"
            "Recive message error!~\n");
}

TEST_F(Exchange, ReplyIsWhatItsOwnLengthSays) {
  open();
  // Four bytes came, the header says six: two zeros of the buffer follow.
  world().replies = {kNetlink + header(0xFFFF, 9, 8, 7, 6) + Bytes{1, 2, 3, 4}};
  send(message_);
  EXPECT_EQ(result_, 32);
  EXPECT_EQ(take_reply(), header(0xFFFF, 9, 8, 7, 6) + (Bytes{1, 2, 3, 4, 0, 0}));
  // Four bytes came, the header says two.
  world().replies = {kNetlink + header(1, 2, 3, 4, 2) + Bytes{1, 2, 3, 4}};
  send(message_);
  EXPECT_EQ(result_, 32);
  EXPECT_EQ(take_reply(), header(1, 2, 3, 4, 2) + (Bytes{1, 2}));
}

TEST_F(Exchange, ReplyOfOneByteIsAReply) {
  open();
  world().replies = {Bytes{0xEE}};
  send(message_);
  EXPECT_EQ(result_, 1);
  EXPECT_EQ(take_reply(), zeros(12));
}

TEST_F(Exchange, LargestReplyFillsTheBuffer) {
  open();
  const Bytes reply = header(1, 2, 3, 4, 16372) + Bytes(16372, 0x77);
  world().replies = {kNetlink + reply};
  send(message_);
  EXPECT_EQ(result_, 16400);
  EXPECT_EQ(take_reply(), reply);
}

TEST_F(Exchange, ReplyIsBelievedBeyondTheBuffer) {
  open();
  world().reply_is_oversized = true;
  for (uint32_t length : {16373u, 20000u, 1u << 20}) {
    world().replies = {kNetlink + header(1, 2, 3, 4, length) + Bytes{9}};
    const Lines calls = send(message_).calls;
    const std::string size = std::to_string(length + 12);
    EXPECT_EQ(Lines(calls.end() - 3, calls.end()),
              (Lines{"malloc(" + size + ")", "memcpy(" + size + ")", "free(16400)"}));
    EXPECT_EQ(result_, 29);
    take_reply();
  }
}

TEST_F(Exchange, LateReplyAnswersTheNextRequest) {
  open();
  world().select_result = 0;
  send(message_);
  EXPECT_EQ(result_, 0);
  world().select_result = 1;
  world().replies = {kNetlink + header(1, 2, 5, 0, 1) + Bytes{1},
                     kNetlink + header(2, 2, 5, 0, 1) + Bytes{2}};
  send(message_);
  EXPECT_EQ(take_reply(), header(1, 2, 5, 0, 1) + Bytes{1});
  send(message_);
  EXPECT_EQ(take_reply(), header(2, 2, 5, 0, 1) + Bytes{2});
}

}  // namespace
