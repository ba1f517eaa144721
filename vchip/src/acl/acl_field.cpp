// SPDX-License-Identifier: MIT
#include "acl/acl_field.h"

#include <cstring>

#include "common/address_text.h"
#include "common/numbers.h"

namespace vchip {
namespace {

constexpr char kDigits[] = "0123456789abcdef";
constexpr uint32_t kOtherProtocols = 0x1000;

std::string byte_text(uint8_t byte) {
  return {kDigits[byte >> 4], kDigits[byte & 0xF]};
}

std::string bytes_text(const uint8_t *bytes, uint32_t count, uint32_t group) {
  std::string text;
  for (uint32_t i = 0; i < count; ++i) {
    if (i > 0 && i % group == 0) text += ':';
    text += byte_text(bytes[i]);
  }
  return text;
}

// A number of one, two or four bytes in the order of this machine.
uint32_t number_of(const uint8_t *bytes, uint32_t count) {
  uint16_t two = 0;
  uint32_t four = 0;
  switch (count) {
    case 1: return bytes[0];
    case 2: memcpy(&two, bytes, sizeof two); return two;
    default: memcpy(&four, bytes, sizeof four); return four;
  }
}

std::string hex_text(uint32_t number) {
  std::string digits;
  for (; number > 0xF; number >>= 4) digits.insert(digits.begin(), kDigits[number & 0xF]);
  digits.insert(digits.begin(), kDigits[number]);
  return "0x" + digits;
}

std::string port_list(uint32_t ports) {
  std::string text;
  for (uint32_t port = 0; port < VCHIP_PORTS; ++port) {
    if ((ports >> port & 1) == 0) continue;
    const uint32_t first = port;
    while (port + 1 < VCHIP_PORTS && (ports >> (port + 1) & 1) != 0) ++port;
    if (!text.empty()) text += ',';
    text += std::to_string(first);
    if (port > first) text += '-' + std::to_string(port);
  }
  return text.empty() ? "none" : text;
}

// Data 0: the ports are those that the mask leaves out.
std::string ports_text(const FieldValue &value) {
  const uint32_t data = number_of(value.data, 4);
  const uint32_t mask = number_of(value.mask, 4);
  if (data == 0) return port_list(~mask & kAllPorts);
  return hex_text(data) + " mask " + hex_text(mask);
}

// A class in the first byte under a mask of that byte alone, or a number of
// two bytes.
std::string protocol_text(const FieldValue &value) {
  static const char *const kClasses[] = {"udp", "tcp", "icmp", "igmp"};
  if (value.mask[0] == 0xFF && value.mask[1] == 0) {
    const uint8_t number = value.data[0];
    return number < std::size(kClasses) ? kClasses[number] : "class " + std::to_string(number);
  }
  const uint32_t data = number_of(value.data, 2);
  const uint32_t mask = number_of(value.mask, 2);
  if (mask == 0xFFFF && data >= kOtherProtocols) return std::to_string(data - kOtherProtocols);
  return hex_text(data) + " mask " + hex_text(mask);
}

bool is_full(const uint8_t *mask, uint32_t count) {
  for (uint32_t i = 0; i < count; ++i)
    if (mask[i] != 0xFF) return false;
  return true;
}

std::string plain_text(FieldStyle style, const uint8_t *bytes, uint32_t count) {
  switch (style) {
    case FieldStyle::mac: return mac_text(bytes);
    case FieldStyle::ip6: return bytes_text(bytes, count, 2);
    case FieldStyle::ip: return ip4_text(number_of(bytes, count));
    case FieldStyle::decimal: return std::to_string(number_of(bytes, count));
    default: return hex_text(number_of(bytes, count));
  }
}

std::string value_text(FieldStyle style, const FieldValue &value, uint32_t count) {
  if (style == FieldStyle::ports) return ports_text(value);
  if (style == FieldStyle::protocol) return protocol_text(value);
  const std::string text = plain_text(style, value.data, count);
  if (is_full(value.mask, count)) return text;
  // A mask of a number reads best bit by bit.
  const FieldStyle shown = style == FieldStyle::decimal ? FieldStyle::hexadecimal : style;
  return text + " mask " + plain_text(shown, value.mask, count);
}

}  // namespace

std::string field_text(const AclField &field, const FieldValue &value) {
  return std::string(field.name) + ' ' +
         value_text(field.style, value, chip_acl_field_bytes(field.id));
}

}  // namespace vchip
