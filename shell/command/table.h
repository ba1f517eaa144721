// SPDX-License-Identifier: MIT
// The form of the command table. Everything the shell knows about its commands
// is in such a table: parsing, help, completion and error messages are
// drawn from it.
#ifndef SWCTL_SHELL_COMMAND_TABLE_H
#define SWCTL_SHELL_COMMAND_TABLE_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "output/record.h"
#include "output/wrap.h"

namespace swsh {

enum class Kind {
  number,      // decimal or 0x..., from low to high
  numbers,     // 1-4,7
  interface,   // one logical interface
  interfaces,  // a list of them
  choice,      // one of the choices, written in full
  mac,         // 02:00:5e:00:00:01
  choices,     // some of them with commas between, as the OR of their values
  bytes,       // 0a0b0c, at most high of them
  bandwidth,   // kbit/s, written as 64kbit, 10mbit or 1gbit
  text,        // any word
  flag,        // no value: the keyword itself says it
};

struct Choice {
  std::string word;
  int64_t value;
  std::string help;
};

struct Type {
  Kind kind = Kind::text;
  int64_t low = 0;
  int64_t high = 0;
  std::string unit;  // of a number, for help and messages
  std::vector<Choice> choices;
  int64_t step = 1;   // of a number: what lies between two steps becomes the lower one
  bool none = false;  // of interfaces: the word "none" is a list too
};

// The word of a value, or the number itself if it has none: as text, and as
// what a record holds.
std::string word_for(const std::vector<Choice> &choices, int64_t value);
Value word_value(const std::vector<Choice> &choices, int64_t value);

Type number(int64_t low, int64_t high, std::string unit = "");
Type numbers(int64_t low, int64_t high);
// Front interfaces; lowest is 0 where the CPU has its place too.
Type interface_number(int64_t lowest = 1);
Type interface_list(int64_t lowest = 1);
// The same with "none" for an empty list.
Type interface_list_or_none(int64_t lowest = 1);
Type choice(std::vector<Choice> choices);
Type choice_list(std::vector<Choice> choices);
// Up to `most` bytes in hexadecimal.
Type bytes(int64_t most);
Type bandwidth(int64_t low, int64_t high);
// The number or rate in the steps that the chip has; but for 0, none is below the
// first one.
Type stepped(Type type, int64_t step);
Type on_off();
Type mac_address();
Type text();
Type flag();

struct Parameter {
  std::string name;  // upper case for a positional one, the keyword otherwise
  Type type;
  std::string help;
  bool required = false;
};

// One that a command cannot do without.
Parameter required(std::string name, Type type, std::string help);

// The place PORTS: without it, all front ports are shown.
Parameter ports_to_show();
Parameter ports_to_change();

// What a parameter was given.
struct Argument {
  std::string word;
  int64_t number = 0;            // number, interface, the value of a choice
  std::vector<int64_t> numbers;  // of a list; the six bytes of an address
  bool all = false;              // of interfaces: all front ports that there are
};

// The lists of interfaces that are words.
inline constexpr char kAllPorts[] = "all";
inline constexpr char kNoPorts[] = "none";

// A command's arguments by parameter name. The walker has checked them
// against the table, so a required one is there.
class Arguments {
 public:
  void set(const std::string &name, Argument argument) { given_[name] = std::move(argument); }
  bool has(const std::string &name) const { return given_.contains(name); }
  const Argument &at(const std::string &name) const { return given_.at(name); }
  int64_t number(const std::string &name) const { return given_.at(name).number; }
  // The number in the width in which a call takes it.
  uint32_t u32(const std::string &name) const { return static_cast<uint32_t>(number(name)); }
  int32_t i32(const std::string &name) const { return static_cast<int32_t>(number(name)); }
  const std::string &word(const std::string &name) const { return given_.at(name).word; }
  const std::vector<int64_t> &numbers(const std::string &name) const {
    return given_.at(name).numbers;
  }

 private:
  std::map<std::string, Argument> given_;
};

// What a command is told besides its arguments.
struct Context {
  uint32_t unit = 0;
  // Shows a record at once, for a command that goes on and on; empty where
  // answers are gathered before they are shown.
  std::function<void(const Record &)> emit = {};
  size_t width = kUsualWidth;  // columns for text
  bool may_exist = false;      // what a command makes may be so already
};

using Handler = Answer (*)(const Arguments &, const Context &);

// A word of the command tree: either it leads to more words (children) or it
// is a command (run). A command's positional parameters come first, in order,
// the required ones before the optional ones; then its keywords in any order.
struct Node {
  std::string name;
  std::string help;  // one line
  std::vector<Node> children = {};
  std::vector<Parameter> positional = {};
  std::vector<Parameter> keywords = {};
  bool needs_keyword = false;  // at least one of them
  std::string details = {};    // more lines for the command's own help
  bool needs_platform = true;  // of an object: its commands call the platform
  Handler run = nullptr;
};

}  // namespace swsh

#endif
