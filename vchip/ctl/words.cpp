// SPDX-License-Identifier: MIT
#include "words.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>

#include <charconv>
#include <cstdio>
#include <iterator>
#include <optional>

#include "port_names.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

struct AbilityWord {
  const char *name;
  uint32_t bit;
};
constexpr AbilityWord kAbilityWords[] = {
    {"10-half", VCHIP_ABILITY_10_HALF},     {"10-full", VCHIP_ABILITY_10_FULL},
    {"100-half", VCHIP_ABILITY_100_HALF},   {"100-full", VCHIP_ABILITY_100_FULL},
    {"1000-half", VCHIP_ABILITY_1000_HALF}, {"1000-full", VCHIP_ABILITY_1000_FULL},
    {"pause", VCHIP_ABILITY_PAUSE},         {"asymmetric-pause", VCHIP_ABILITY_ASYMMETRIC_PAUSE},
};

struct FaultWord {
  const char *name;
  uint32_t fault;
};
constexpr FaultWord kFaultWords[] = {
    {"open", VCHIP_FAULT_OPEN},
    {"short", VCHIP_FAULT_SHORT},
    {"mismatch", VCHIP_FAULT_MISMATCH},
    {"crosstalk", VCHIP_FAULT_CROSSTALK},
};

std::string quoted(const std::string &word) {
  return "'" + word + "'";
}

// A number without sign. Decimal digits with a zero in front are refused: some
// take them for octal, others do not.
std::optional<uint64_t> number(const std::string &digits, int base = 10) {
  uint64_t value = 0;
  const char *end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
  const bool zero_in_front = base == 10 && digits.size() > 1 && digits[0] == '0';
  if (error != std::errc() || stop != end || zero_in_front) return {};
  return value;
}

// Cables hang at front ports; frames come and go at the CPU port too.
enum class Reach : uint8_t { front, all };

int32_t chip_port(const std::string &word, Reach reach) {
  const std::optional<uint64_t> port = number(word.substr(1));
  if (!port || *port >= VCHIP_PORTS)
    throw UsageError("no chip port " + quoted(word) + ": expected p0 to p27");
  if (*port == VCHIP_CPU_PORT && reach == Reach::front)
    throw UsageError(quoted(word) + " is the CPU port, which has no cable: expected p0 to p27");
  return static_cast<int32_t>(*port);
}

int32_t port_on_box(uint64_t interface) {
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    const int32_t printed = interface_of(port);
    if (printed >= 0 && static_cast<uint64_t>(printed) == interface) return port;
  }
  return VCHIP_NO_INTERFACE;
}

// One end of a range, as a number on its own scale.
struct End {
  bool on_chip;
  int32_t number;
};

End parse_end(const std::string &word, Reach reach) {
  if (!word.empty() && word[0] == 'p') return {true, chip_port(word, reach)};
  const std::optional<uint64_t> interface = number(word);
  const bool there = interface && port_on_box(*interface) >= 0;
  if (!there && reach == Reach::all)
    throw UsageError("no port " + quoted(word) + ": expected 1 to 26, 0 the CPU, or p0 to p27");
  if (!there || (*interface == VCHIP_CPU_INTERFACE && reach == Reach::front))
    throw UsageError("no front port " + quoted(word) + ": expected 1 to 26, or p0 to p27");
  return {false, static_cast<int32_t>(*interface)};
}

void add_range(std::vector<int32_t> &ports, const std::string &range, Reach reach) {
  const size_t dash = range.find('-', 1);
  const End first = parse_end(range.substr(0, dash), reach);
  const End last = dash == std::string::npos ? first : parse_end(range.substr(dash + 1), reach);
  if (first.on_chip != last.on_chip || first.number > last.number)
    throw UsageError("bad port range " + quoted(range) + ": expected A-B or pA-pB, rising");
  for (int32_t each = first.number; each <= last.number; ++each)
    ports.push_back(first.on_chip ? each : port_on_box(static_cast<uint64_t>(each)));
}

std::vector<int32_t> ports_of(const std::string &list, Reach reach) {
  std::vector<int32_t> ports;
  for (const std::string &range : split(list)) add_range(ports, range, reach);
  return ports;
}

uint32_t parse_pair(const std::string &word) {
  if (word.size() == 1 && word[0] >= 'A' && word[0] < 'A' + VCHIP_PAIRS)
    return static_cast<uint32_t>(word[0] - 'A');
  throw UsageError("no pair " + quoted(word) + ": expected A to D, or lists and ranges of them");
}

