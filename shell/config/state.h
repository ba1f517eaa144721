// SPDX-License-Identifier: MIT
// A whole configuration: the settings that differ from power-on.
#ifndef SWCTL_SHELL_CONFIG_STATE_H
#define SWCTL_SHELL_CONFIG_STATE_H

#include <set>
#include <string>
#include <vector>

#include "config/setting.h"

namespace swsh {

struct State {
  explicit State(const Board &board) : contents(kinds(board).size()) {}

  std::vector<Contents> contents;  // by kind
  std::vector<Unread> unread;
  std::set<size_t> unread_kinds;
};

// What the chip has. `object` is the one to read; empty for all. Throws a CommandError
// if the chip refuses.
State read_state(const Context &context, const Board &board, const std::string &object = "");

// A command of a plan, and whose setting it changes.
struct Step {
  size_t kind;
  std::string command;
};

// The commands that make one configuration another, in an order that loads.
std::vector<Step> plan(const State &from, const State &to, const Board &board);

// How many settings differ, and which: "port mtu", "vlan 10".
std::vector<std::string> differences(const State &one, const State &other, const Board &board);

}  // namespace swsh

#endif
