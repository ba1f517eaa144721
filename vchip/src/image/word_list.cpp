// SPDX-License-Identifier: MIT
#include "image/word_list.h"

#include <bit>
#include <charconv>
#include <cstring>
#include <string_view>

#include "image/header.h"

namespace vchip {
namespace {

constexpr char kBegin[] = "swctl-vchip words 1\n";
constexpr char kLastLine[] = "end ";
constexpr size_t kMostArrays = 8;
constexpr uint64_t kMostWords = 1 << 24;

uint32_t hash_of(const std::string &text) {
  uint32_t hash = kHashStart;
  for (const char byte : text) hash = hash_byte(hash, static_cast<uint8_t>(byte));
  return hash;
}

// "16 4 2*1000,4096*16 units[].vlan.vlans[].member"
std::string line_of(const NamedWord &word) {
  std::string arrays;
  for (const WordArray &array : word.arrays)
    arrays += (arrays.empty() ? "" : ",") + std::to_string(array.count) + "*" +
              std::to_string(array.stride);
  return std::to_string(word.offset) + ' ' + std::to_string(word.width) + ' ' +
         (arrays.empty() ? "-" : arrays) + ' ' + word.name + '\n';
}

// Reads a line from its begin on.
class Line {
 public:
  explicit Line(std::string_view text) : text_(text) {}
  bool number(uint64_t &value) {
    const auto [end, error] = std::from_chars(text_.data(), text_.data() + text_.size(), value);
    if (error != std::errc()) return false;
    text_.remove_prefix(static_cast<size_t>(end - text_.data()));
    return true;
  }
  bool skip(char expected) {
    if (text_.empty() || text_.front() != expected) return false;
    text_.remove_prefix(1);
    return true;
  }
  std::string_view rest() const { return text_; }

 private:
  std::string_view text_;
};

bool parse_arrays(Line &line, std::vector<WordArray> &arrays) {
  if (line.skip('-')) return true;
  do {
    WordArray array = {};
    if (!line.number(array.count) || !line.skip('*') || !line.number(array.stride)) return false;
    arrays.push_back(array);
  } while (line.skip(',') && arrays.size() < kMostArrays);
  return true;
}

// Whether all of it lies in a file of that size, and is not too much.
bool is_inside(const NamedWord &word, uint64_t size) {
  uint64_t last = word.offset, words = 1;
  for (const WordArray &array : word.arrays) {
    if (array.count == 0 || array.count > kMostWords || array.stride > size) return false;
    words *= array.count;
    last += (array.count - 1) * array.stride;
    if (words > kMostWords || last > size) return false;
  }
  return word.offset <= size && last + word.width <= size;
}

bool is_width(uint64_t width) {
  return width == 1 || width == 2 || width == 4 || width == 8;
}

size_t brackets_of(const std::string &name) {
  size_t count = 0;
  for (size_t at = name.find("[]"); at != std::string::npos; at = name.find("[]", at + 2)) ++count;
  return count;
}

bool parse_word(std::string_view text, uint64_t size, NamedWord &word) {
  Line line(text);
  uint64_t width = 0;
  if (!line.number(word.offset) || !line.skip(' ') || !line.number(width) || !line.skip(' '))
    return false;
  if (!is_width(width) || !parse_arrays(line, word.arrays) || !line.skip(' ')) return false;
  word.width = static_cast<uint32_t>(width);
  word.name = line.rest();
  return !word.name.empty() && brackets_of(word.name) == word.arrays.size() &&
         is_inside(word, size);
}

}  // namespace

uint64_t offset_of(const NamedWord &word, const WordIndex &index) {
  uint64_t offset = word.offset;
  for (size_t depth = 0; depth < index.size(); ++depth)
    offset += index[depth] * word.arrays[depth].stride;
  return offset;
}

std::string name_of(const NamedWord &word, const WordIndex &index) {
  std::string name;
  size_t from = 0;
  for (const uint64_t number : index) {
    const size_t bracket = word.name.find("[]", from);
    name += word.name.substr(from, bracket - from) + '[' + std::to_string(number) + ']';
    from = bracket + 2;
  }
  return name + word.name.substr(from);
}

bool each_index(const NamedWord &word, const std::function<bool(const WordIndex &)> &visit) {
  WordIndex index(word.arrays.size());
  for (;;) {
    if (!visit(index)) return false;
    size_t depth = index.size();
    while (depth > 0 && ++index[depth - 1] == word.arrays[depth - 1].count) index[--depth] = 0;
    if (depth == 0) return true;
  }
}

namespace {

// Looks at a whole array first: most are the same.
class MemoryComparison {
 public:
  MemoryComparison(const NamedWord &word, const uint8_t *one, const uint8_t *other,
                   const std::function<void(const WordIndex &)> &visit)
      : word_(word), one_(one), other_(other), visit_(visit), index_(word.arrays.size()) {}

