// SPDX-License-Identifier: MIT
// The sockets of threads: made, found and released.
#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>

#include "kmsg/thread_sockets.h"
#include "scripted_world.h"

namespace {

using namespace kmsg_test;
using swctl::thread_sockets;

constexpr int32_t kKey = 0x1234;
constexpr const char *kNoProtocol = "socket: Protocol not supported\n";

class Sockets : public KmsgTest {};

TEST_F(Sockets, IsARawNetlinkSocketBoundToTheKey) {
  const Observed observed = observe([] { EXPECT_EQ(CreateThreadSocket(kKey), 70); });
  EXPECT_EQ(observed.calls, (Lines{"socket(16, 3, 30) = 70", "bind(70, {16, 0, 4660, 0}, 12) = 0",
                                   "lock", "unlock"}));
  EXPECT_PRINTED(observed.printed, "", "");
  EXPECT_EQ(GetSockData(kKey), 70);
  EXPECT_EQ(thread_sockets.count, 1);
}

TEST_F(Sockets, LargestKeyIsGood) {
  const Observed observed = observe([] { EXPECT_EQ(CreateThreadSocket(INT32_MAX), 70); });
  EXPECT_EQ(observed.calls[1], "bind(70, {16, 0, 2147483647, 0}, 12) = 0");
}

TEST_F(Sockets, DescriptorZeroIsAGoodOne) {
  world().next_descriptor = 0;
  observe([] { EXPECT_EQ(CreateThreadSocket(kKey), 0); });
  const Observed again = observe([] { EXPECT_EQ(GetThreadSocket(kKey), 0); });
  EXPECT_EQ(again.calls, Lines{});
  EXPECT_EQ(thread_sockets.count, 1);
}

TEST_F(Sockets, KeyThatIsNotPositiveIsRefusedInSilence) {
  // A place with such a key is not asked for either.
  SetSockData(9, static_cast<uint32_t>(-5));
  for (int32_t key : {0, -1, -5, INT32_MIN}) {
    const Observed observed = observe([key] {
      EXPECT_EQ(CreateThreadSocket(key), -1);
      EXPECT_EQ(GetThreadSocket(key), -1);
    });
    EXPECT_EQ(observed.calls, Lines{}) << key;
    EXPECT_PRINTED(observed.printed, "", "");
  }
}

TEST_F(Sockets, SocketThatCannotBeOpenedIsReported) {
  world().socket_error = EPROTONOSUPPORT;
  const Observed observed = observe([] { EXPECT_EQ(CreateThreadSocket(kKey), -1); });
  EXPECT_EQ(observed.calls, (Lines{"socket(16, 3, 30) = -1"}));
  EXPECT_PRINTED(observed.printed, "ERROR in CreateThreadSocket:162 create socket\n", kNoProtocol);
  EXPECT_EQ(thread_sockets.count, 0);
}

// Standard output is not buffered and has no room, so that printing fails too.
TEST_F(Sockets, ErrorIsThatOfTheSocketWhateverPrintingDoes) {
  world().socket_error = EMFILE;
  testing::internal::CaptureStderr();
  fflush(stdout);
  const int standard_output = dup(STDOUT_FILENO);
  const int full = open("/dev/full", O_WRONLY);
  dup2(full, STDOUT_FILENO);
  setvbuf(stdout, nullptr, _IONBF, 0);
  play([] { EXPECT_EQ(CreateThreadSocket(kKey), -1); });
  clearerr(stdout);
  setvbuf(stdout, nullptr, _IOFBF, 0);
  dup2(standard_output, STDOUT_FILENO);
  close(standard_output);
  close(full);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "socket: Too many open files\n");
}

TEST_F(Sockets, SocketThatCannotBeBoundStaysOpen) {
  world().bind_error = EADDRINUSE;
  const Observed observed = observe([] { EXPECT_EQ(CreateThreadSocket(kKey), -1); });
  EXPECT_EQ(observed.calls,
            (Lines{"socket(16, 3, 30) = 70", "bind(70, {16, 0, 4660, 0}, 12) = -1"}));
  EXPECT_PRINTED(observed.printed, "", "bind: Address already in use\n");
  EXPECT_EQ(thread_sockets.count, 0);
  EXPECT_EQ(GetSockData(kKey), -1);
}

TEST_F(Sockets, ThirtyThirdIsClosedAndLeavesTheLock) {
  observe([] {
    for (int32_t key = 1; key <= 32; ++key) ASSERT_EQ(GetThreadSocket(key), 69 + key);
  });
  const Observed observed = observe([] { EXPECT_EQ(GetThreadSocket(33), -1); });
  EXPECT_EQ(observed.calls, (Lines{"socket(16, 3, 30) = 102", "bind(102, {16, 0, 33, 0}, 12) = 0",
                                   "lock", "close(102)"}));
  EXPECT_PRINTED(observed.printed, "max thread number already!\n", "");
  EXPECT_EQ(GetSockData(33), -1);
  EXPECT_EQ(GetThreadSocket(32), 101) << "who has a socket keeps it";
}

