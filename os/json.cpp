// SPDX-License-Identifier: MIT
#include "os/json.h"

#include <sstream>

namespace os {

Json parse_json(const std::string &text) {
  return Json::parse(text);
}

Json try_parse_json(const std::string &text) {
  return Json::parse(text, nullptr, false);
}

Json try_parse_json(std::istream &stream) {
  std::ostringstream text;
  text << stream.rdbuf();
  return try_parse_json(text.str());
}

std::string json_text(const Json &json, int indent) {
  return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

}  // namespace os
