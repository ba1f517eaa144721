// SPDX-License-Identifier: MIT
#include "chip_difference.h"

#include <algorithm>
#include <map>
#include <set>

#include "os/json.h"

namespace vchipctl {
namespace {

using os::Json;

// What is not of the chip, or says the same once more.
const std::set<std::string> kLeftOut = {"image", "byte_order", "words"};

// What an entry of a list is known by: all of the first of these that it has.
const std::vector<std::vector<std::string>> kKeys = {{"vid", "mac"},    {"vid", "group", "source"},
                                                     {"name", "index"}, {"unit"},
                                                     {"port"},          {"vid"},
                                                     {"index"},         {"rule"},
                                                     {"meter"},         {"counter"},
                                                     {"template"},      {"selector"},
                                                     {"instance"},      {"trunk"},
                                                     {"number"},        {"field"},
                                                     {"word"}};

bool has_all(const Json &entry, const std::vector<std::string> &names) {
  return entry.is_object() &&
         std::ranges::all_of(names, [&](const std::string &name) { return entry.contains(name); });
}

// "vid=7,mac=02:00:5e:00:00:01"; empty: it is known by its place.
std::string key_of(const Json &entry) {
  const auto names = std::ranges::find_if(
      kKeys, [&](const std::vector<std::string> &all) { return has_all(entry, all); });
  std::string key;
  if (names == kKeys.end()) return key;
  for (const std::string &name : *names) {
    const Json &value = entry[name];
    key += (key.empty() ? "" : ",") + name + '=' +
           (value.is_string() ? value.get<std::string>() : os::json_text(value));
  }
  return key;
}

bool have_keys(const Json &list) {
  std::set<std::string> keys;
  return std::ranges::all_of(list, [&](const Json &entry) {
    const std::string key = key_of(entry);
    return !key.empty() && keys.insert(key).second;
  });
}

// Numbers that rise, or words that differ: a set, which is compared as a whole.
bool is_set(const Json &list) {
  std::set<Json> seen;
  return std::ranges::all_of(list, [&](const Json &value) {
    const bool rises = value.is_number() && (seen.empty() || *seen.rbegin() < value);
    return (rises || value.is_string()) && seen.insert(value).second;
  });
}

class DocumentComparison {
 public:
  void compare(const std::string &path, const Json &a, const Json &b) {
    if (a == b) return;
    if (a.is_object() && b.is_object()) return compare_objects(path, a, b);
    if (a.is_array() && b.is_array()) return compare_lists(path, a, b);
    found.push_back({path, a, b});
  }
  std::vector<ChipDifference> found;

 private:
  void compare_objects(const std::string &path, const Json &a, const Json &b) {
    const std::string begin = path.empty() ? "" : path + '.';
    for (const auto &[name, value] : a.items()) {
      if (path.empty() && kLeftOut.contains(name)) continue;
      compare_maybe(begin + name, &value, b.contains(name) ? &b[name] : nullptr);
    }
    for (const auto &[name, value] : b.items())
      if (!a.contains(name) && !(path.empty() && kLeftOut.contains(name)))
        compare_maybe(begin + name, nullptr, &value);
  }

  void compare_lists(const std::string &path, const Json &a, const Json &b) {
    if (have_keys(a) && have_keys(b)) return compare_entries(path, a, b);
    if (a.size() != b.size() || (is_set(a) && is_set(b))) return found.push_back({path, a, b});
    for (size_t place = 0; place < a.size(); ++place)
      compare(path + '[' + std::to_string(place) + ']', a[place], b[place]);
  }

  void compare_entries(const std::string &path, const Json &a, const Json &b) {
    std::map<std::string, const Json *> others;
    for (const Json &entry : b) others[key_of(entry)] = &entry;
    for (const Json &entry : a) {
      const auto other = others.extract(key_of(entry));
      compare_maybe(path + '[' + key_of(entry) + ']', &entry,
                    other.empty() ? nullptr : other.mapped());
    }
    for (const auto &[key, entry] : others) compare_maybe(path + '[' + key + ']', nullptr, entry);
  }

  void compare_maybe(const std::string &path, const Json *a, const Json *b) {
    if (a != nullptr && b != nullptr) return compare(path, *a, *b);
    ChipDifference difference = {path, {}, {}};
    if (a != nullptr) difference.a = *a;
    if (b != nullptr) difference.b = *b;
    found.push_back(std::move(difference));
  }
};

}  // namespace

std::vector<ChipDifference> chip_differences(const Json &a, const Json &b) {
  DocumentComparison comparison;
  comparison.compare("", a, b);
  return std::move(comparison.found);
}

}  // namespace vchipctl
