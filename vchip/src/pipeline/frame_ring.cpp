// SPDX-License-Identifier: MIT
#include "pipeline/frame_ring.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vchip {
namespace {

constexpr size_t kFirstRoom = 2048;
// An empty ring gives back what is larger than a batch of 64 frames of the usual size
// needs: memory that is asked for with every batch costs more than the copies.
constexpr size_t kKeptRoom = 128 * 1024;

constexpr size_t size_of(size_t length) {
  constexpr size_t kAlignment = alignof(FrameNote);
  return (sizeof(FrameNote) + length + kAlignment - 1) / kAlignment * kAlignment;
}
size_t size_of(const FrameNote &note) {
  return size_of(note.lent ? sizeof(const uint8_t *) : note.length);
}
static_assert(alignof(FrameNote) % alignof(const uint8_t *) == 0);
static_assert(sizeof(FrameNote) % alignof(const uint8_t *) == 0);

}  // namespace

FrameRing::FrameRing(const FrameRing &other) : count_(other.count_), lent_(other.lent_) {
  if (other.empty()) return;
  room_ = tail_ = other.tail_ - other.head_;
  data_.reset(new uint8_t[room_]);
  memcpy(data_.get(), other.data_.get() + other.head_, room_);
}

// Moves what is there to the start, into a larger block if half of this one is
// in use.
void FrameRing::make_room(size_t size) {
  const size_t used = tail_ - head_;
  if (used + size <= room_ / 2) {
    memmove(data_.get(), data_.get() + head_, used);
  } else {
    const size_t room = std::max({kFirstRoom, room_ + room_ / 2, used + 2 * size});
    std::unique_ptr<uint8_t[]> data(new uint8_t[room]);
    if (used != 0) memcpy(data.get(), data_.get() + head_, used);
    data_ = std::move(data);
    room_ = room;
  }
  head_ = 0;
  tail_ = used;
}

void FrameRing::add(const FrameNote &note, const void *bytes, size_t length) {
  const size_t size = size_of(length);
  if (tail_ + size > room_) make_room(size);
  memcpy(data_.get() + tail_, &note, sizeof note);
  memcpy(data_.get() + tail_ + sizeof note, bytes, length);
  tail_ += size;
  ++count_;
}

void FrameRing::push(FrameNote note, const uint8_t *bytes) {
  note.lent = false;
  add(note, bytes, note.length);
}

void FrameRing::push_lent(FrameNote note, const uint8_t *bytes) {
  note.lent = true;
  add(note, &bytes, sizeof bytes);
  ++lent_;
}

void FrameRing::keep() {
  if (lent_ == 0) return;
  FrameRing kept;
  for (; !empty(); pop()) kept.push(front(), front_bytes());
  *this = std::move(kept);
}

void FrameRing::pop() {
  if (front().lent) --lent_;
  head_ += size_of(front());
  if (--count_ != 0) return;
  head_ = tail_ = 0;
  if (room_ > kKeptRoom) clear();
}

}  // namespace vchip
