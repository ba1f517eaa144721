// SPDX-License-Identifier: MIT
#include "line.h"

#include "buffer.h"

namespace swprobe {
namespace {

// An element as the unsigned number of its own width.
uint64_t bits_of(int64_t value, int width) {
  const auto bits = static_cast<uint64_t>(value);
  return width >= 8 ? bits : bits & ((uint64_t{1} << (8 * width)) - 1);
}

void add_value(Buffer &line, const Argument &argument, int64_t value) {
  if (argument.form != Form::hex) return add(line, "{}", value);
  const uint64_t bits = bits_of(value, argument.width);
  if (argument.array && argument.width == 1) return add(line, "{:02x}", bits);
  add(line, "{:#x}", bits);
}

void add_values(Buffer &line, const Argument &argument, const std::vector<int64_t> &values) {
  if (!argument.array && values.size() == 1) return add_value(line, argument, values.front());
  add(line, "[");
  const char *between = "";
  for (const int64_t value : values) {
    add(line, "{}", between);
    add_value(line, argument, value);
    between = " ";
  }
  add(line, "]");
}

void add_text(Buffer &line, const std::string &text) {
  add(line, "\"");
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (character == '\n') {
      add(line, "\\n");
    } else if (character == '"' || character == '\\') {
      add(line, "\\{}", character);
    } else if (byte < ' ' || byte == 0x7f) {
      add(line, "\\x{:02x}", byte);
    } else {
      add(line, "{}", character);
    }
  }
  add(line, "\"");
}

// False for an output that was left alone.
bool is_shown(const Argument &argument) {
  return argument.null || argument.direction != Direction::out || !argument.after.empty();
}

void add_argument(Buffer &line, const Argument &argument) {
  add(line, "{}", argument.name);
  if (argument.null) return add(line, "=null");
  if (argument.direction != Direction::out) {
    add(line, "=");
    if (argument.form == Form::text) return add_text(line, argument.text);
    add_values(line, argument, argument.before);
  }
  if (argument.after.empty()) return;
  add(line, "=>");
  add_values(line, argument, argument.after);
}

void add_result(Buffer &line, const Call &call, const char *sentence) {
  if (call.has_result && call.result_form == Form::hex) {
    add(line, " = {:#x}", static_cast<uint64_t>(call.result));
  } else if (call.has_result) {
    add(line, " = {}", call.result);
  }
  if (sentence != nullptr) add(line, " ({})", sentence);
  if (call.made_up) add(line, " !");
}

}  // namespace

std::string line_of(const Call &call, const char *sentence) {
  Buffer line;
  add(line, "{}(", call.name);
  const char *between = "";
  for (const Argument &argument : call.arguments) {
    if (!is_shown(argument)) continue;
    add(line, "{}", between);
    add_argument(line, argument);
    between = ", ";
  }
  add(line, ")");
  add_result(line, call, sentence);
  return fmt::to_string(line);
}

std::string closing_of(const Call &call, const char *sentence) {
  Buffer line;
  add(line, "}}");
  add_result(line, call, sentence);
  for (Argument argument : call.arguments) {
    if (argument.after.empty()) continue;
    argument.direction = Direction::out;
    add(line, ", ");
    add_argument(line, argument);
  }
  return fmt::to_string(line);
}

std::string question_of(Call call) {
  call.has_result = call.made_up = false;
  for (Argument &argument : call.arguments) argument.after.clear();
  return line_of(call, nullptr);
}

}  // namespace swprobe
