// SPDX-License-Identifier: MIT
#ifndef VCHIPD_MAPPING_H
#define VCHIPD_MAPPING_H

#include <cstddef>
#include <cstdint>
#include <sys/mman.h>
#include <utility>

namespace vchipd {

// Memory of this process, or of the system, that is mapped; unmapped with its owner.
class Mapping {
 public:
  Mapping() = default;
  Mapping(void *memory, size_t size) : memory_(memory), size_(size) {}
  Mapping(Mapping &&other) noexcept
      : memory_(std::exchange(other.memory_, nullptr)), size_(other.size_) {}
  Mapping &operator=(Mapping &&other) noexcept {
    std::swap(memory_, other.memory_);
    std::swap(size_, other.size_);
    return *this;
  }
  ~Mapping() {
    if (memory_ != nullptr) munmap(memory_, size_);
  }

  explicit operator bool() const { return memory_ != nullptr; }
  uint8_t *at(size_t offset) const { return static_cast<uint8_t *>(memory_) + offset; }

 private:
  void *memory_ = nullptr;
  size_t size_ = 0;
};

}  // namespace vchipd

#endif
