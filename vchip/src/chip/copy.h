// SPDX-License-Identifier: MIT
// A copy of the whole chip, for who looks at all of it and keeps nobody waiting
// meanwhile. Takes the memory that is not zero, and no more of the image's.
#ifndef VCHIP_CHIP_COPY_H
#define VCHIP_CHIP_COPY_H

#include "chip/chip.h"

namespace vchip {

class Copy {
 public:
  // Throws std::bad_alloc.
  explicit Copy(const Locked &chip);
  ~Copy();
  Copy(const Copy &) = delete;
  Copy &operator=(const Copy &) = delete;

  State &state() { return *state_; }
  const State &state() const { return *state_; }

 private:
  State *state_;
};

// Of the chip of this process, in one locked step, with its image's name. Throws
// what Viewing throws.
Copy take_copy(std::string &image);

}  // namespace vchip

#endif
