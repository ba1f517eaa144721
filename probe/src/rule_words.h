// SPDX-License-Identifier: MIT
// What the files of rules have in common: a rule on a line, "#" before a
// comment, names of calls with wildcards.
#ifndef SWCTL_PROBE_RULE_WORDS_H
#define SWCTL_PROBE_RULE_WORDS_H

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "site.h"

namespace swprobe {

// What is written is no rule.
[[noreturn]] inline void bad_rule(const std::string &what) {
  throw std::invalid_argument(what);
}
std::string in_quotes(const std::string &word);
std::vector<std::string> words_of(const std::string &text);
// The calls of the platform with a name like this. Throws std::invalid_argument
// if there is none.
std::vector<const Site *> calls_like(const std::string &pattern);

// Calls take(place, rule) for each rule of a file: without its comment, and
// where it is. Throws std::runtime_error if the file cannot be read.
void each_rule(const std::string &path,
               const std::function<void(const std::string &, const std::string &)> &take);

}  // namespace swprobe

#endif
