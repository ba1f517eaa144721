// SPDX-License-Identifier: MIT
#include "config/kinds/words.h"

#include "config/plain.h"
#include "number_list.h"

namespace swsh {

std::string list_words(const char *keyword, int64_t mask) {
  if (mask == 0) return "";
  return std::string(" ") + keyword + ' ' + number_list_text(mask_interfaces(mask));
}

std::string word_after(const std::string &words, const std::string &keyword,
                       const std::string &otherwise) {
  const std::string spaced = ' ' + words;
  const size_t at = spaced.find(' ' + keyword + ' ');
  if (at == std::string::npos) return otherwise;
  const size_t start = at + keyword.size() + 2;
  return spaced.substr(start, spaced.find(' ', start) - start);
}

int64_t take_interfaces(Statement &statement, const std::string &name) {
  return interface_mask(statement.take_ports(name));
}

}  // namespace swsh
