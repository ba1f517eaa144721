// SPDX-License-Identifier: MIT
// Changing the chip from one configuration to another, whole or not at all.
#ifndef SWCTL_SHELL_CONFIG_CHANGE_H
#define SWCTL_SHELL_CONFIG_CHANGE_H

#include <swctl/l2.h>

#include <string>
#include <vector>

#include "config/state.h"

namespace swsh {

// What the chip had at a time, to be put back.
class Snapshot {
 public:
  // Throws a CommandError if the chip refuses to say.
  Snapshot(const Context &context, const Board &board);

  const State &state() const { return state_; }
  // Makes the chip as it was, and says in words what is not: empty if nothing. What the
  // platform cannot read does not count.
  std::string put_back() const;
  // The same after a step on the way to a target was refused: of what it sets, more may have
  // changed than can be read.
  std::string put_back_after(const Step &refused, const State &target) const;
  // Kinds of settings that the platform cannot read.
  std::vector<std::string> unread() const;

 private:
  std::string put_back_from(State now) const;
  std::string put_learned_back() const;

  const Context &context_;
  const Board &board_;
  State state_;
  std::vector<user_l2_addr_t> learned_;
};

// Changes what the chip has to the target. What is refused half-way is put back; the
// CommandError then says what was refused and what could not be put back.
void change_to(const State &target, const Context &context, const Board &board);
// The same from what the chip is known to have.
void change_from(const Snapshot &before, const State &target, const Context &context,
                 const Board &board);

// "port mtu, vlan 10 and 12 more"
std::string named_settings(const std::vector<std::string> &settings);

}  // namespace swsh

#endif
