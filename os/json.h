// SPDX-License-Identifier: MIT
// JSON, as every program reads and writes it: members keep their order.
#ifndef SWCTL_OS_JSON_H
#define SWCTL_OS_JSON_H

#include <istream>
#include <nlohmann/json.hpp>
#include <string>

// The parser and the printer are compiled once, in json.cpp: most of what a file that uses
// JSON would else compile again.
namespace os {

using Json = nlohmann::ordered_json;

// What a text holds. Throws nlohmann::json::exception, which says where the text is wrong.
Json parse_json(const std::string &text);

// The same; what is no JSON gives a value that is_discarded().
Json try_parse_json(const std::string &text);
Json try_parse_json(std::istream &stream);

// A value as text, on one line if indent is negative. Bytes that are no UTF-8 become the
// replacement character.
std::string json_text(const Json &json, int indent = -1);

}  // namespace os

#endif
