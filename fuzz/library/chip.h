// SPDX-License-Identifier: MIT
// A virtual chip that is put back into the state after power-on in no time.
#ifndef SWCTL_FUZZ_LIBRARY_CHIP_H
#define SWCTL_FUZZ_LIBRARY_CHIP_H

#include <cstddef>
#include <string>

namespace swfuzz {

struct Memory {
  void *at = nullptr;
  size_t size = 0;
};

// Maps a file once more over the chip's own mapping of it, which the system
// calls `shown`, but so that writes stay with this process.
Memory map_privately(const std::string &shown, const std::string &path);

// The first call makes the chip.
void renew_chip();

}  // namespace swfuzz

#endif
