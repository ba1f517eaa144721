// SPDX-License-Identifier: MIT
#include "command/value.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "mac_text.h"
#include "number_list.h"
#include "text.h"

namespace swsh {
namespace {

constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";

std::string with_unit(const std::string &number, const Type &type) {
  return type.unit.empty() ? number : number + ' ' + type.unit;
}

std::string range_text(const Type &type) {
  const std::string range =
      with_unit(std::to_string(type.low) + '-' + std::to_string(type.high), type);
  return type.step == 1 ? range : range + " in steps of " + std::to_string(type.step);
}

std::vector<std::string> choice_words(const Type &type) {
  std::vector<std::string> words;
  for (const Choice &each : type.choices) words.push_back(each.word);
  return words;
}

// A number that is not 0 must not become 0.
ParsedValue above_first_step(const Type &type, ParsedValue parsed) {
  const int64_t number = parsed.argument.number;
  if (parsed.fault.empty() && number > 0 && number < type.step)
    parsed.fault = "less than the first step, " + with_unit(std::to_string(type.step), type);
  return parsed;
}

ParsedValue parse_number_value(const Type &type, const std::string &word) {
  const ParsedNumber parsed = parse_number(word, type.low, type.high);
  const std::string fault = parsed.fault.empty() ? "" : in_quotes(word) + " is " + parsed.fault;
  return above_first_step(type, {{word, parsed.number, {}}, fault});
}

ParsedValue parse_list_value(const Type &type, const std::string &word) {
  const ParsedList parsed = parse_number_list(word, type.low, type.high);
  return {{word, 0, parsed.numbers}, parsed.fault};
}

ParsedValue parse_interfaces(const Type &type, const std::string &word) {
  if (type.none && word == kNoPorts) return {{word, 0, {}}, ""};
  if (word != kAllPorts) return parse_list_value(type, word);
  ParsedValue all = {{word, 0, {}, true}, ""};
  for (int64_t front = 1; front <= type.high; ++front) all.argument.numbers.push_back(front);
  return all;
}

ParsedValue parse_mac_value(const std::string &word) {
  const std::vector<int64_t> bytes = parse_mac(word);
  return {{word, 0, bytes}, bytes.empty() ? in_quotes(word) + " is no address" : ""};
}

ParsedValue parse_choice(const Type &type, const std::string &word) {
  for (const Choice &each : type.choices) {
    if (each.word == word) return {{word, each.value, {}}, ""};
  }
  return {{}, in_quotes(word) + " is no choice"};
}

// Items with commas between; an empty one is no choice either.
ParsedValue parse_choices(const Type &type, const std::string &word) {
  ParsedValue all = {{word, 0, {}}, ""};
  for (size_t start = 0; start <= word.size() && all.fault.empty();) {
    const size_t end = std::min(word.find(',', start), word.size());
    const ParsedValue one = parse_choice(type, word.substr(start, end - start));
    all.fault = one.fault;
    all.argument.number |= one.argument.number;
    start = end + 1;
  }
  return all;
}

// Pairs of hexadecimal digits, with or without colons between them.
ParsedValue parse_bytes(const Type &type, const std::string &word) {
  ParsedValue parsed = {{word, 0, {}}, ""};
  for (size_t at = 0; at < word.size(); at += 2) {
    if (at != 0 && word[at] == ':') ++at;
    const std::string digits = word.substr(at, 2);
    if (digits.size() != 2 || digits.find_first_not_of(kHexadecimal) != std::string::npos)
      return {{}, in_quotes(digits) + " is no byte"};
    parsed.argument.numbers.push_back(std::stoi(digits, nullptr, 16));
  }
  if (parsed.argument.numbers.empty()) return {{}, in_quotes(word) + " is no byte"};
  if (static_cast<int64_t>(parsed.argument.numbers.size()) > type.high)
    return {{}, std::to_string(parsed.argument.numbers.size()) + " bytes are too many"};
  return parsed;
}

struct BandwidthUnit {
  std::string_view name;
  int64_t kbit;
};
constexpr BandwidthUnit kBandwidthUnits[] = {{"kbit", 1}, {"mbit", 1000}, {"gbit", 1000000}};

ParsedValue parse_bandwidth(const Type &type, const std::string &word) {
  for (const BandwidthUnit &unit : kBandwidthUnits) {
    if (!word.ends_with(unit.name)) continue;
    const std::string digits = word.substr(0, word.size() - unit.name.size());
    const ParsedNumber parsed =
        parse_number(digits, (type.low + unit.kbit - 1) / unit.kbit, type.high / unit.kbit);
    const std::string fault = parsed.fault.empty() ? "" : in_quotes(digits) + " is " + parsed.fault;
    return above_first_step(type, {{word, parsed.number * unit.kbit, {}}, fault});
  }
  return {{}, in_quotes(word) + " has no unit"};
}

}  // namespace

std::optional<std::string> value_taken(const Type &type, const Argument &argument) {
  const int64_t left = argument.number % type.step;
  if (left == 0) return std::nullopt;
  return with_unit(std::to_string(argument.number - left), type) + ", in steps of " +
         std::to_string(type.step);
}

ParsedValue parse_value(const Type &type, const std::string &word) {
  switch (type.kind) {
    case Kind::number:
    case Kind::interface: return parse_number_value(type, word);
    case Kind::numbers: return parse_list_value(type, word);
    case Kind::interfaces: return parse_interfaces(type, word);
    case Kind::choice: return parse_choice(type, word);
    case Kind::mac: return parse_mac_value(word);
    case Kind::choices: return parse_choices(type, word);
    case Kind::bytes: return parse_bytes(type, word);
    case Kind::bandwidth: return parse_bandwidth(type, word);
    case Kind::text:
    case Kind::flag: break;
  }
  return {{word, 0, {}}, ""};
}

std::string value_usage(const Type &type) {
  switch (type.kind) {
    case Kind::number: return std::to_string(type.low) + '-' + std::to_string(type.high);
    case Kind::numbers: return "LIST";
    case Kind::interface: return "PORT";
    case Kind::interfaces: return "PORTS";
    case Kind::choice: return join(choice_words(type), "|");
    case Kind::mac: return "MAC";
    case Kind::choices: return "LIST";
    case Kind::bytes: return "BYTES";
    case Kind::bandwidth: return "RATE";
    case Kind::text: return "TEXT";
    case Kind::flag: break;
  }
  return "";
}

std::vector<std::string> value_expected(const Type &type) {
  switch (type.kind) {
    case Kind::number: return {"a number " + range_text(type)};
    case Kind::numbers: return {"a list of numbers " + range_text(type) + " such as 1-4,7"};
    case Kind::interface: return {"an interface number " + range_text(type)};
    case Kind::interfaces:
      return {"interface numbers " + range_text(type) + " such as 1-4,7, " +
              (type.none ? "all or none" : "or all")};
    case Kind::mac: return {"an address such as 02:00:5e:00:00:01"};
    case Kind::choice:
    case Kind::choices: return choice_words(type);
    case Kind::bytes:
      return {"up to " + std::to_string(type.high) + " bytes in hexadecimal such as 0a0b0c"};
    case Kind::bandwidth:
      return {"a rate " + range_text(type) + " such as 64kbit, 10mbit or 1gbit"};
    case Kind::text: return {"a text"};
    case Kind::flag: break;
  }
  return {};
}

}  // namespace swsh
