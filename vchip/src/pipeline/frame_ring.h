// SPDX-License-Identifier: MIT
// Frames that wait, oldest first, one after the other in one block of memory.
#ifndef VCHIP_PIPELINE_FRAME_RING_H
#define VCHIP_PIPELINE_FRAME_RING_H

#include <cstddef>
#include <cstdint>
#include <memory>

namespace vchip {

// What goes with the bytes of a frame.
struct FrameNote {
  uint64_t time;    // when it left; not used while it waits
  uint32_t length;  // bytes
  int16_t port_in;
  uint8_t reason;  // why it is for the processor
  uint8_t port;    // that it turns around at
  bool turned;     // it came out of a loop
  bool copy;       // a mirror's
};

class FrameRing {
 public:
  FrameRing() = default;
  FrameRing(const FrameRing &other);
  FrameRing(FrameRing &&) = default;
  FrameRing &operator=(FrameRing &&) = default;

  bool empty() const { return count_ == 0; }
  uint32_t count() const { return count_; }
  void push(const FrameNote &note, const uint8_t *bytes);
  // Of a ring that is not empty; valid until the next push or pop.
  const FrameNote &front() const {
    return *reinterpret_cast<const FrameNote *>(data_.get() + head_);
  }
  const uint8_t *front_bytes() const { return data_.get() + head_ + sizeof(FrameNote); }
  void pop();
  void clear() { *this = {}; }

 private:
  void make_room(size_t size);

  std::unique_ptr<uint8_t[]> data_;
  size_t room_ = 0;
  size_t head_ = 0;
  size_t tail_ = 0;
  uint32_t count_ = 0;
};

}  // namespace vchip

#endif
