// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_NUMBER_LIST_H
#define SWCTL_SHELL_NUMBER_LIST_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace swsh {

struct ParsedNumber {
  int64_t number = 0;
  std::string fault;  // empty: the number is good; else what it is
};

// A decimal number or, with 0x in front, a hexadecimal one, from low to high.
ParsedNumber parse_number(std::string_view word, int64_t low, int64_t high);

struct ParsedList {
  std::vector<int64_t> numbers;  // ascending, each once
  std::string fault;             // empty: the list is good; else names the item
};

// Numbers and ranges with commas between them, such as 1-4,7. The order in
// which they are written does not matter.
ParsedList parse_number_list(std::string_view word, int64_t low, int64_t high);

// The same form again: ascending numbers, three or more in a row as a range.
std::string number_list_text(const std::vector<int64_t> &numbers);

}  // namespace swsh

#endif
