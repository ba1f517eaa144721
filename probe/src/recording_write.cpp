// SPDX-License-Identifier: MIT
#include "digits.h"
#include "recording.h"

namespace swprobe {
namespace {

const char *truth(bool value) {
  return value ? "true" : "false";
}

void add_json_values(std::string &line, const Argument &argument,
                     const std::vector<int64_t> &values) {
  const bool array = argument.array || values.size() != 1;
  if (array) line += '[';
  const char *between = "";
  for (const int64_t value : values) {
    line += between + std::to_string(value);
    between = ",";
  }
  if (array) line += ']';
}

void add_json_argument(std::string &line, const Argument &argument) {
  line += '"' + argument.name + "\":";
  if (argument.null) {
    line += "null";
    return;
  }
  line += '{';
  const bool given = argument.direction != Direction::out;
  if (given) {
    line += "\"in\":";
    if (argument.form == Form::text) {
      append_json_text(line, argument.text);
    } else {
      add_json_values(line, argument, argument.before);
    }
  }
  if (!argument.after.empty()) {
    line += given ? ",\"out\":" : "\"out\":";
    add_json_values(line, argument, argument.after);
  }
  line += '}';
}

}  // namespace

void append_json_text(std::string &line, std::string_view text) {
  line += '"';
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    const bool plain = byte >= ' ' && byte < 0x7f && character != '"' && character != '\\';
    if (plain) {
      line += character;
    } else {
      line += "\\u" + hex_digits(byte, 4);
    }
  }
  line += '"';
}

std::string recording_header(bool library) {
  const auto version = library ? kLibraryVersion : kRecordingVersion;
  return std::string("{\"format\":\"") + kRecordingFormat +
         "\",\"version\":" + std::to_string(version) + ",\"byte_order\":\"" + kThisByteOrder +
         "\"}";
}

std::string recording_line(const Call &call, bool library) {
  std::string line = "{\"number\":" + std::to_string(call.number) + ",\"call\":\"" + call.name +
                     "\",\"arguments\":{";
  const char *between = "";
  for (const Argument &argument : call.arguments) {
    line += between;
    add_json_argument(line, argument);
    between = ",";
  }
  line += '}';
  if (call.has_result) line += ",\"result\":" + std::to_string(call.result);
  line += std::string(",\"made_up\":") + truth(call.made_up);
  if (library)
    line += std::string(",\"library\":") + truth(call.of_library) +
            ",\"depth\":" + std::to_string(call.depth);
  line += '}';
  return line;
}

}  // namespace swprobe
