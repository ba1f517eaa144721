// SPDX-License-Identifier: MIT
#ifndef VCHIP_CHIP_SCRATCH_H
#define VCHIP_CHIP_SCRATCH_H

#include <new>

#include "image/sparse.h"

namespace vchip {

// Zeroes of this process alone.
template <size_t kSize>
class Scratch {
 public:
  Scratch() : memory_(private_memory(kSize)) {
    if (memory_ == nullptr) throw std::bad_alloc();
  }
  ~Scratch() { give_back_memory(memory_, kSize); }
  Scratch(const Scratch &) = delete;
  Scratch &operator=(const Scratch &) = delete;
  void *memory() { return memory_; }

 private:
  void *memory_;
};

}  // namespace vchip

#endif
