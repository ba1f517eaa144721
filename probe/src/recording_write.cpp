// SPDX-License-Identifier: MIT
#include <fmt/format.h>

#include "buffer.h"
#include "recording.h"

namespace swprobe {
namespace {

void add_json_values(Buffer &line, const Argument &argument, const std::vector<int64_t> &values) {
  const bool array = argument.array || values.size() != 1;
  add(line, "{}", array ? "[" : "");
  const char *between = "";
  for (const int64_t value : values) {
    add(line, "{}{}", between, value);
    between = ",";
  }
  add(line, "{}", array ? "]" : "");
}

void add_json_argument(Buffer &line, const Argument &argument) {
  add(line, "\"{}\":", argument.name);
  if (argument.null) return add(line, "null");
  add(line, "{{");
  const bool given = argument.direction != Direction::out;
  if (given) {
    add(line, "\"in\":");
    if (argument.form == Form::text) {
      std::string text;
      append_json_text(text, argument.text);
      add(line, "{}", text);
    } else {
      add_json_values(line, argument, argument.before);
    }
  }
  if (!argument.after.empty()) {
    add(line, "{}\"out\":", given ? "," : "");
    add_json_values(line, argument, argument.after);
  }
  add(line, "}}");
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
      fmt::format_to(std::back_inserter(line), "\\u{:04x}", byte);
    }
  }
  line += '"';
}

std::string recording_header(bool library) {
  return fmt::format("{{\"format\":\"{}\",\"version\":{},\"byte_order\":\"{}\"}}", kRecordingFormat,
                     library ? kLibraryVersion : kRecordingVersion, kThisByteOrder);
}

std::string recording_line(const Call &call, bool library) {
  Buffer line;
  add(line, "{{\"number\":{},\"call\":\"{}\",\"arguments\":{{", call.number, call.name);
  const char *between = "";
  for (const Argument &argument : call.arguments) {
    add(line, "{}", between);
    add_json_argument(line, argument);
    between = ",";
  }
  add(line, "}}");
  if (call.has_result) add(line, ",\"result\":{}", call.result);
  add(line, ",\"made_up\":{}", call.made_up);
  if (library) add(line, ",\"library\":{},\"depth\":{}", call.of_library, call.depth);
  add(line, "}}");
  return fmt::to_string(line);
}

}  // namespace swprobe
