// SPDX-License-Identifier: MIT
// Words of the command line turned into numbers. All throw UsageError.
#ifndef VCHIPCTL_WORDS_H
#define VCHIPCTL_WORDS_H

#include <cstdint>
#include <string>
#include <vector>

namespace vchipctl {

uint32_t parse_unit(const std::string &word);

// "3", "1-4,7", "p25", "p0-p3,26": chip ports, in the order given.
std::vector<int32_t> parse_ports(const std::string &list);

// "10-half,100-full,pause": an ability word.
uint32_t parse_abilities(const std::string &list);

// "1000-full": an ability word with one mode.
uint32_t parse_mode(const std::string &word);

uint32_t parse_medium(const std::string &word);

}  // namespace vchipctl

#endif
