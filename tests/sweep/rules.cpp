// SPDX-License-Identifier: MIT
#include "rules.h"

#include <algorithm>
#include <fnmatch.h>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace sweep {
namespace {

struct Line {
  std::string rules;
  std::vector<std::string> functions;
};
const Line kLines[] = {
#define RULES(function, rules) {rules, {function}},
#define FAMILY(rules, ...) {rules, {__VA_ARGS__}},
#define END(function, value)
#define OUTPUTS(kind, ...)
#include "rules.def"
#undef RULES
#undef FAMILY
#undef END
#undef OUTPUTS
};

struct EndValue {
  const char *function;
  int32_t value;
};
constexpr EndValue kEndValues[] = {
#define RULES(function, rules)
#define FAMILY(rules, ...)
#define END(function, value) {function, value},
#define OUTPUTS(kind, ...)
#include "rules.def"
#undef RULES
#undef FAMILY
#undef END
#undef OUTPUTS
};

struct OutputsLine {
  Outputs outputs;
  std::vector<std::string> functions;
};
const OutputsLine kOutputs[] = {
#define RULES(function, rules)
#define FAMILY(rules, ...)
#define END(function, value)
#define OUTPUTS(kind, ...) {Outputs::kind, {__VA_ARGS__}},
#include "rules.def"
#undef RULES
#undef FAMILY
#undef END
#undef OUTPUTS
};

const std::map<std::string, Rule> kWords = {
#define WORD(word) \
  { #word, Rule::word }
    WORD(result),  WORD(stop),  WORD(stop_quietly),  WORD(stop_nonzero), WORD(refuse_nonzero),
    WORD(created), WORD(leave), WORD(end),           WORD(purge),        WORD(skip),
    WORD(sum),     WORD(join),  WORD(ignored),       WORD(zero),         WORD(carried),
    WORD(port),    WORD(kept),  WORD(kept_silently), WORD(mask),         WORD(anything),
    WORD(trace),
#undef WORD
};

// What holds for every function unless its line says otherwise.
constexpr char kEverywhere[] =
    " sys_trace_get:trace sys_trace_add_log:ignored Log_logging_func:ignored "
    "adp_intf_2_phy_id:port";

Rule rule_for(const std::string &call, const std::string &text) {
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const size_t colon = word.find(':');
    if (colon == std::string::npos) throw std::logic_error("no rule in " + word);
    const auto rule = kWords.find(word.substr(colon + 1));
    if (rule == kWords.end()) throw std::logic_error("unknown rule in " + word);
    if (fnmatch(word.substr(0, colon).c_str(), call.c_str(), 0) == 0) return rule->second;
  }
  return Rule::none;
}

using Table = std::map<std::string, FunctionRules>;

Table read_table() {
  Table table;
  for (const Line &line : kLines) {
    const FunctionRules rules = {Rules(line.rules), false, {}};
    for (const std::string &function : line.functions)
      if (!table.emplace(function, rules).second)
        throw std::logic_error("two lines for " + function);
  }
  for (const EndValue &line : kEndValues) table.at(line.function).end = line.value;
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
  static const FunctionRules kPassesOn = {Rules("rtk_*:result"), true, {}};
  auto found = table().find(function + "@" + variant);
  if (found == table().end()) found = table().find(function);
  if (found == table().end()) return kPassesOn;
  used.insert(found->first);
  return found->second;
}

Outputs outputs_rule_of(const std::string &function) {
  for (const OutputsLine &line : kOutputs) {
    if (std::ranges::find(line.functions, function) == line.functions.end()) continue;
    used.insert("outputs of " + function);
    return line.outputs;
  }
  return Outputs::usual;
}

std::vector<std::string> unused_lines() {
  std::vector<std::string> names;
  for (const OutputsLine &line : kOutputs)
    for (const std::string &function : line.functions)
      if (!used.contains("outputs of " + function)) names.push_back("outputs of " + function);
  for (const auto &[name, rules] : table())
    if (!used.contains(name)) names.push_back(name);
  return names;
}

}  // namespace sweep
