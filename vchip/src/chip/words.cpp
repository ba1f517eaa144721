// SPDX-License-Identifier: MIT
#include "chip/words.h"

#include <cstring>
#include <new>

#include "document/findings.h"
#include "image/sparse.h"

namespace vchip {
namespace {

uint64_t distance(const void *from, const void *to) {
  return static_cast<uint64_t>(static_cast<const char *>(to) - static_cast<const char *>(from));
}

// A block that stands for `arrays` of its kind.
template <typename Block>
void add_block(WordList &list, const State &state, const std::string &name,
               const std::vector<WordArray> &arrays, const Block &block) {
  std::vector<DescribedWord> words;
  Findings findings;
  findings.describe(words);
  block.check(findings);
  for (const DescribedWord &word : words) {
    NamedWord entry = {name + '.' + word.name, distance(&state, word.at),
                       static_cast<uint32_t>(word.width), arrays};
    for (const auto &[count, stride] : word.arrays) entry.arrays.push_back({count, stride});
    list.push_back(std::move(entry));
  }
}

WordList describe() {
  void *const memory = private_memory(sizeof(State));
  if (memory == nullptr) throw std::bad_alloc();
  const State &state = *static_cast<State *>(memory);
  WordList list;
  add_block(list, state, "platform", {}, state.platform);
  add_block(list, state, "rules", {}, state.rules);
  each_block(state.units[0], [&](const char *name, const auto &block) {
    add_block(list, state, std::string("units[].") + name, {{VCHIP_UNITS, sizeof(Unit)}}, block);
  });
  give_back_memory(memory, sizeof(State));
  return list;
}

}  // namespace

const WordList &own_words() {
  static const WordList list = describe();
  return list;
}

void make_state(void *memory) {
  State &state = *static_cast<State *>(memory);
  state.header = make_header(kImageSize, state_layout());
  state.header.words_at = sizeof(State);
  ++state.header.revision;
  power_on(state);
}

void make_image(void *memory) {
  make_state(memory);
  const std::string text = word_list_text(own_words());
  memcpy(static_cast<uint8_t *>(memory) + sizeof(State), text.data(), text.size());
}

}  // namespace vchip
