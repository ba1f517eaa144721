// SPDX-License-Identifier: MIT
#include "filter.h"

#include <algorithm>
#include <fnmatch.h>
#include <stdexcept>

#include "number.h"

namespace swprobe {
namespace {

// "vlan" of "rtk_vlan_create"; empty without one.
std::string_view family_of(std::string_view name) {
  const size_t first = name.find('_');
  if (first == std::string_view::npos) return {};
  const std::string_view rest = name.substr(first + 1);
  return rest.substr(0, rest.find('_'));
}

bool is_named(std::string_view name, const std::string &word) {
  return family_of(name) == word || fnmatch(word.c_str(), std::string(name).c_str(), 0) == 0;
}

}  // namespace

void Filter::add_name(const std::string &word) {
  const auto named = [&](const Site *site) { return is_named(site->name, word); };
  if (std::ranges::none_of(known_calls(), named) &&
      std::ranges::none_of(known_library_calls(), named))
    throw std::runtime_error("SWPROBE: no call is named '" + word +
                             "' or belongs to such a family");
  names_.push_back(word);
}

void Filter::add_port(const std::string &word) {
  const auto port = parse_number(word);
  if (!port || !swprobe::fits(*port, sizeof(int32_t)))
    throw std::runtime_error("SWPROBE: '" + word + "' is no port");
  ports_.push_back(*port);
}

bool Filter::has_name(std::string_view name) const {
  return names_.empty() ||
         std::ranges::any_of(names_, [&](const auto &word) { return is_named(name, word); });
}

bool Filter::has_port(const Call &call) const {
  if (ports_.empty()) return true;
  return std::ranges::any_of(call.arguments, [&](const Argument &argument) {
    return argument.name == "port" && argument.before.size() == 1 &&
           std::ranges::find(ports_, argument.before.front()) != ports_.end();
  });
}

}  // namespace swprobe
