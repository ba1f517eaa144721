// SPDX-License-Identifier: MIT
// What a block's check() writes into: every word that it holds, with what a call
// may have left in it. A word that is never named counts as not looked at.
#ifndef VCHIP_DOCUMENT_FINDINGS_H
#define VCHIP_DOCUMENT_FINDINGS_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <type_traits>
#include <vector>

namespace vchip {

// A word that no call could have left as it is.
struct Finding {
  std::string word;  // "vlans[77].member"
  std::string text;  // "0x20000000, expected ports 0 to 28"
};

// A word of a block: the first, where arrays hold several.
struct DescribedWord {
  struct Array {
    size_t count, stride;
  };
  std::string name;  // "vlans[].member"
  const void *at;
  size_t width;
  std::vector<Array> arrays;  // one for each [] of the name
};

class Findings {
 public:
  // A word is between the two, at most a number, 0 or 1, exactly a number.
  template <typename Word>
  void in(const char *name, const Word &word, uint64_t lowest, uint64_t highest) {
    see(name, &word, sizeof word);
    const uint64_t value = number(word);
    if (value < lowest || value > highest) out_of_range(name, value, lowest, highest);
  }
  template <typename Word>
  void at_most(const char *name, const Word &word, uint64_t highest) {
    in(name, word, 0, highest);
  }
  template <typename Word>
  void flag(const char *name, const Word &word) {
    in(name, word, 0, 1);
  }
  template <typename Word>
  void is(const char *name, const Word &word, uint64_t expected) {
    in(name, word, expected, expected);
  }
  // It has no other bits than these.
  void bits(const char *name, const uint32_t &word, uint32_t allowed);
  void ports(const char *name, const uint32_t &mask);
  // Anything may be there: in a word, or in each of an array.
  template <typename Words>
  void any(const char *name, const Words &words) {
    if constexpr (std::is_arithmetic_v<Words> || std::is_enum_v<Words>) {
      see(name, &words, sizeof words);
    } else if (is_observed()) {
      each(name, words, [&](const auto &element, size_t) { any("", element); });
    }
  }
  // Bytes that are read as words of that width.
  void any_bytes(const char *name, const uint8_t *bytes, size_t count, size_t width);
  // All bytes are 0.
  template <typename Words>
  void zero(const char *name, const Words &words) {
    zero_bytes(name, &words, sizeof words);
  }
  void zero_bytes(const char *name, const void *bytes, size_t count);
  // Whether all bytes are 0: most places of a table are empty, and where that is
  // one of the things that a call leaves, nothing else need be looked at.
  template <typename Words>
  bool is_empty(const Words &words) {
    cover(&words, sizeof words);
    return describes_ == nullptr && are_zero(&words, sizeof words);
  }

  // Whether words that may hold anything need be named at all.
  bool is_observed() const { return watched_ != nullptr || describes_ != nullptr; }

  // What words say together; `text` says what holds where it does not.
  void rule(bool holds, const char *name, const std::string &text);

  // What check(element, index) says of each element of an array, under its name.
  template <typename Array, typename Check>
  void each(const char *name, const Array &array, Check check) {
    Step &step = path_[depth_++];
    step = {name, 0, std::size(array), sizeof *std::begin(array)};
    for (const auto &element : array) {
      check(element, step.index);
      ++step.index;
      if (describes_ != nullptr) break;  // they are all alike
    }
    --depth_;
  }
  template <typename Array>
  void each_at_most(const char *name, const Array &array, uint64_t highest) {
    each(name, array, [&](const auto &word, size_t) { at_most("", word, highest); });
  }

  const std::vector<Finding> &all() const { return all_; }

  // Instead of looking at what words hold, notes what they are called and where
  // they are: one element of each array. Words that are always 0 are left out.
  void describe(std::vector<DescribedWord> &words) { describes_ = &words; }

  // For a test: the bytes that were named, of those from `start` on.
  void watch(const void *start, size_t size);
  const std::vector<uint8_t> &seen() const { return seen_; }

 private:
  struct Step {
    const char *name;
    size_t index;
    size_t count, stride;
  };

  template <typename Word>
  static uint64_t number(Word word) {
    if constexpr (std::is_enum_v<Word>) {
      return static_cast<std::make_unsigned_t<std::underlying_type_t<Word>>>(word);
    } else {
      return static_cast<std::make_unsigned_t<Word>>(word);
    }
  }
  void see(const char *name, const void *word, size_t width) {
    if (!is_observed()) return;
    cover(word, width);
    if (describes_ != nullptr) note(name, word, width);
  }
  void cover(const void *bytes, size_t count) {
    if (watched_ != nullptr) mark(bytes, count);
  }
  void mark(const void *bytes, size_t count);
  void note(const char *name, const void *word, size_t width);
  static bool are_zero(const void *bytes, size_t count);
  void out_of_range(const char *name, uint64_t value, uint64_t lowest, uint64_t highest);
  void add(const char *name, std::string text);

  static constexpr size_t kDepth = 4;  // of arrays within arrays

  // A chip has many words, so a step into an array must cost little.
  Step path_[kDepth] = {};
  size_t depth_ = 0;
  std::vector<Finding> all_;
  const uint8_t *watched_ = nullptr;
  std::vector<uint8_t> seen_;
  std::vector<DescribedWord> *describes_ = nullptr;
};

}  // namespace vchip

#endif