  void run(size_t depth, uint64_t offset) {
    if (memcmp(one_ + offset, other_ + offset, static_cast<size_t>(span(depth))) == 0) return;
    if (depth == index_.size()) return visit_(index_);
    const auto [count, stride] = word_.arrays[depth];
    for (uint64_t &number = index_[depth] = 0; number < count; ++number)
      run(depth + 1, offset + number * stride);
  }

 private:
  // From the first to the last of the word in an array.
  uint64_t span(size_t depth) const {
    uint64_t bytes = word_.width;
    for (; depth < index_.size(); ++depth)
      bytes += (word_.arrays[depth].count - 1) * word_.arrays[depth].stride;
    return bytes;
  }

  const NamedWord &word_;
  const uint8_t *const one_;
  const uint8_t *const other_;
  const std::function<void(const WordIndex &)> &visit_;
  WordIndex index_;
};

}  // namespace

void each_difference(const NamedWord &word, const uint8_t *one, const uint8_t *other,
                     const std::function<void(const WordIndex &)> &visit) {
  MemoryComparison(word, one, other, visit).run(0, word.offset);
}

std::string split_name(const std::string &name, WordIndex &index) {
  std::string plain;
  size_t from = 0;
  for (size_t at; (at = name.find('[', from)) != std::string::npos;) {
    uint64_t number = 0;
    const char *const begin = name.data() + at + 1;
    const auto [end, error] = std::from_chars(begin, name.data() + name.size(), number);
    if (error != std::errc() || end == name.data() + name.size() || *end != ']') return "";
    index.push_back(number);
    plain += name.substr(from, at - from) + "[]";
    from = static_cast<size_t>(end - name.data()) + 1;
  }
  return plain + name.substr(from);
}

std::string word_list_text(const WordList &words) {
  std::string text = kBegin;
  for (const NamedWord &word : words) text += line_of(word);
  return text + kLastLine + std::to_string(hash_of(text)) + '\n';
}

const char *parse_word_list(const std::string &text, uint64_t size, WordList &words) {
  constexpr const char *kDamaged = "the list of its words is damaged";
  if (!text.starts_with(kBegin)) return "it does not say what its words are";
  for (size_t from = sizeof kBegin - 1;;) {
    const size_t end = text.find('\n', from);
    if (end == std::string::npos) return kDamaged;
    const std::string line = text.substr(from, end - from);
    if (line.starts_with(kLastLine))
      return line == kLastLine + std::to_string(hash_of(text.substr(0, from))) ? nullptr : kDamaged;
    NamedWord word = {};
    if (!parse_word(line, size, word)) return kDamaged;
    words.push_back(std::move(word));
    from = end + 1;
  }
}

uint64_t load_word(const uint8_t *bytes, uint32_t width, bool turned) {
  constexpr bool kLittle = std::endian::native == std::endian::little;
  uint64_t value = 0;
  for (uint32_t byte = 0; byte < width; ++byte) {
    const bool last_first = kLittle != turned;
    value = value << 8 | bytes[last_first ? width - 1 - byte : byte];
  }
  return value;
}

void store_word(uint8_t *bytes, uint32_t width, uint64_t value) {
  constexpr bool kLittle = std::endian::native == std::endian::little;
  for (uint32_t byte = 0; byte < width; ++byte)
    bytes[kLittle ? byte : width - 1 - byte] = static_cast<uint8_t>(value >> 8 * byte);
}

}  // namespace vchip
