// SPDX-License-Identifier: MIT
// Ctrl-C in a session cancels the running command, not the session.
#ifndef SWCTL_SHELL_INTERRUPT_H
#define SWCTL_SHELL_INTERRUPT_H

#include <chrono>
#include <csignal>
#include <initializer_list>

#include "fault.h"

namespace swsh {

// While there is one, the signal INT leaves a mark for what is running. If
// another comes within a second and nobody has taken the mark, it ends the
// program.
class Interrupts {
 public:
  Interrupts();
  ~Interrupts();
  Interrupts(const Interrupts &) = delete;
  Interrupts &operator=(const Interrupts &) = delete;

 private:
  struct sigaction before_ = {};
};

bool is_interrupted();
// The same, and takes the mark away.
bool take_interrupt();

// What an interrupted command says.
Fault interrupted();
// Takes the mark and throws interrupted(), if there is one. What is repeated
// calls it in between.
void stop_if_interrupted();

// Waits, and returns false if the wait was interrupted, whose mark it takes.
bool wait_for(std::chrono::milliseconds time);

// Blocks signals while it lives: none comes between a look at what has come
// and a ppoll() with the mask of before.
class BlockedSignals {
 public:
  explicit BlockedSignals(std::initializer_list<int> signals);
  ~BlockedSignals();
  BlockedSignals(const BlockedSignals &) = delete;
  BlockedSignals &operator=(const BlockedSignals &) = delete;

  const sigset_t *before() const { return &before_; }

 private:
  sigset_t before_;
};

}  // namespace swsh

#endif
