// SPDX-License-Identifier: MIT
#include "live_captures.h"

#include <swctl-vchip/explain.h>

#include <algorithm>
#include <sys/epoll.h>
#include <time.h>

#include "clock.h"
#include "loop.h"
#include "panel.h"
#include "wire_words.h"

namespace vchipd {
namespace {

constexpr uint32_t kReadable = EPOLLIN;
constexpr uint32_t kWritable = EPOLLOUT;

uint64_t wall_clock() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  return static_cast<uint64_t>(now.tv_sec) * kNanosecondsPerSecond +
         static_cast<uint64_t>(now.tv_nsec);
}

std::string dropped(const vchip::LostFrame &lost) {
  return std::string("dropped at ") + lost.step + ": " + lost.why;
}

}  // namespace

// Stamps are the time of day, or the chip's clock where that is virtual.
LiveCaptures::LiveCaptures(Loop &loop, Panel &panel, uint32_t unit)
    : loop_(loop),
      panel_(panel),
      unit_(unit),
      epoch_(panel.clock().is_virtual() ? 0 : wall_clock() - panel.clock().now()) {}

LiveCaptures::~LiveCaptures() {
  while (!readers_.empty()) forget(readers_.begin()->first);
}

uint64_t LiveCaptures::stamp(uint64_t clock) const {
  return epoch_ + clock;
}

std::unique_ptr<LiveCapture> LiveCaptures::make(const CaptureWords &words) const {
  uint32_t present = 0;
  for (const Panel::Row &row : panel_.rows()) present |= 1u << row.port;
  const auto describe = [this](int32_t port) -> std::string {
    for (const Panel::Row &row : panel_.rows())
      if (row.port == port) return row.word;
    return "";
  };
  return std::make_unique<LiveCapture>(words, present, describe);
}

void LiveCaptures::begin(std::unique_ptr<LiveCapture> capture, os::Descriptor connection) {
  const int descriptor = connection.get();
  Reader &reader = readers_[descriptor] = {std::move(capture), std::move(connection), false};
  loop_.watch(descriptor, EPOLLIN,
              [this, descriptor](uint32_t events) { serve(descriptor, events); });
  if (!flush(reader)) return forget(descriptor);
  look();
}

// The panel shows its frames, and the chip its losses, only while somebody captures.
void LiveCaptures::look() {
  panel_.observe(readers_.empty() ? nullptr : this);
  const bool wanted = std::any_of(readers_.begin(), readers_.end(), [](const auto &reader) {
    return reader.second.capture->wants_drops();
  });
  if (wanted == hears_) return;
  hears_ = wanted;
  if (!wanted) return vchip::hear_losses(unit_, nullptr);
  vchip::hear_losses(unit_, [this](const vchip::LostFrame &lost) { hear(lost); });
}

void LiveCaptures::forget(int descriptor) {
  loop_.forget(descriptor);
  readers_.erase(descriptor);
  look();
}

// False if it is over.
bool LiveCaptures::flush(Reader &reader) {
  if (!reader.capture->flush(reader.connection)) return false;
  const bool waits = reader.capture->has_backlog();
  if (waits != reader.waits) {
    reader.waits = waits;
    const uint32_t writable = waits ? kWritable : 0;
    loop_.change(reader.connection.get(), writable | (reader.capture->has_ended() ? 0 : kReadable));
  }
  return waits || !reader.capture->has_ended();
}

void LiveCaptures::flush() {
  for (auto place = readers_.begin(); place != readers_.end();) {
    const int descriptor = place->first;
    Reader &reader = (place++)->second;
    if (reader.capture->is_full()) end(reader);
    if (!reader.waits && !flush(reader)) forget(descriptor);
  }
}

// The reader closes its half to say that it has enough.
void LiveCaptures::end(Reader &reader) {
  if (reader.capture->has_ended()) return;
  reader.capture->end(stamp(panel_.clock().now()));
  loop_.change(reader.connection.get(), reader.waits ? kWritable : 0);
}

void LiveCaptures::serve(int descriptor, uint32_t events) {
  Reader &reader = readers_.at(descriptor);
  if ((events & EPOLLERR) != 0) return forget(descriptor);
  char bytes[64];
  if ((events & (EPOLLIN | EPOLLHUP)) != 0 && read(descriptor, bytes, sizeof bytes) == 0)
    end(reader);
  if (!flush(reader)) forget(descriptor);
}

void LiveCaptures::finish(uint64_t nanoseconds) {
  const uint64_t last = monotonic_now() + nanoseconds;
  for (auto &[descriptor, reader] : readers_) end(reader);
  flush();
  while (!readers_.empty() && monotonic_now() < last) loop_.wait(10'000'000);
}

void LiveCaptures::add(const SeenFrame &frame) {
  for (auto &[descriptor, reader] : readers_) {
    if (frame.comment.empty() || reader.capture->wants_drops() || frame.port == VCHIP_CPU_PORT) {
      reader.capture->add(frame);
    } else {
      SeenFrame plain = frame;
      plain.comment.clear();
      reader.capture->add(plain);
    }
  }
}

void LiveCaptures::arriving(const Arrivals &arrivals) {
  arrivals_ = &arrivals;
}

// Called in the chip's step: what was heard is written later.
void LiveCaptures::hear(const vchip::LostFrame &lost) {
  const auto is_it = [&](const vchip_arrival_t &one) { return one.bytes == lost.bytes; };
  if (!lost.outbound && arrivals_ != nullptr &&
      std::any_of(arrivals_->begin(), arrivals_->end(), is_it)) {
    reasons_[lost.bytes] = dropped(lost);
    return;
  }
  lost_.push_back(
      {{lost.port, lost.outbound, nullptr, lost.length, stamp(panel_.clock().now()), dropped(lost)},
       {lost.bytes, lost.bytes + lost.length}});
}

void LiveCaptures::take_lost() {
  for (Lost &lost : lost_) {
    lost.frame.bytes = lost.bytes.data();
    for (auto &[descriptor, reader] : readers_)
      if (reader.capture->wants_drops()) reader.capture->add(lost.frame);
  }
  lost_.clear();
}

void LiveCaptures::arrived(int32_t port, const Arrivals &arrivals) {
  arrivals_ = nullptr;
  const uint64_t time = stamp(panel_.clock().now());
  for (const vchip_arrival_t &one : arrivals) {
    if (one.port != port) continue;
    const auto reason = reasons_.find(one.bytes);
    add({port, false, one.bytes, one.length, time,
         reason == reasons_.end() ? std::string() : reason->second});
  }
  reasons_.clear();
  take_lost();
  flush();
}

std::string LiveCaptures::reason_at_cpu(const vchip_frame_t &frame) const {
  const char *reason = vchip_to_cpu_name(frame.reason);
  if (reason == nullptr) return "";
  return std::string("to the CPU: ") + reason + ", from port " + port_name(frame.port_in);
}

void LiveCaptures::left(int32_t port, const vchip_frame_t *frames, uint32_t count) {
  take_lost();
  for (const vchip_frame_t *frame = frames; frame != frames + count; ++frame)
    add({port, true, frame->bytes, frame->length, stamp(frame->time),
         port == VCHIP_CPU_PORT ? reason_at_cpu(*frame) : std::string()});
  flush();
}

}  // namespace vchipd
