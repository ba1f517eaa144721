// SPDX-License-Identifier: MIT
// The first bytes of a chip's memory, and of an image file.
#ifndef VCHIP_IMAGE_HEADER_H
#define VCHIP_IMAGE_HEADER_H

#include <cstddef>
#include <cstdint>

#include "image/fair_lock.h"
#include "image/openers.h"

namespace vchip {

// What a call that has begun and not ended is doing.
// Frames change tables and counters, but no setting.
enum Writer : uint32_t { kNoWriter = 0, kChanging = 1, kResetting = 2, kSwitching = 3 };

// One page. What is written at every call has a cache line of its own.
struct Header {
  // Written once, when the image is made.
  char magic[8];
  uint32_t byte_order;
  uint32_t version;
  uint32_t size;    // bytes of the whole image
  uint32_t layout;  // fingerprint of what follows the header
  uint32_t check;   // over everything above
  // Changed under the lock.
  uint32_t writer;
  uint32_t interrupted_writes;
  uint32_t words_at;  // where the list of the words begins, written once
  uint64_t revision;  // counts the changes of settings
  uint32_t more_reserved[4];
  // The lock, and who took it last and when: its place among the openers, and
  // milliseconds of a clock that tells only how long ago that was.
  LockWords lock;
  uint32_t lock_kind;
  uint32_t holder;
  uint32_t held_since;
  uint32_t lock_reserved[11];
  // Who has the image open; changed by each process that opens it.
  Opener openers[kOpeners];
  uint32_t last_reserved[192];
};
static_assert(offsetof(Header, lock) == 64 && offsetof(Header, openers) == 128);
static_assert(sizeof(Header) == 4096);

// FNV-1a, 32 bits wide.
inline constexpr uint32_t kHashStart = 2166136261u;
constexpr uint32_t hash_byte(uint32_t hash, uint8_t byte) {
  return (hash ^ byte) * 16777619u;
}
constexpr uint32_t hash_word(uint32_t hash, uint32_t word) {
  for (int shift = 24; shift >= 0; shift -= 8)
    hash = hash_byte(hash, static_cast<uint8_t>(word >> shift));
  return hash;
}
constexpr uint32_t hash_text(uint32_t hash, const char *text) {
  for (; *text != '\0'; ++text) hash = hash_byte(hash, static_cast<uint8_t>(*text));
  return hash_byte(hash, 0);
}

// The header of a new image.
Header make_header(uint32_t size, uint32_t layout);

// Why `header` is not that of an image with this size and layout; null if it is.
const char *header_fault(const Header &header, uint32_t size, uint32_t layout);

// The same for an image of any version whose words can be brought over, and
// whether they are in the other byte order. The first words of the header are
// the same in all of them.
const char *foreign_fault(const uint8_t *bytes, size_t size, bool &turned);

}  // namespace vchip

#endif
