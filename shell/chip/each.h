// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_EACH_H
#define SWCTL_SHELL_CHIP_EACH_H

#include <cstdint>
#include <functional>
#include <vector>

#include "chip/ports.h"
#include "fault.h"
#include "number_list.h"

namespace swsh {

// The error, which says with which numbers all had gone well before.
[[noreturn]] inline void fail_after(const CommandError &error, const std::vector<int64_t> &done) {
  if (done.empty()) throw error;
  throw with_note(error, "already done: " + number_list_text(done));
}

// Takes a step with each thing in turn; number_of() says what it is called. A
// step that throws a CommandError ends it, as fail_after() does.
template <typename Thing, typename NumberOf, typename Step>
void for_each_of(const std::vector<Thing> &things, NumberOf number_of, Step step) {
  std::vector<int64_t> done;
  try {
    for (const Thing &thing : things) {
      step(thing);
      done.push_back(number_of(thing));
    }
  } catch (const CommandError &error) {
    fail_after(error, done);
  }
}

template <typename Step>
void for_each_number(const std::vector<int64_t> &numbers, Step step) {
  for_each_of(
      numbers, [](int64_t number) { return number; }, step);
}

template <typename Step>
void for_each_port(const std::vector<Port> &ports, Step step) {
  for_each_of(
      ports, [](const Port &port) { return port.interface; }, step);
}

}  // namespace swsh

#endif
