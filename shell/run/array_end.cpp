// SPDX-License-Identifier: MIT
#include "run/array_end.h"

#include <cerrno>
#include <unistd.h>

namespace swsh {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

volatile sig_atomic_t array_descriptor = -1;
volatile sig_atomic_t held = 0;
volatile sig_atomic_t waiting = 0;  // a signal that came while held

// The signal has its default action again: it ends the program.
void close_array(int signal) {
  constexpr char kEnd[] = "]\n";
  const ssize_t written = write(array_descriptor, kEnd, sizeof kEnd - 1);
  static_cast<void>(written);  // there is nobody left to tell
  raise(signal);
}

void on_signal(int signal) {
  const int error = errno;
  if (held != 0) {
    waiting = signal;
  } else {
    close_array(signal);
  }
  errno = error;
}

}  // namespace

ArrayEnd::ArrayEnd(int descriptor) {
  array_descriptor = descriptor;
  struct sigaction action = {};
  action.sa_handler = on_signal;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
  for (const int signal : kSignals) {
    struct sigaction &before = before_[signal];
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
}

ArrayEnd::~ArrayEnd() {
  for (const auto &[signal, before] : before_) sigaction(signal, &before, nullptr);
}

ArrayEnd::Hold::Hold() {
  held = 1;
}

ArrayEnd::Hold::~Hold() {
  held = 0;
  if (waiting != 0) close_array(waiting);
}

}  // namespace swsh
