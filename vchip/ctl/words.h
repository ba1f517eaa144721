// SPDX-License-Identifier: MIT
// Words of the command line turned into numbers. All throw UsageError.
#ifndef VCHIPCTL_WORDS_H
#define VCHIPCTL_WORDS_H

#include <cstdint>
#include <string>
#include <vector>

namespace vchipctl {

// The parts of a list, with commas between them.
std::vector<std::string> split(const std::string &list);

uint32_t parse_unit(const std::string &word);

// "3", "1-4,7", "p25", "p0-p3,26": chip ports, in the order given.
std::vector<int32_t> parse_ports(const std::string &list);

// As parse_ports(), with the CPU port as 0 or p28.
std::vector<int32_t> parse_all_ports(const std::string &list);
// One of them.
int32_t parse_one_port(const std::string &word);

// "10-half,100-full,pause": an ability word.
uint32_t parse_abilities(const std::string &list);

// "1000-full": an ability word with one mode.
uint32_t parse_mode(const std::string &word);

// "A", "B-D" or "A,C": pairs of wires, numbered from 0.
std::vector<uint32_t> parse_pairs(const std::string &list);

// "none", "open", "short,crosstalk": VCHIP_FAULT_*.
uint32_t parse_faults(const std::string &list);

uint32_t parse_medium(const std::string &word);

// "02:00:5e:00:00:01": six bytes.
std::vector<uint8_t> parse_mac(const std::string &word);

// Decimal without sign or zeros in front, or hexadecimal after 0x, at most
// `highest`; `what` names it.
uint64_t parse_number(const std::string &word, const std::string &what, uint64_t highest);
uint32_t parse_word(const std::string &word, const std::string &what, uint32_t highest);

}  // namespace vchipctl

#endif
