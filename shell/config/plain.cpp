// SPDX-License-Identifier: MIT
#include "config/plain.h"

#include <memory>

#include "command/value.h"
#include "number_list.h"
#include "objects/registry.h"
#include "run/words.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kIdMark[] = "%";
constexpr char kValueMark[] = "@";
constexpr int64_t kInterfaceBits = 32;

// A pattern such as "storm set % type 2 rate @" against the command table.
struct Pattern {
  std::string command;  // "storm set"
  std::string id;       // name of the parameter; empty: one for the unit
  std::string value;
  Type type;  // of the value
  bool lists = false;
  bool has_ports = false;  // the IDs are interfaces
  std::vector<std::pair<std::string, int64_t>> fixed;
};

const Node *child_of(const Node &node, const std::string &word) {
  for (const Node &child : node.children)
    if (child.name == word) return &child;
  return nullptr;
}

void place(Pattern &pattern, const Parameter &parameter, const std::string &word) {
  if (word == kIdMark) {
    pattern.id = parameter.name;
    pattern.has_ports = parameter.type.kind == Kind::interfaces;
    pattern.lists = parameter.type.kind == Kind::interfaces || parameter.type.kind == Kind::numbers;
  } else if (word == kValueMark) {
    pattern.value = parameter.name;
    pattern.type = parameter.type;
  } else {
    pattern.fixed.emplace_back(parameter.name, parse_value(parameter.type, word).argument.number);
  }
}

Pattern pattern_of(const std::string &text) {
  Pattern pattern;
  const std::vector<std::string> words = split_words(text).words;
  const Node *node = &command_table();
  size_t at = 0;
  for (; node->run == nullptr; ++at) {
    node = child_of(*node, words.at(at));
    pattern.command += (at == 0 ? "" : " ") + node->name;
  }
  size_t positional = 0;
  while (at < words.size()) {
    const Parameter *keyword = nullptr;
    for (const Parameter &each : node->keywords)
      if (each.name == words[at]) keyword = &each;
    if (keyword == nullptr) {
      place(pattern, node->positional.at(positional++), words[at++]);
    } else {
      place(pattern, *keyword, words.at(at + 1));
      at += 2;
    }
  }
  return pattern;
}

std::string replaced(std::string text, const std::string &mark, const std::string &by) {
  const size_t at = text.find(mark);
  return at == std::string::npos ? text : text.replace(at, mark.size(), by);
}

bool fits(const Pattern &pattern, const Statement &statement) {
  for (const auto &[name, number] : pattern.fixed)
    if (!statement.arguments.has(name) || statement.arguments.number(name) != number) return false;
  return statement.arguments.has(pattern.value);
}

std::vector<int64_t> ids_given(const Pattern &pattern, const std::vector<int64_t> &all,
                               Statement &statement) {
  if (pattern.id.empty() || !statement.arguments.has(pattern.id)) return all;
  if (pattern.has_ports) return statement.take_ports(pattern.id);
  const Argument &given = *statement.take(pattern.id);
  return pattern.lists ? given.numbers : std::vector<int64_t>{given.number};
}

}  // namespace

std::optional<std::string> value_word(const Type &type, int64_t value) {
  switch (type.kind) {
    case Kind::choice:
      for (const Choice &each : type.choices)
        if (each.value == value) return each.word;
      return std::nullopt;
    case Kind::choices: {
      std::vector<std::string> words;
      for (const Choice &each : type.choices) {
        if ((value & each.value) != 0) words.push_back(each.word);
        value &= ~each.value;
      }
      if (value != 0 || words.empty()) return std::nullopt;
      return join(words, ",");
    }
    case Kind::interfaces:
      if (value != 0) return number_list_text(mask_interfaces(value));
      if (type.none) return kNoPorts;
      return std::nullopt;
    case Kind::bandwidth: return std::to_string(value) + "kbit";
    default: break;
  }
  if (value < type.low || value > type.high) return std::nullopt;
  return std::to_string(value);
}

int64_t value_given(const Type &type, const Argument &argument, const Board &board) {
  if (type.kind == Kind::interfaces) {
    const auto &interfaces = argument.all ? board.front_interfaces() : argument.numbers;
    board.expect(interfaces);
    return interface_mask(interfaces);
  }
  return argument.number - argument.number % type.step;
}

int64_t interface_mask(const std::vector<int64_t> &interfaces) {
  int64_t mask = 0;
  for (const int64_t interface : interfaces) mask |= int64_t{1} << interface;
  return mask;
}

std::vector<int64_t> mask_interfaces(int64_t mask) {
  std::vector<int64_t> interfaces;
  for (int64_t bit = 0; bit < kInterfaceBits; ++bit)
    if ((mask >> bit & 1) != 0) interfaces.push_back(bit);
  return interfaces;
}

std::vector<int64_t> numbers_to(int64_t last) {
  std::vector<int64_t> numbers;
  for (int64_t number = 0; number <= last; ++number) numbers.push_back(number);
  return numbers;
}

std::function<void(const Change &, Commands &)> change_by(const std::string &command) {
  return [command](const Change &change, Commands &commands) {
    commands.push_back(replaced(replaced(command, kIdMark, change.ids), kValueMark, *change.to));
  };
}

SettingKind plain_kind(const Plain &plain) {
  const auto pattern = std::make_shared<const Pattern>(pattern_of(plain.command));
  const std::vector<int64_t> ids = pattern->id.empty() ? std::vector<int64_t>{0} : plain.ids;
  const Content usual = value_word(pattern->type, plain.usual);
  SettingKind kind;
  kind.object = plain.command.substr(0, plain.command.find(' '));
  kind.name = plain.name;
  kind.needs = plain.needs;
  kind.on_unit_zero = plain.on_unit_zero;
  kind.merges = pattern->lists;
  kind.commands = {pattern->command};
  kind.usual = [usual](const Id &) { return usual; };
  kind.read = [pattern, ids, read = plain.read](SettingReader &reader) {
    for (const int64_t id : ids) {
      const int64_t value = read(reader, id);
      const Content word = value_word(pattern->type, value);
      if (word) {
        reader.put({id}, word);
      } else {
        reader.leave_out(pattern->id.empty() ? "" : std::to_string(id),
                         "no command sets it to " + std::to_string(value));
      }
    }
  };
  kind.take = [pattern, ids, reads_as = plain.reads_as](Statement &statement, Draft &draft) {
    if (!fits(*pattern, statement)) return false;
    for (const auto &[name, number] : pattern->fixed) statement.take(name);
    const Argument &argument = *statement.take(pattern->value);
    const int64_t value = reads_as(value_given(pattern->type, argument, statement.board));
    for (const int64_t id : ids_given(*pattern, ids, statement))
      draft.put({id}, value_word(pattern->type, value));
    return true;
  };
  kind.change = change_by(plain.command);
  return kind;
}

}  // namespace swsh
