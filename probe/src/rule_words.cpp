// SPDX-License-Identifier: MIT
#include "rule_words.h"

#include <fnmatch.h>
#include <sstream>
#include <stdexcept>

#include "line_reader.h"

namespace swprobe {

std::string in_quotes(const std::string &word) {
  return "'" + word + "'";
}

std::vector<std::string> words_of(const std::string &text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

std::vector<const Site *> calls_like(const std::string &pattern) {
  std::vector<const Site *> sites;
  for (const Site *site : known_calls()) {
    if (fnmatch(pattern.c_str(), site->name, 0) == 0) sites.push_back(site);
  }
  if (sites.empty()) throw std::invalid_argument("no call is named " + in_quotes(pattern));
  return sites;
}

void each_rule(const std::string &path,
               const std::function<void(const std::string &, const std::string &)> &take) {
  LineReader lines(path);
  while (const auto line = lines.next())
    take(lines.place(), line->text.substr(0, line->text.find('#')));
}

}  // namespace swprobe
