// SPDX-License-Identifier: MIT
#include "comparison.h"

#include <algorithm>
#include <fnmatch.h>
#include <stdexcept>

#include "place.h"
#include "rule_words.h"

namespace swprobe {
namespace {

bool is_like(const std::string &pattern, const std::string &call) {
  return fnmatch(pattern.c_str(), call.c_str(), 0) == 0;
}

// Whether the words name an argument of the call: one field, or a whole record.
bool has_argument(const Site &site, const std::string &name) {
  const auto is_named = [&](const ArgumentInfo &info) { return info.name == name; };
  return find_argument(site, name) || std::ranges::any_of(site.arguments, is_named);
}

// Whether a rule about `free` is one about `argument`, a part of which may be
// named by it.
bool covers(const std::string &free, const std::string &argument) {
  if (!argument.starts_with(free)) return false;
  const char next = argument.c_str()[free.size()];
  return next == '\0' || next == '.' || next == '[';
}

// What goes into a call; outputs have nothing here.
struct Input {
  const std::string *name;
  bool null;
  const std::vector<int64_t> *values;
  const std::string *text;

  bool operator==(const Input &other) const {
    return *name == *other.name && null == other.null && *values == *other.values &&
           *text == *other.text;
  }
};

Input input_of(const Argument &argument) {
  return {&argument.name, argument.null, &argument.before, &argument.text};
}

const Argument *find(const Call &call, const std::string &name) {
  const auto found = std::ranges::find(call.arguments, name, &Argument::name);
  return found == call.arguments.end() ? nullptr : &*found;
}

}  // namespace

bool Comparison::is_in(const std::vector<std::string> &patterns, const std::string &call) {
  return std::ranges::any_of(patterns, [&](const auto &each) { return is_like(each, call); });
}

bool Comparison::is_free(const std::string &call, const std::string &argument) const {
  const std::string name = without_record_index(argument);
  return std::ranges::any_of(free_, [&](const Free &free) {
    return is_like(free.call, call) && std::ranges::any_of(free.arguments, [&](const auto &each) {
             return covers(each, name);
           });
  });
}

void Comparison::add_free(const std::vector<std::string> &words) {
  if (words.size() < 2) bad_rule("the name of a call is missing after 'differ'");
  if (words.size() < 3) bad_rule("the name of an argument is missing after " + in_quotes(words[1]));
  Free free = {words[1], {}};
  const std::vector<const Site *> sites = calls_like(free.call);
  for (size_t i = 2; i < words.size(); ++i) {
    const std::string name = without_record_index(words[i]);
    const auto has = [&](const Site *site) { return has_argument(*site, name); };
    if (std::ranges::none_of(sites, has))
      bad_rule(in_quotes(free.call) + " has no argument " + in_quotes(words[i]));
    free.arguments.push_back(name);
  }
  free_.push_back(std::move(free));
}

void Comparison::add_rule(const std::string &line) {
  const std::vector<std::string> words = words_of(line);
  if (words.empty()) return;
  const std::string &kind = words.front();
  if (kind == "differ") return add_free(words);
  if (kind != "unordered" && kind != "ignore")
    bad_rule(in_quotes(kind) + " is none of differ, unordered and ignore");
  if (words.size() < 2) bad_rule("the name of a call is missing after " + in_quotes(kind));
  std::vector<std::string> &calls = kind == "ignore" ? ignored_ : unordered_;
  for (size_t i = 1; i < words.size(); ++i) {
    calls_like(words[i]);
    calls.push_back(words[i]);
  }
}

void Comparison::read(const std::string &path) {
  each_rule(path, [&](const std::string &place, const std::string &text) {
    try {
      add_rule(text);
    } catch (const std::invalid_argument &error) {
      throw std::runtime_error(place + ": " + error.what());
    }
  });
}

std::vector<std::string> Comparison::differences(const Call &recorded, const Call &made) const {
  std::vector<std::string> names;
  for (const Argument &argument : recorded.arguments) {
    const Argument *other = find(made, argument.name);
    const bool is_same = other != nullptr && input_of(argument) == input_of(*other);
    if (!is_same && !is_free(made.name, argument.name)) names.push_back(argument.name);
  }
  for (const Argument &argument : made.arguments) {
    const bool is_new = find(recorded, argument.name) == nullptr;
    if (is_new && !is_free(made.name, argument.name)) names.push_back(argument.name);
  }
  return names;
}

bool Comparison::same(const Call &recorded, const Call &made) const {
  return recorded.name == made.name && differences(recorded, made).empty();
}

std::string Comparison::key(const Call &call) const {
  std::string key = call.name;
  for (const Argument &argument : call.arguments) {
    if (is_free(call.name, argument.name)) continue;
    key += '\0' + argument.name + (argument.null ? "=null" : "=" + argument.text);
    for (const int64_t value : argument.before) key += ' ' + std::to_string(value);
  }
  return key;
}

}  // namespace swprobe
