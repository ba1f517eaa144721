// SPDX-License-Identifier: MIT
#include "text.h"

#include <cstdio>

namespace swsh {
namespace {

constexpr char kDigits[] = "0123456789abcdef";
constexpr unsigned char kDelete = 0x7f;

bool is_control(unsigned char character) {
  return character < ' ' || character == kDelete;
}

}  // namespace

std::string join(const std::vector<std::string> &parts, std::string_view separator) {
  std::string joined;
  for (const std::string &part : parts) {
    if (&part != &parts.front()) joined += separator;
    joined += part;
  }
  return joined;
}

std::string printable(std::string_view word) {
  std::string text;
  for (const char character : word) {
    const auto byte = static_cast<unsigned char>(character);
    if (is_control(byte)) {
      text += "\\x";
      text += kDigits[byte >> 4];
      text += kDigits[byte & 0xf];
    } else {
      text += character;
    }
  }
  return text;
}

std::string in_quotes(std::string_view word) {
  return '"' + printable(word) + '"';
}

std::string hexadecimal(uint32_t number) {
  char text[sizeof "0xffffffff"];
  snprintf(text, sizeof text, "0x%x", number);
  return text;
}

std::string padded(std::string text, size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

}  // namespace swsh
