// SPDX-License-Identifier: MIT
#include <swctl/platform/field_records.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "number.h"
#include "place.h"
#include "recording.h"

namespace swprobe {
namespace {

using Json = nlohmann::ordered_json;

[[noreturn]] void wrong(const std::string &what) {
  throw std::runtime_error(what);
}

const Json &member(const Json &line, const char *name) {
  const auto found = line.find(name);
  if (found == line.end()) wrong(std::string("'") + name + "' is missing");
  return *found;
}

const Json &object(const Json &value, const std::string &name) {
  if (!value.is_object()) wrong("'" + name + "' is not a JSON object");
  return value;
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
  Argument argument{name,
                    known->info->direction,
                    record ? known->field->form : known->info->form,
                    static_cast<int>(known->field->width),
                    record ? known->field->array : known->info->array,
                    false,
                    {},
                    {},
                    {}};
  if (argument.form == Form::text) {
    argument.text = bytes_of(member(value, "in").get<std::string>());
  } else if (argument.direction != Direction::out) {
    argument.before = values_of(member(value, "in"), name, known->field->width);
  }
  if (value.contains("out")) {
    argument.after = values_of(value["out"], name, known->field->width);
  }
  return argument;
}

Call call_of(const Json &line) {
  Call call{};
  call.number = static_cast<uint64_t>(number_of(member(line, "number"), "number", sizeof(int64_t)));
  call.name = member(line, "call").get<std::string>();
  const Site *site = find_call(call.name);
  if (site == nullptr) wrong("no call is named '" + call.name + "'");
  call.has_result = site->has_result;
  if (call.has_result) {
    call.result = number_of(member(line, "result"), "result", sizeof(int32_t));
  }
  call.made_up = member(line, "made_up").get<bool>();
  for (const auto &[name, value] : object(member(line, "arguments"), "arguments").items()) {
    call.arguments.push_back(argument_of(*site, name, value));
  }
  return call;
}

// Whether the recording comes from a machine of the other byte order.
bool read_header(const Json &line) {
  if (member(line, "format") != kRecordingFormat) wrong("not a recording of calls");
  const Json &version = member(line, "version");
  if (version != kRecordingVersion) {
    wrong("version " + version.dump() + " of the format is not known");
  }
  const Json order = line.value("byte_order", Json(kThisByteOrder));
  if (order != kLittle && order != kBig) wrong("byte order " + order.dump() + " is not known");
  return order != kThisByteOrder;
}

// These take numbers, and bitmaps of words, as bytes in the machine's order;
// addresses of Ethernet and IPv6, and the match field of IP protocols, are
// bytes in an order of their own.
bool takes_numbers_as_bytes(const Call &call) {
  if (call.name == "rtk_acl_ruleEntryField_write")
    return call.in("field") != CHIP_ACL_FIELD_IP_PROTOCOL;
  return call.name == "adp_fp_add_entity_qualify" || call.name == "adp_fp_add_entity_action";
}

void turn(std::vector<int64_t> &bytes) {
  constexpr size_t kWord = 4;
  const size_t size = bytes.size();
  if (size != 2 && size != kWord && size != sizeof(user_pbmp_t)) return;
  const auto each = static_cast<ptrdiff_t>(std::min(size, kWord));
  for (auto at = bytes.begin(); at != bytes.end(); at += each) std::reverse(at, at + each);
}

void turn_bytes(Call &call) {
  if (!takes_numbers_as_bytes(call)) return;
  for (Argument &argument : call.arguments)
    if (argument.array && argument.width == 1) turn(argument.before);
}

}  // namespace

std::vector<Call> read_recording(const std::string &path) {
  std::ifstream file(path);
  if (!file) wrong("cannot read '" + path + "': " + std::strerror(errno));
  std::vector<Call> calls;
  bool from_other_order = false;
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    try {
      const Json json = Json::parse(line);
      if (!json.is_object()) wrong("not a JSON object");
      if (number == 1) {
        from_other_order = read_header(json);
      } else {
        calls.push_back(call_of(json));
        if (from_other_order) turn_bytes(calls.back());
      }
    } catch (const std::exception &error) {
      wrong(path + ":" + std::to_string(number) + ": " + error.what());
    }
  }
  if (number == 0) wrong(path + ":1: the header is missing");
  return calls;
}

}  // namespace swprobe
