// SPDX-License-Identifier: MIT
// Receives the frames of an interface by a program in the kernel, which writes them one
// after the other into a ring. That costs the sender less than a packet socket, and a
// small frame takes no more of the ring than its bytes.
#ifndef VCHIPD_BPF_RECEIVER_H
#define VCHIPD_BPF_RECEIVER_H

#include <string>

#include "mapping.h"
#include "offload.h"
#include "os/descriptor.h"
#include "receive_program.h"

namespace vchipd {

class BpfReceiver {
 public:
  // Takes all that comes in; it then goes no further if `takes_away`, so that nobody else
  // spends time on it. Whether the system allows it; if not, refusal() says why, unless it
  // is for want of the rights over the machine.
  bool open(int index, bool takes_away);
  bool is_open() const { return static_cast<bool>(link_); }
  const std::string &refusal() const { return refusal_; }
  int descriptor() const { return ring_.get(); }

  struct Frame {
    const uint8_t *bytes;
    uint32_t length;
    OffloadHeader offload;
  };
  // The next one, if there is one; it stays until arrived().
  bool next(Frame &frame);
  // Those that have been taken are not needed any more.
  void arrived();
  // Whether one is there, or about so many.
  bool has_frames(uint32_t count) const;
  // The descriptor becomes readable with the next frame.
  void arm();
  // The processor on which the last frame came.
  int processor() const { return static_cast<int>(notes_->processor); }
  // Frames for which there was no room, since this was asked last.
  uint64_t take_overflow();

 private:
  bool make_maps();
  bool map_memory();
  bool load(bool takes_away);
  bool attach(int index);
  bool refuse(const char *what);
  const uint8_t *at(uint64_t position) const;

  os::Descriptor ring_;
  os::Descriptor notes_map_;
  os::Descriptor program_;
  os::Descriptor link_;
  Mapping consumer_memory_;
  Mapping frame_memory_;  // with the position of the producer in front
  Mapping notes_memory_;
  uint64_t *consumed_ = nullptr;
  const uint64_t *produced_ = nullptr;
  const uint8_t *frames_ = nullptr;
  RingNotes *notes_ = nullptr;
  uint64_t next_ = 0;         // position to look at
  uint64_t last_record_ = 0;  // bytes of the last one
  uint64_t told_missed_ = 0;
  std::string refusal_;
};

}  // namespace vchipd

#endif
