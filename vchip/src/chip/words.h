// SPDX-License-Identifier: MIT
// The words of a chip by name.
#ifndef VCHIP_CHIP_WORDS_H
#define VCHIP_CHIP_WORDS_H

#include "image/word_list.h"
#include "unit/state.h"

namespace vchip {

// An image is the chip, and the list of its words.
inline constexpr uint32_t kWordsRoom = 32 * 1024;
inline constexpr uint32_t kImageSize = sizeof(State) + kWordsRoom;

// The words of State, board and units; not those that are always 0.
const WordList &own_words();

// A chip after power-on with its header, from zeroes; and a whole image.
void make_state(void *memory);
void make_image(void *memory);

}  // namespace vchip

#endif
