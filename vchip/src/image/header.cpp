// SPDX-License-Identifier: MIT
#include "image/header.h"

#include <cstring>

namespace vchip {
namespace {

constexpr char kMagic[sizeof Header::magic + 1] = "SWVCHIP\n";
constexpr uint32_t kByteOrder = 0x01020304;
constexpr uint32_t kOtherByteOrder = 0x04030201;
constexpr uint32_t kVersion = 2;

uint32_t check_of(const Header &header) {
  uint8_t bytes[offsetof(Header, check)];
  memcpy(bytes, &header, sizeof bytes);
  uint32_t hash = kHashStart;
  for (const uint8_t byte : bytes) hash = hash_byte(hash, byte);
  return hash;
}

}  // namespace

Header make_header(uint32_t size, uint32_t layout) {
  Header header = {};
  memcpy(header.magic, kMagic, sizeof header.magic);
  header.byte_order = kByteOrder;
  header.version = kVersion;
  header.size = size;
  header.layout = layout;
  header.check = check_of(header);
  return header;
}

// Byte order and version come before the check: what they say decides how the
// rest of the header has to be read.
const char *header_fault(const Header &header, uint32_t size, uint32_t layout) {
  if (memcmp(header.magic, kMagic, sizeof header.magic) != 0) return "not a virtual chip image";
  if (header.byte_order == kOtherByteOrder) return "made on a machine of the other byte order";
  if (header.byte_order != kByteOrder) return "its byte order mark is damaged";
  if (header.version != kVersion) return "made by another version of the virtual chip";
  if (header.check != check_of(header)) return "its header is damaged";
  if (header.layout != layout || header.size != size)
    return "made by a virtual chip with another layout";
  return nullptr;
}

}  // namespace vchip