TEST_F(Sockets, SecondRequestFindsTheFirstSocket) {
  const Observed first = observe([] { EXPECT_EQ(GetThreadSocket(kKey), 70); });
  EXPECT_EQ(first.calls, (Lines{"socket(16, 3, 30) = 70", "bind(70, {16, 0, 4660, 0}, 12) = 0",
                                "lock", "unlock"}));
  const Observed second = observe([] { EXPECT_EQ(GetThreadSocket(kKey), 70); });
  EXPECT_EQ(second.calls, Lines{});
  EXPECT_EQ(thread_sockets.count, 1);
}

TEST_F(Sockets, FailureToMakeOneIsHandedOn) {
  world().socket_error = EMFILE;
  const Observed observed = observe([] { EXPECT_EQ(GetThreadSocket(kKey), -1); });
  EXPECT_PRINTED(observed.printed, "ERROR in CreateThreadSocket:162 create socket\n",
                 "socket: Too many open files\n");
}

TEST_F(Sockets, SystemErrorIsReportedBehindTheLine) {
  world().socket_error = EMFILE;
  EXPECT_EQ(printed_in_order([] { GetThreadSocket(kKey); }),
            "ERROR in CreateThreadSocket:162 create socket\n"
            "socket: Too many open files\n");
}

TEST_F(Sockets, AfterReleaseANewOneIsMade) {
  observe([] { GetThreadSocket(kKey); });
  const Observed observed = observe([] {
    DeleteThreadSocket(kKey);
    EXPECT_EQ(GetThreadSocket(kKey), 71);
  });
  EXPECT_EQ(observed.calls, (Lines{"lock", "close(70)", "unlock", "socket(16, 3, 30) = 71",
                                   "bind(71, {16, 0, 4660, 0}, 12) = 0", "lock", "unlock"}));
  EXPECT_EQ(thread_sockets.slots[0].socket, 71);
}

TEST_F(Sockets, ExitKeyIsMadeOfThreadAndProcess) {
  SetSockData(40, (0x1234u << 16) | 0x56);
  SetSockData(41, 0x1234);
  const Observed observed = observe([] { EXPECT_EQ(__HandleThreadExit(0x56, 0x1234), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "close(40)", "unlock"}));
  EXPECT_EQ(GetSockData(0x1234), 41);
}

TEST_F(Sockets, ExitKeyDropsTheUpperHalfOfTheThread) {
  SetSockData(40, 0x56781234u);
  // The process id is not cut: its upper half meets the thread, bit by bit.
  SetSockData(41, 0x00030001u);
  const Observed observed = observe([] {
    EXPECT_EQ(__HandleThreadExit(0x1234, 0xABCD5678u), -1);
    EXPECT_EQ(__HandleThreadExit(0x00020001, 3), -1);
  });
  EXPECT_EQ(observed.calls, (Lines{"lock", "close(40)", "unlock", "lock", "close(41)", "unlock"}));
}

TEST_F(Sockets, ExitOfTheCallingThreadUsesItsProcessAndIdentity) {
  SetSockData(40, (0x1234u << 16) | 77);
  const Observed observed = observe([] { EXPECT_EQ(HandleThreadExit(), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "close(40)", "unlock"}));
}

TEST_F(Sockets, ChildProcessFindsTheSocketOfItsParent) {
  observe([] { GetThreadSocket(kKey); });
  Child child([] {
    world().calls.clear();
    if (GetThreadSocket(kKey) != 70 || !world().calls.empty()) abort();
  });
  EXPECT_EQ(child.signal(), 0);
}

// The low half of the identity itself, and not of the key that it is folded to.
TEST_F(Sockets, ExitKeyIsMadeOfTheIdentityAsItIs) {
  const uintptr_t identities[] = {0x80005678u, static_cast<uintptr_t>(0x7F1234569ABCull)};
  for (const uintptr_t identity : identities) {
    world().identity = identity;
    SetSockData(40, (static_cast<uint32_t>(identity) << 16) | 77);
    const Observed observed = observe([] { EXPECT_EQ(HandleThreadExit(), -1); });
    EXPECT_EQ(observed.calls, (Lines{"lock", "close(40)", "unlock"})) << identity;
  }
}

TEST_F(Sockets, ExitDoesNotFindTheSocketOfTheChannel) {
  observe([] { GetThreadSocket(static_cast<int32_t>(world().identity)); });
  const Observed observed = observe([] { EXPECT_EQ(HandleThreadExit(), -1); });
  EXPECT_EQ(observed.calls, (Lines{"lock", "unlock"}));
  EXPECT_EQ(GetSockData(kKey), 70);
}

}  // namespace
