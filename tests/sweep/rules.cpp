// SPDX-License-Identifier: MIT
#include "rules.h"

#include <fnmatch.h>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace sweep {
namespace {

struct Line {
  const char *name;
  const char *rules;
};
constexpr Line kLines[] = {
#define RULES(name, rules) {name, rules},
#define END(name, value)
#include "rules.def"
#undef RULES
#undef END
};

struct EndValue {
  const char *name;
  int32_t value;
};
constexpr EndValue kEndValues[] = {
#define RULES(name, rules)
#define END(name, value) {name, value},
#include "rules.def"
#undef RULES
#undef END
};

// What holds for every function unless its line says otherwise.
constexpr char kEverywhere[] =
    " sys_trace_get:t sys_trace_add_log:. Log_logging_func:. adp_intf_2_phy_id:p";

Rule rule_for(const std::string &call, const std::string &text) {
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const size_t colon = word.find(':');
    if (colon + 2 != word.size()) throw std::logic_error("bad rule " + word);
    if (fnmatch(word.substr(0, colon).c_str(), call.c_str(), 0) == 0)
      return static_cast<Rule>(word[colon + 1]);
  }
  return Rule::none;
}

using Table = std::map<std::string, FunctionRules>;

Table read_table() {
  Table table;
  for (const Line &line : kLines) {
    const bool added = table.emplace(line.name, FunctionRules{Rules(line.rules), false, {}}).second;
    if (!added) throw std::logic_error(std::string("two lines for ") + line.name);
  }
  for (const EndValue &line : kEndValues) table.at(line.name).end = line.value;
  return table;
}

const Table &table() {
  static const Table only = read_table();
  return only;
}

std::set<std::string> used;

}  // namespace

Rules::Rules(const std::string &text) {
  for (const std::string &call : call_names())
    by_call_.push_back(rule_for(call, text + kEverywhere));
}

const FunctionRules &rules_of(const std::string &function, const std::string &variant) {
  static const FunctionRules kPassesOn = {Rules("rtk_*:="), true, {}};
  auto found = table().find(function + "@" + variant);
  if (found == table().end()) found = table().find(function);
  if (found == table().end()) return kPassesOn;
  used.insert(found->first);
  return found->second;
}

std::vector<std::string> unused_lines() {
  std::vector<std::string> names;
  for (const auto &[name, rules] : table())
    if (!used.contains(name)) names.push_back(name);
  return names;
}

}  // namespace sweep
