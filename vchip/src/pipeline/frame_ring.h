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
  bool lent;       // its bytes are somewhere else
};

class FrameRing {
 public:
  FrameRing() = default;
  FrameRing(const FrameRing &other);
  FrameRing(FrameRing &&) = default;
  FrameRing &operator=(FrameRing &&) = default;

  bool empty() const { return count_ == 0; }
  uint32_t count() const { return count_; }
  void push(FrameNote note, const uint8_t *bytes);
  // Without a copy: the bytes stay as they are until it is popped, or keep() is called.
  void push_lent(FrameNote note, const uint8_t *bytes);
  // Copies the bytes that are lent.
  void keep();
  // Of a ring that is not empty; valid until the next push or pop.
  const FrameNote &front() const {
    return *reinterpret_cast<const FrameNote *>(data_.get() + head_);
  }
  const uint8_t *front_bytes() const {
    const uint8_t *bytes = data_.get() + head_ + sizeof(FrameNote);
    return front().lent ? *reinterpret_cast<const uint8_t *const *>(bytes) : bytes;
  }
  void pop();
  void clear() { *this = {}; }

 private:
  void make_room(size_t size);
  void add(const FrameNote &note, const void *bytes, size_t length);

  std::unique_ptr<uint8_t[]> data_;
  size_t room_ = 0;
  size_t head_ = 0;
  size_t tail_ = 0;
  uint32_t count_ = 0;
  uint32_t lent_ = 0;  // of these
};

}  // namespace vchip

#endif
