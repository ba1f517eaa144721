// SPDX-License-Identifier: MIT
// One line of a recording, from JSON.
#include <cstdint>

#include "number.h"
#include "os/json.h"
#include "place.h"
#include "recording.h"
#include "wrong.h"

namespace swprobe {
namespace {

using os::Json;

const Json &member(const Json &line, const char *name) {
  const auto found = line.find(name);
  if (found == line.end()) wrong(std::string("'") + name + "' is missing");
  return *found;
}

const Json &object(const Json &value, const std::string &name) {
  if (!value.is_object()) wrong("'" + name + "' is not a JSON object");
  return value;
}

const std::string &text_of(const Json &value, const std::string &name) {
  if (!value.is_string()) wrong("'" + name + "' is not a text");
  return value.get_ref<const std::string &>();
}

const std::string &text_in(const Json &line, const char *name) {
  return text_of(member(line, name), name);
}

bool flag_in(const Json &line, const char *name) {
  const Json &value = member(line, name);
  if (!value.is_boolean()) wrong("'" + std::string(name) + "' is neither true nor false");
  return value.get<bool>();
}

// The reverse of what the writer does to bytes outside ASCII.
std::string bytes_of(const std::string &utf8) {
  std::string bytes;
  for (size_t i = 0; i < utf8.size(); ++i) {
    auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte >= 0xc0 && i + 1 < utf8.size()) {
      const auto low = static_cast<unsigned char>(utf8[++i]);
      byte = static_cast<unsigned char>((byte & 0x03) << 6 | (low & 0x3f));
    }
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

// Converting a number with a fraction, or one beyond 64 bits, has no meaning.
int64_t number_of(const Json &value, const std::string &name, size_t width) {
  if (!value.is_number_integer()) wrong("'" + name + "' is not a whole number");
  const bool beyond = value.is_number_unsigned() && value.get<uint64_t>() > INT64_MAX;
  if (beyond || !fits(value.get<int64_t>(), width)) {
    wrong("'" + name + "' does not fit into " + std::to_string(8 * width) + " bits");
  }
  return value.get<int64_t>();
}

std::vector<int64_t> values_of(const Json &value, const std::string &name, size_t width) {
  if (!value.is_array()) return {number_of(value, name, width)};
  std::vector<int64_t> values;
  for (const Json &element : value) values.push_back(number_of(element, name, width));
  return values;
}

// An address is null as a whole: the name is then the record's own.
Argument null_argument(const Site &site, const std::string &name) {
  for (const ArgumentInfo &info : site.arguments) {
    if (info.name != name) continue;
    const bool record = info.is_record();
    const int width = record ? 0 : static_cast<int>(info.fields.front().width);
    return {name,
            info.direction,
            record ? Form::dec : info.form,
            width,
            !record && info.array,
            true,
            {},
            {},
            {}};
  }
  wrong("'" + std::string(site.name) + "' has no argument '" + name + "'");
}

Argument argument_of(const Site &site, const std::string &name, const Json &value) {
  if (value.is_null()) return null_argument(site, name);
  const auto known = find_argument(site, name);
  if (!known) wrong("'" + std::string(site.name) + "' has no argument '" + name + "'");
  const bool record = known->info->is_record();
  object(value, name);
  // An address may come from a machine with wider ones.
  const size_t width = known->field->is_address ? sizeof(int64_t) : known->field->width;
  Argument argument{name,
                    known->info->direction,
                    record ? known->field->form : known->info->form,
                    static_cast<int>(width),
                    record ? known->field->array : known->info->array,
                    false,
                    {},
                    {},
                    {}};
  if (argument.form == Form::text) {
    argument.text = bytes_of(text_of(member(value, "in"), name));
  } else if (argument.direction != Direction::out) {
    argument.before = values_of(member(value, "in"), name, width);
  }
  if (value.contains("out")) argument.after = values_of(value["out"], name, width);
  return argument;
}

Call call_in(const Json &line) {
  Call call{};
  call.number = static_cast<uint64_t>(number_of(member(line, "number"), "number", sizeof(int64_t)));
  call.name = text_in(line, "call");
  const Site *site = find_call(call.name);
  if (site == nullptr) wrong("no call is named '" + call.name + "'");
  call.has_result = site->has_result;
  call.of_library = site->layer == Layer::library;
  if (call.has_result) {
    const size_t width = call.of_library ? sizeof(int64_t) : sizeof(int32_t);
    call.result = number_of(member(line, "result"), "result", width);
  }
  call.result_form = site->result_form;
  call.made_up = flag_in(line, "made_up");
  if (line.contains("depth"))
    call.depth = static_cast<int>(number_of(line["depth"], "depth", sizeof(int32_t)));
  for (const auto &[name, value] : object(member(line, "arguments"), "arguments").items()) {
    call.arguments.push_back(argument_of(*site, name, value));
  }
  return call;
}

Json parsed(const std::string &line) {
  try {
    Json json = os::parse_json(line);
    if (!json.is_object()) wrong("not a JSON object");
    return json;
  } catch (const Json::parse_error &error) {
    if (error.byte > line.size()) wrong("the line breaks off");
    wrong("character " + std::to_string(error.byte) + " is not JSON");
  }
}

}  // namespace

Call call_of(const std::string &line) {
  return call_in(parsed(line));
}

bool from_other_order(const std::string &header) {
  const Json line = parsed(header);
  if (member(line, "format") != kRecordingFormat) wrong("not a recording of calls");
  const Json &version = member(line, "version");
  if (version != kRecordingVersion && version != kLibraryVersion) {
    wrong("version " + os::json_text(version) + " of the format is not known");
  }
  const Json order = line.value("byte_order", Json(kThisByteOrder));
  if (order != kLittle && order != kBig)
    wrong("byte order " + os::json_text(order) + " is not known");
  return order != kThisByteOrder;
}

}  // namespace swprobe
