// SPDX-License-Identifier: MIT
#include "acl/match_value.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <stdexcept>
#include <vector>

#include "ip_text.h"
#include "mac_text.h"
#include "number_list.h"
#include "text.h"

namespace swsh {
namespace {

constexpr int kMacBits = 48;
constexpr int kIpBits = 32;
constexpr int kIp6Bits = 128;

struct Halves {
  std::string value;
  std::string mask;
  bool has_mask;
};

Halves halves_of(const std::string &word) {
  const size_t slash = word.find('/');
  if (slash == std::string::npos) return {word, "", false};
  return {word.substr(0, slash), word.substr(slash + 1), true};
}

uint32_t full_mask(int bits) {
  return bits == kIpBits ? ~0u : (1u << bits) - 1;
}

uint32_t number_of(const std::string &word, int64_t high) {
  const ParsedNumber parsed = parse_number(word, 0, high);
  if (!parsed.fault.empty()) throw std::invalid_argument(parsed.fault);
  return static_cast<uint32_t>(parsed.number);
}

[[noreturn]] void no_address() {
  throw std::invalid_argument("not an address");
}

AddressBytes mac_of(const std::string &word) {
  const std::vector<int64_t> parsed = parse_mac(word);
  if (parsed.empty()) no_address();
  AddressBytes bytes = {};
  std::copy(parsed.begin(), parsed.end(), bytes.begin());
  return bytes;
}

uint32_t ip_of(const std::string &word) {
  in_addr address = {};
  if (inet_pton(AF_INET, word.c_str(), &address) != 1) no_address();
  return ntohl(address.s_addr);
}

AddressBytes ip6_of(const std::string &word) {
  AddressBytes bytes = {};
  if (inet_pton(AF_INET6, word.c_str(), bytes.data()) != 1) no_address();
  return bytes;
}

// A mask of leading ones, as in 10.0.0.0/8.
AddressBytes prefix_mask(uint32_t length) {
  AddressBytes mask = {};
  for (uint32_t bit = 0; bit < length; ++bit)
    mask[bit / 8] = static_cast<uint8_t>(mask[bit / 8] | 0x80 >> bit % 8);
  return mask;
}

uint32_t ip_prefix_mask(uint32_t length) {
  return length == 0 ? 0 : ~0u << (kIpBits - static_cast<int>(length));
}

bool is_plain_number(const std::string &word) {
  return parse_number(word, 0, kIp6Bits).fault.empty();
}

MatchValue parse_number_match(int bits, const Halves &word) {
  MatchValue value;
  value.number = number_of(word.value, full_mask(bits));
  value.mask = word.has_mask ? number_of(word.mask, full_mask(bits)) : full_mask(bits);
  return value;
}

MatchValue parse_ip_match(const Halves &word) {
  MatchValue value;
  value.number = ip_of(word.value);
  if (!word.has_mask) {
    value.mask = ~0u;
  } else if (is_plain_number(word.mask)) {
    value.mask = ip_prefix_mask(number_of(word.mask, kIpBits));
  } else {
    value.mask = ip_of(word.mask);
  }
  return value;
}

MatchValue parse_mac_match(const Halves &word) {
  MatchValue value;
  value.address = mac_of(word.value);
  value.address_mask = word.has_mask ? mac_of(word.mask) : prefix_mask(kMacBits);
  return value;
}

MatchValue parse_ip6_match(const Halves &word) {
  MatchValue value;
  value.address = ip6_of(word.value);
  if (!word.has_mask) {
    value.address_mask = prefix_mask(kIp6Bits);
  } else if (is_plain_number(word.mask)) {
    value.address_mask = prefix_mask(number_of(word.mask, kIp6Bits));
  } else {
    value.address_mask = ip6_of(word.mask);
  }
  return value;
}

MatchValue parse_halves(Notation notation, int bits, const Halves &halves) {
  switch (notation) {
    case Notation::mac: return parse_mac_match(halves);
    case Notation::ip: return parse_ip_match(halves);
    case Notation::ip6: return parse_ip6_match(halves);
    case Notation::decimal:
    case Notation::hexadecimal: break;
  }
  return parse_number_match(bits, halves);
}

std::string value_text(Notation notation, const MatchValue &value) {
  switch (notation) {
    case Notation::mac: return mac_text(value.address.data());
    case Notation::ip: return ip_text(value.number);
    case Notation::ip6: return ip6_text(value.address.data());
    case Notation::decimal: return std::to_string(value.number);
    case Notation::hexadecimal: break;
  }
  return hexadecimal(value.number);
}

// Whether the mask is the length of a subnet's address.
bool has_length(Notation notation, const Halves &halves) {
  const bool is_ip = notation == Notation::ip || notation == Notation::ip6;
  return is_ip && halves.has_mask && is_plain_number(halves.mask);
}

// 192.0.2.5/24 may be meant for one address or for its subnet.
void expect_no_host_bits(Notation notation, const MatchValue &value, const Halves &halves) {
  MatchValue subnet = value;
  subnet.number &= subnet.mask;
  for (size_t byte = 0; byte < kAddressBytes; ++byte)
    subnet.address[byte] &= subnet.address_mask[byte];
  if (subnet.number == value.number && subnet.address == value.address) return;
  throw std::invalid_argument("has bits after its length; the subnet is " +
                              value_text(notation, subnet) + '/' + halves.mask);
}

}  // namespace

MatchValue parse_match(Notation notation, int bits, const std::string &word) {
  const Halves halves = halves_of(word);
  const MatchValue value = parse_halves(notation, bits, halves);
  if (has_length(notation, halves)) expect_no_host_bits(notation, value, halves);
  return value;
}

std::string match_text(Notation notation, int bits, const MatchValue &value) {
  switch (notation) {
    case Notation::mac: {
      const bool full = value.address_mask == prefix_mask(kMacBits);
      return value_text(notation, value) + (full ? "" : '/' + mac_text(value.address_mask.data()));
    }
    case Notation::ip:
      return value_text(notation, value) + (value.mask == ~0u ? "" : '/' + ip_text(value.mask));
    case Notation::ip6: {
      const bool full = value.address_mask == prefix_mask(kIp6Bits);
      return value_text(notation, value) + (full ? "" : '/' + ip6_text(value.address_mask.data()));
    }
    case Notation::decimal:
    case Notation::hexadecimal: break;
  }
  const bool full = value.mask == full_mask(bits);
  return value_text(notation, value) + (full ? "" : '/' + hexadecimal(value.mask));
}

Value match_field(Notation notation, int bits, const MatchValue &value) {
  const bool is_number = notation == Notation::decimal || notation == Notation::hexadecimal;
  if (!is_number) return match_text(notation, bits, value);
  return Record().add("value", int64_t{value.number}).add("mask", int64_t{value.mask});
}

std::string match_expected(Notation notation, int bits) {
  switch (notation) {
    case Notation::mac: return "an address such as 01:80:c2:00:00:00, or ADDRESS/MASK";
    case Notation::ip: return "an address such as 10.0.0.1, ADDRESS/LENGTH or ADDRESS/MASK";
    case Notation::ip6: return "an address such as 2001:db8::1, ADDRESS/LENGTH or ADDRESS/MASK";
    case Notation::decimal:
    case Notation::hexadecimal: break;
  }
  return "a number 0-" + std::to_string(full_mask(bits)) + ", or NUMBER/MASK";
}

}  // namespace swsh
