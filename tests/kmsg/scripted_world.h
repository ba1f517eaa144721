// SPDX-License-Identifier: MIT
// The system calls and the memory of the kernel channel, played by the test:
// what each call answers is set beforehand, and what was called is written
// down. The linker puts these in place of the real ones (--wrap).
#ifndef SWCTL_TESTS_KMSG_SCRIPTED_WORLD_H
#define SWCTL_TESTS_KMSG_SCRIPTED_WORLD_H

#include <cstdio>
#include <deque>
#include <map>
#include <unistd.h>

#include "support/library_test.h"

namespace kmsg_test {

using Bytes = std::vector<uint8_t>;
using swctl_test::Lines;
using swctl_test::Printed;

// Every call answers its result, or -1 with the error if there is one.
struct World {
  int next_descriptor = 70;
  int socket_error = 0;
  int bind_error = 0;
  int send_error = 0;
  int receive_error = 0;
  int select_result = 1;
  int select_error = 0;
  std::deque<Bytes> replies;  // one that is empty is the end of the socket
  uintptr_t identity = 0x1234;
  int pid = 77;
  uint8_t memory = 0xA5;  // what fresh memory holds
  bool out_of_memory = false;
  // Of this the library copies more than there is room for, or is to be read:
  // the copy is noted and cut short.
  const void *oversized = nullptr;
  bool reply_is_oversized = false;  // makes it the kernel message of the reply
  std::string cancelled_in;         // the call in which its thread is cancelled
  bool cancelling = false;          // that has been reached

  Bytes sent;  // the last datagram
  std::map<void *, size_t> allocated;
  Lines calls;
  bool playing = false;
};
World &world();

struct Observed {
  Printed printed;
  Lines calls;
};

// Fills the stack that the next call will use: what that leaves unset is seen.
void soil_stack();

template <typename Function>
void play(Function function) {
  soil_stack();
  world().playing = true;
  function();
  world().playing = false;
}

// Runs `function` with these calls in place of the system's.
template <typename Function>
Observed observe(Function function) {
  Observed observed;
  world().calls.clear();
  observed.printed = swctl_test::printed_by([&] { play(function); });
  observed.calls = world().calls;
  return observed;
}

// Runs `function` there and returns what it printed on both streams, in
// the order in which it did.
template <typename Function>
std::string printed_in_order(Function function) {
  testing::internal::CaptureStdout();
  const int standard_error = dup(STDERR_FILENO);
  dup2(STDOUT_FILENO, STDERR_FILENO);
  setvbuf(stdout, nullptr, _IONBF, 0);
  play(function);
  setvbuf(stdout, nullptr, _IOFBF, 0);
  dup2(standard_error, STDERR_FILENO);
  close(standard_error);
  return testing::internal::GetCapturedStdout();
}

// The calls but those of memory and mutex.
Lines system_calls(const Lines &calls);

// A fresh world over an empty table that was not cleared yet.
class KmsgTest : public testing::Test {
 protected:
  void SetUp() override { begin_again(); }
  void TearDown() override;
  static void begin_again();
};

// Ends in a child process: 0 if the work came to its end, SIGALRM if it had to
// be ended because it hangs. Several may be started before the first is asked.
class Child {
 public:
  template <typename Work>
  explicit Child(Work work) : process_(split()) {
    if (process_ == 0) {
      work();
      leave();
    }
  }
  int signal();

 private:
  static int split();
  [[noreturn]] static void leave();
  int process_;
};

// A reply's netlink header: nothing of it is looked at.
inline const Bytes kNetlink = Bytes(16, 0xEE);

// Numbers as the channel lays them down: in the order of the host.
Bytes half_word(uint16_t number);
Bytes word(uint32_t number);
Bytes operator+(Bytes left, const Bytes &right);
Bytes header(uint16_t id, uint16_t direction, uint16_t type, uint16_t reserved, uint32_t length);
Bytes zeros(size_t count);
Bytes bytes_at(const void *address, size_t count);

}  // namespace kmsg_test

#endif
