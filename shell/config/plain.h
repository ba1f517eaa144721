// SPDX-License-Identifier: MIT
// Settings that are one value of one command each: most of them.
#ifndef SWCTL_SHELL_CONFIG_PLAIN_H
#define SWCTL_SHELL_CONFIG_PLAIN_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/setting.h"

namespace swsh {

// A value as it is written for a parameter of the type; nothing if it has no
// word. Of a list of interfaces the value is a mask with a bit for each.
std::optional<std::string> value_word(const Type &type, int64_t value);
int64_t value_given(const Type &type, const Argument &argument, const Board &board);

int64_t interface_mask(const std::vector<int64_t> &interfaces);
std::vector<int64_t> mask_interfaces(int64_t mask);

struct Plain {
  std::string name;
  // With % for what is set and @ for the value: "port set % mtu @". Without %
  // there is one setting for the unit.
  std::string command;
  std::vector<int64_t> ids;
  std::function<int64_t(const SettingReader &, int64_t)> read;
  int64_t usual;
  std::vector<const char *> needs = {};
  bool on_unit_zero = false;
  // A value that the chip does not tell from another one reads as that.
  int64_t (*reads_as)(int64_t) = [](int64_t value) { return value; };
};

// The command that brings about a change: such a command as above, whose value may be
// several words.
std::function<void(const Change &, Commands &)> change_by(const std::string &command);

// `words` are of the object that the command begins with.
SettingKind plain_kind(const Plain &plain);

std::vector<int64_t> numbers_to(int64_t last);

}  // namespace swsh

#endif
