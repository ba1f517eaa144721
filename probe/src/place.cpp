// SPDX-License-Identifier: MIT
#include "place.h"

#include <charconv>
#include <stdexcept>

namespace swprobe {
namespace {

std::string name_of(const ArgumentInfo &info, const Field &field) {
  std::string name(info.name);
  if (!info.is_record()) return name;
  return name + (info.array ? "[]." : ".") + std::string(field.name);
}

}  // namespace

std::string without_record_index(const std::string &name) {
  const size_t open = name.find('[');
  const size_t close = name.find("].");
  if (open == std::string::npos || close == std::string::npos || close < open) return name;
  return name.substr(0, open + 1) + name.substr(close);
}

Place place_of(const std::string &text) {
  if (text.empty() || text.back() != ']') return {text, 0};
  const size_t open = text.rfind('[');
  if (open == std::string::npos) throw std::invalid_argument("'[' is missing in '" + text + "'");
  Place place{text.substr(0, open), 0};
  const char *end = text.data() + text.size() - 1;
  const auto [stop, error] = std::from_chars(text.data() + open + 1, end, place.index);
  if (error != std::errc() || stop != end) {
    throw std::invalid_argument("the index of '" + text + "' is not a number");
  }
  return place;
}

std::optional<Known> find_argument(const Site &site, const std::string &name) {
  const std::string wanted = without_record_index(name);
  for (const ArgumentInfo &info : site.arguments) {
    for (const Field &field : info.fields) {
      if (name_of(info, field) == wanted) return Known{&info, &field};
    }
  }
  return std::nullopt;
}

}  // namespace swprobe