uint32_t parse_fault(const std::string &word) {
  for (const FaultWord &fault : kFaultWords)
    if (word == fault.name) return fault.fault;
  throw UsageError("no fault " + quoted(word) +
                   ": expected none, or a list of open, short, mismatch, crosstalk");
}

uint32_t parse_ability(const std::string &word) {
  std::string expected;
  for (const AbilityWord &ability : kAbilityWords) {
    if (word == ability.name) return ability.bit;
    expected += (expected.empty() ? "" : ", ") + std::string(ability.name);
  }
  throw UsageError("no ability " + quoted(word) + ": expected " + expected);
}

}  // namespace

std::vector<std::string> split(const std::string &list) {
  std::vector<std::string> words;
  size_t start = 0;
  for (size_t comma = 0; comma != std::string::npos; start = comma + 1) {
    comma = list.find(',', start);
    words.push_back(list.substr(start, comma - start));
  }
  return words;
}

uint32_t parse_unit(const std::string &word) {
  const std::optional<uint64_t> unit = number(word);
  if (!unit || *unit >= VCHIP_UNITS)
    throw UsageError("no unit " + quoted(word) + ": expected 0 or 1");
  return static_cast<uint32_t>(*unit);
}

std::vector<int32_t> parse_ports(const std::string &list) {
  return ports_of(list, Reach::front);
}

std::vector<int32_t> parse_all_ports(const std::string &list) {
  return ports_of(list, Reach::all);
}

int32_t parse_one_port(const std::string &word) {
  const End end = parse_end(word, Reach::all);
  return end.on_chip ? end.number : port_on_box(static_cast<uint64_t>(end.number));
}

uint32_t parse_abilities(const std::string &list) {
  uint32_t abilities = 0;
  for (const std::string &word : split(list)) abilities |= parse_ability(word);
  if ((abilities & VCHIP_ABILITY_MODES) == 0)
    throw UsageError("no mode in " + quoted(list) + ": a partner needs one, such as 100-full");
  return abilities;
}

uint32_t parse_mode(const std::string &word) {
  const uint32_t ability = parse_ability(word);
  if ((ability & VCHIP_ABILITY_MODES) == 0)
    throw UsageError(quoted(word) + " is no mode: expected one such as 100-full");
  return ability;
}

std::vector<uint8_t> parse_mac(const std::string &word) {
  unsigned bytes[SWCTL_MAC_BYTES] = {};
  int end = -1;
  sscanf(word.c_str(), "%2x:%2x:%2x:%2x:%2x:%2x%n", &bytes[0], &bytes[1], &bytes[2], &bytes[3],
         &bytes[4], &bytes[5], &end);
  const bool only_digits = word.find_first_not_of("0123456789abcdefABCDEF:") == std::string::npos;
  if (end != static_cast<int>(word.size()) || !only_digits)
    throw UsageError("no address " + quoted(word) + ": expected one such as 02:00:5e:00:00:01");
  return {std::begin(bytes), std::end(bytes)};
}

uint64_t parse_number(const std::string &word, const std::string &what, uint64_t highest) {
  const bool hexadecimal = word.starts_with("0x");
  const std::optional<uint64_t> value = hexadecimal ? number(word.substr(2), 16) : number(word);
  if (!value || *value > highest)
    throw UsageError("no " + what + ' ' + quoted(word) + ": expected 0 to " +
                     std::to_string(highest));
  return *value;
}

uint32_t parse_word(const std::string &word, const std::string &what, uint32_t highest) {
  return static_cast<uint32_t>(parse_number(word, what, highest));
}

std::vector<uint32_t> parse_pairs(const std::string &list) {
  std::vector<uint32_t> pairs;
  for (const std::string &range : split(list)) {
    const size_t dash = range.find('-');
    const uint32_t first = parse_pair(range.substr(0, dash));
    const uint32_t last = dash == std::string::npos ? first : parse_pair(range.substr(dash + 1));
    if (first > last) throw UsageError("bad pair range " + quoted(range) + ": expected rising");
    for (uint32_t pair = first; pair <= last; ++pair) pairs.push_back(pair);
  }
  return pairs;
}

uint32_t parse_faults(const std::string &list) {
  if (list == "none") return 0;
  uint32_t faults = 0;
  for (const std::string &word : split(list)) faults |= parse_fault(word);
  return faults;
}

uint32_t parse_medium(const std::string &word) {
  if (word == "copper") return VCHIP_MEDIUM_COPPER;
  if (word == "fibre") return VCHIP_MEDIUM_FIBRE;
  throw UsageError("no medium " + quoted(word) + ": expected copper or fibre");
}

}  // namespace vchipctl
