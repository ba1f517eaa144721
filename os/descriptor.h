// SPDX-License-Identifier: MIT
#ifndef SWCTL_OS_DESCRIPTOR_H
#define SWCTL_OS_DESCRIPTOR_H

#include <unistd.h>
#include <utility>

namespace os {

// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor &operator=(Descriptor &&other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { reset(); }

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  void reset() {
    if (number_ >= 0) close(number_);
    number_ = -1;
  }

 private:
  int number_ = -1;
};

}  // namespace os

#endif
