// SPDX-License-Identifier: MIT
/**
 * @file memory.h
 * @brief The virtual chip as a block of memory.
 *
 * For programs that keep a whole chip and put it back, or compare two. All
 * that a chip holds is one block without pointers, so a copy of its bytes is a
 * copy of the chip.
 */
#ifndef SWCTL_VCHIP_MEMORY_H
#define SWCTL_VCHIP_MEMORY_H

#include <swctl/types.h>

#include <cstddef>

namespace vchip {

// Where the chip is in this process: whole pages, the same for as long as
// the process lives. The bytes may be read, and copies of them put back, while
// no call runs. Throws std::runtime_error if an image cannot be used.
struct Memory {
  void *start;
  size_t size;
};
SWCTL_API Memory memory();

}  // namespace vchip

#endif
