// SPDX-License-Identifier: MIT
// Threads that are cancelled in the channel: in every call that it makes, with
// every end that the call can have.
#include <swctl/kmsg.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <set>

#include "kmsg/thread_sockets.h"
#include "scripted_world.h"

namespace {

using namespace kmsg_test;
using swctl::thread_sockets;

// What a thread does in the channel.
struct Subject {
  const char *name;
  std::function<void()> prepare;
  std::function<void()> call;
};

// How it ends if nobody cancels the thread.
struct Ending {
  const char *name;
  std::function<void()> script;
};

constexpr int32_t kIdentity = 0x1234;

void send_a_message() {
  const Bytes message = header(7, 1, 5, 0, 4) + Bytes{1, 2, 3, 4};
  void *reply = nullptr;
  MSG_UserSendAndRecvMessage(message.data(), 5, &reply);
  free(reply);
}

void has_sockets() {
  SetSockData(60, kIdentity);
  SetSockData(61, kIdentity);
  SetSockData(62, (kIdentity << 16) | 77);
}

const std::vector<Subject> &subjects() {
  static const std::vector<Subject> all = {
      {"request", [] {}, send_a_message},
      {"data request", [] {}, [] { user_send_data_to_kernel(7, "x", 1); }},
      {"clearing", [] {}, [] { InitThreadSocketData(); }},
      {"socket", [] {}, [] { GetThreadSocket(kIdentity); }},
      {"storing", [] {}, [] { SetSockData(80, 9); }},
      {"release", has_sockets, [] { DeleteThreadSocket(kIdentity); }},
      {"inner release", has_sockets, [] { SetFreeSockData(kIdentity); }},
      {"exit", has_sockets, [] { HandleThreadExit(); }},
  };
  return all;
}

const std::vector<Ending> &endings() {
  static const std::vector<Ending> all = {
      {"reply", [] { world().replies = {kNetlink + header(7, 2, 5, 0, 4) + word(1)}; }},
      {"end", [] {}},
      {"no socket", [] { world().socket_error = EMFILE; }},
      {"no bind", [] { world().bind_error = EADDRINUSE; }},
      {"no sending", [] { world().send_error = ENOBUFS; }},
      {"no waiting", [] { world().select_error = EINTR; }},
      {"time-out", [] { world().select_result = 0; }},
      {"no receiving", [] { world().receive_error = ENOMEM; }},
  };
  return all;
}

// "" is before the first call.
const std::vector<std::string> kMoments = {"",     "lock",    "calloc", "malloc",  "socket",
                                           "bind", "sendmsg", "select", "recvmsg", "close"};

class Cancel : public KmsgTest {
 protected:
  // Runs a call in a thread of its own that is cancelled at `moment`. Says
  // whether the call came to its end nevertheless.
  bool run(const std::function<void()> &call, const std::string &moment) {
    call_ = &call;
    world().cancelled_in = moment;
    world().cancelling = moment.empty();
    world().calls.clear();
    ended_ = cleaned_up_ = false;
    void *result = nullptr;
    swctl_test::printed_by([&] {
      pthread_t thread;
      ASSERT_EQ(pthread_create(&thread, nullptr, body, this), 0);
      ASSERT_EQ(pthread_join(thread, &result), 0);
    });
    calls_ = world().calls;
    cancelled_ = result == PTHREAD_CANCELED;
    return ended_;
  }
  // Descriptors that the script opened or found open, and did not close.
  std::multiset<int> open_ones(std::multiset<int> open) const {
    for (const std::string &call : calls_) {
      if (call.starts_with("socket(") && !call.ends_with("-1"))
        open.insert(atoi(call.c_str() + call.rfind(' ')));
      if (call.starts_with("close(")) open.erase(open.find(atoi(call.c_str() + 6)));
    }
    return open;
  }
  static std::multiset<int> stored() {
    std::multiset<int> sockets;
    for (const auto &slot : thread_sockets.slots) {
      EXPECT_EQ(slot.inUse == 0, slot.key == 0);
      if (slot.inUse != 0) sockets.insert(slot.socket);
    }
    return sockets;
  }
  static bool is_locked() {
    if (pthread_mutex_trylock(&thread_sockets.mutex) != 0) return true;
    pthread_mutex_unlock(&thread_sockets.mutex);
    return false;
  }

  Lines calls_;
  bool cancelled_ = false;
  bool cleaned_up_ = false;

 private:
  // What a caller has on its stack. These calls are the channel's alone: the
  // thread itself begins and ends in the real one.
  struct Caller {
    explicit Caller(bool &cleaned_up) : cleaned_up_(cleaned_up) { world().playing = true; }
    ~Caller() {
      world().playing = false;
      cleaned_up_ = true;
    }
    bool &cleaned_up_;
  };
  static void *body(void *test) {
    Cancel &self = *static_cast<Cancel *>(test);
    if (world().cancelling) pthread_cancel(pthread_self());
    soil_stack();
    const Caller caller(self.cleaned_up_);
    (*self.call_)();
    self.ended_ = true;
    pthread_testcancel();
    return nullptr;
  }

  const std::function<void()> *call_ = nullptr;
  bool ended_ = false;
};

TEST_F(Cancel, LeavesNoLockNoClosedSocketAndNoMemory) {
  int cut_short = 0;
  for (const Subject &subject : subjects()) {
    for (const Ending &ending : endings()) {
      for (const std::string &moment : kMoments) {
        SCOPED_TRACE(std::string(subject.name) + ", " + ending.name + ", in " + moment);
        begin_again();
        subject.prepare();
        ending.script();
        const std::multiset<int> before = stored();
        const bool ended = run(subject.call, moment);
        if (!ended) ++cut_short;
        EXPECT_TRUE(ended || cancelled_);
        EXPECT_TRUE(cleaned_up_) << "the stack below the channel is unwound";
        EXPECT_FALSE(is_locked());
        std::multiset<int> open = open_ones(before);
        if (world().bind_error != 0) open.erase(70);  // stays open, and in no place
        if (subject.name == std::string("storing")) open.insert(80);
        EXPECT_EQ(stored(), open);
        // The copy of the reply that every answered data request leaves.
        if (ended && subject.name == std::string("data request") && !world().allocated.empty())
          free(world().allocated.begin()->first);
        EXPECT_EQ(world().allocated.size(), 0u);
        world().allocated.clear();
      }
    }
  }
  EXPECT_GT(cut_short, 50) << "or nothing was cancelled";
}

TEST_F(Cancel, TakesEffectInTheWait) {
  run([] { user_send_data_to_kernel(7, "x", 1); }, "select");
  EXPECT_TRUE(cancelled_);
  EXPECT_EQ(calls_.back(), "free(2060)") << "the message, and no reply is waited for";
  EXPECT_EQ(system_calls(calls_).back(), "sendmsg(70, {16, 0, 0, 0}, 12, 2076 bytes, 0) = 2076");
}

TEST_F(Cancel, KeepsTheSocketForALaterThread) {
  run(send_a_message, "select");
  EXPECT_EQ(GetSockData(kIdentity), 70);
}

TEST_F(Cancel, ReleaseIsFinishedFirst) {
  has_sockets();
  EXPECT_TRUE(run([] { DeleteThreadSocket(kIdentity); }, "close"));
  EXPECT_TRUE(cancelled_) << "afterwards";
  EXPECT_EQ(calls_, (Lines{"lock", "close(60)", "close(61)", "unlock"}));
}

}  // namespace
