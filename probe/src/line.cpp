// SPDX-License-Identifier: MIT
#include "line.h"

#include "digits.h"

namespace swprobe {
namespace {

// An element as the unsigned number of its own width.
uint64_t bits_of(int64_t value, int width) {
  const auto bits = static_cast<uint64_t>(value);
  return width >= 8 ? bits : bits & ((uint64_t{1} << (8 * width)) - 1);
}

void add_value(std::string &line, const Argument &argument, int64_t value) {
  const uint64_t bits = bits_of(value, argument.width);
  if (argument.form != Form::hex) {
    line += std::to_string(value);
  } else if (argument.array && argument.width == 1) {
    line += hex_digits(bits, 2);
  } else {
    line += "0x" + hex_digits(bits);
  }
}

void add_values(std::string &line, const Argument &argument, const std::vector<int64_t> &values) {
  if (!argument.array && values.size() == 1) return add_value(line, argument, values.front());
  line += '[';
  const char *between = "";
  for (const int64_t value : values) {
    line += between;
    add_value(line, argument, value);
    between = " ";
  }
  line += ']';
}

void add_text(std::string &line, const std::string &text) {
  line += '"';
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (character == '\n') {
      line += "\\n";
    } else if (character == '"' || character == '\\') {
      line += {'\\', character};
    } else if (byte < ' ' || byte == 0x7f) {
      line += "\\x" + hex_digits(byte, 2);
    } else {
      line += character;
    }
  }
  line += '"';
}

// False for an output that was left alone.
bool is_shown(const Argument &argument) {
  return argument.null || argument.direction != Direction::out || !argument.after.empty();
}

void add_argument(std::string &line, const Argument &argument) {
  line += argument.name;
  if (argument.null) {
    line += "=null";
    return;
  }
  if (argument.direction != Direction::out) {
    line += '=';
    if (argument.form == Form::text) return add_text(line, argument.text);
    add_values(line, argument, argument.before);
  }
  if (argument.after.empty()) return;
  line += "=>";
  add_values(line, argument, argument.after);
}

void add_result(std::string &line, const Call &call, const char *sentence) {
  if (call.has_result && call.result_form == Form::hex) {
    line += " = 0x" + hex_digits(static_cast<uint64_t>(call.result));
  } else if (call.has_result) {
    line += " = " + std::to_string(call.result);
  }
  if (sentence != nullptr) line += std::string(" (") + sentence + ')';
  if (call.made_up) line += " !";
}

}  // namespace

std::string line_of(const Call &call, const char *sentence) {
  std::string line = call.name + '(';
  const char *between = "";
  for (const Argument &argument : call.arguments) {
    if (!is_shown(argument)) continue;
    line += between;
    add_argument(line, argument);
    between = ", ";
  }
  line += ')';
  add_result(line, call, sentence);
  return line;
}

std::string closing_of(const Call &call, const char *sentence) {
  std::string line = "}";
  add_result(line, call, sentence);
  for (Argument argument : call.arguments) {
    if (argument.after.empty()) continue;
    argument.direction = Direction::out;
    line += ", ";
    add_argument(line, argument);
  }
  return line;
}

std::string question_of(Call call) {
  call.has_result = call.made_up = false;
  for (Argument &argument : call.arguments) argument.after.clear();
  return line_of(call, nullptr);
}

}  // namespace swprobe
