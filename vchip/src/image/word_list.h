// SPDX-License-Identifier: MIT
// What the words of an image are called, and where they lie. An image has this
// list after its chip, as text, so that a later version, or a machine of the
// other byte order, can read the chip's words by what they mean.
#ifndef VCHIP_IMAGE_WORD_LIST_H
#define VCHIP_IMAGE_WORD_LIST_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vchip {

struct WordArray {
  uint64_t count, stride;
};

// A word, or as many as the arrays hold that it is in.
struct NamedWord {
  std::string name;  // "units[].vlan.vlans[].member"
  uint64_t offset;   // of the first, from the begin of the file
  uint32_t width;    // bytes: 1, 2, 4 or 8
  std::vector<WordArray> arrays;
};
using WordList = std::vector<NamedWord>;

using WordIndex = std::vector<uint64_t>;
// Where the one with this index lies; "units[1].vlan.vlans[7].member".
uint64_t offset_of(const NamedWord &word, const WordIndex &index);
std::string name_of(const NamedWord &word, const WordIndex &index);
// Calls visit(index) for each, until it answers false.
bool each_index(const NamedWord &word, const std::function<bool(const WordIndex &)> &visit);

// The same for those in which two memories differ.
void each_difference(const NamedWord &word, const uint8_t *one, const uint8_t *other,
                     const std::function<void(const WordIndex &)> &visit);
// What "units[1].vlan.vlans[7].member" is one of, and which; empty: no name.
std::string split_name(const std::string &name, WordIndex &index);

std::string word_list_text(const WordList &words);
// Null: the text is none of words that lie in a file of that size. What is
// after its end is not looked at.
const char *parse_word_list(const std::string &text, uint64_t size, WordList &words);

uint64_t load_word(const uint8_t *bytes, uint32_t width, bool turned);
void store_word(uint8_t *bytes, uint32_t width, uint64_t value);
constexpr bool fits(uint64_t value, uint32_t width) {
  return width >= sizeof value || value >> 8 * width == 0;
}

}  // namespace vchip

#endif
