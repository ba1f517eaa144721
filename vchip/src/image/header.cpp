// SPDX-License-Identifier: MIT
#include "image/header.h"

#include <cstring>

#include "image/word_list.h"

namespace vchip {
namespace {

constexpr char kMagic[sizeof Header::magic + 1] = "SWVCHIP\n";
constexpr uint32_t kByteOrder = 0x01020304;
constexpr uint32_t kOtherByteOrder = 0x04030201;
constexpr uint32_t kVersion = 3;
constexpr uint32_t kFirstWithWords = 3;

uint32_t check_of(const uint8_t *bytes) {
  uint32_t hash = kHashStart;
  for (size_t byte = 0; byte < offsetof(Header, check); ++byte) hash = hash_byte(hash, bytes[byte]);
  return hash;
}
uint32_t check_of(const Header &header) {
  return check_of(reinterpret_cast<const uint8_t *>(&header));
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

const char *foreign_fault(const uint8_t *bytes, size_t size, bool &turned) {
  if (size < sizeof(Header) || memcmp(bytes, kMagic, sizeof Header::magic) != 0)
    return "not a virtual chip image";
  const auto word = [&](size_t offset) {
    return static_cast<uint32_t>(load_word(bytes + offset, sizeof(uint32_t), turned));
  };
  turned = false;
  turned = word(offsetof(Header, byte_order)) == kOtherByteOrder;
  if (word(offsetof(Header, byte_order)) != kByteOrder) return "its byte order mark is damaged";
  if (word(offsetof(Header, check)) != check_of(bytes)) return "its header is damaged";
  if (word(offsetof(Header, version)) < kFirstWithWords)
    return "made by a version of the virtual chip that does not say what its words are";
  return word(offsetof(Header, size)) == size ? nullptr : "not as long as it says";
}

}  // namespace vchip
