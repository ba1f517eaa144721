// SPDX-License-Identifier: MIT
// Text that is put together piece by piece, many times in the same memory.
#ifndef SWCTL_PROBE_TEXT_BUFFER_H
#define SWCTL_PROBE_TEXT_BUFFER_H

#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace swprobe {

class TextBuffer {
 public:
  void clear() { size_ = 0; }
  size_t size() const { return size_; }
  std::string_view view() const { return {memory_.data(), size_}; }
  std::string_view part(size_t from, size_t to) const { return view().substr(from, to - from); }

  void add(char character) {
    reserve(1);
    memory_[size_++] = character;
  }
  void add(std::string_view text) {
    reserve(text.size());
    std::memcpy(memory_.data() + size_, text.data(), text.size());
    size_ += text.size();
  }
  // Most numbers of a call have one digit.
  void add_number(int64_t value) {
    if (value >= 0 && value <= 9) return add(static_cast<char>('0' + value));
    reserve(kMostDigits);
    char *const begin = memory_.data() + size_;
    const char *const end = std::to_chars(begin, begin + kMostDigits, value).ptr;
    size_ += static_cast<size_t>(end - begin);
  }

 private:
  static constexpr size_t kMostDigits = 24;

  void reserve(size_t more) {
    if (memory_.size() - size_ < more) memory_.resize(2 * memory_.size() + more);
  }

  std::vector<char> memory_ = std::vector<char>(1024);
  size_t size_ = 0;
};

}  // namespace swprobe

#endif
