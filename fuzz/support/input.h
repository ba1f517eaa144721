// SPDX-License-Identifier: MIT
// The bytes that a fuzzer made up, read as arguments. After their end
// everything is 0, so that every input is one that a target can run.
#ifndef SWCTL_FUZZ_SUPPORT_INPUT_H
#define SWCTL_FUZZ_SUPPORT_INPUT_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace swfuzz {

class Input {
 public:
  Input(const uint8_t *data, size_t size) : at_(data), end_(data + size) {}

  bool empty() const { return at_ == end_; }
  size_t left() const { return static_cast<size_t>(end_ - at_); }

  uint8_t byte() { return empty() ? 0 : *at_++; }
  uint16_t half_word() { return static_cast<uint16_t>(byte() << 8 | byte()); }
  uint32_t word() { return static_cast<uint32_t>(half_word()) << 16 | half_word(); }

  // A number as callers pass them: mostly small, sometimes at the edge of a
  // table, seldom anything.
  uint32_t number() {
    const uint8_t kind = byte();
    if (kind < kEdgesFrom) return kind;
    if (kind < kHalfWordsFrom) return edge(kind - kEdgesFrom);
    return kind < kWordsFrom ? half_word() : word();
  }

  void fill(void *to, size_t size) {
    const size_t there = std::min(size, left());
    memset(to, 0, size);
    memcpy(to, at_, there);
    at_ += there;
  }

  std::string_view rest() {
    const std::string_view all(reinterpret_cast<const char *>(at_), left());
    at_ = end_;
    return all;
  }

  // Up to a zero byte, which is taken along, or the end.
  std::string text() {
    const uint8_t *stop = std::find(at_, end_, 0);
    std::string found(at_, stop);
    at_ = stop == end_ ? end_ : stop + 1;
    return found;
  }

 private:
  static constexpr uint8_t kEdgesFrom = 192;
  static constexpr uint8_t kHalfWordsFrom = 216;
  static constexpr uint8_t kWordsFrom = 240;

  static uint32_t edge(int index) {
    static constexpr uint32_t kEdges[] = {
        0xffffffff, 0x80000000, 0x7fffffff, 0xffff, 0x10000, 255,    256,   511,
        512,        1023,       1024,       1535,   1536,    4094,   4095,  4096,
        8191,       8192,       16383,      16384,  0x8100,  0x9100, 10000, 1000000};
    static_assert(std::size(kEdges) == kHalfWordsFrom - kEdgesFrom);
    return kEdges[index];
  }

  const uint8_t *at_;
  const uint8_t *end_;
};

}  // namespace swfuzz

#endif
