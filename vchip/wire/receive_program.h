// SPDX-License-Identifier: MIT
// The program that runs in the kernel for each frame that comes in at an interface, and
// writes it into a ring of this process.
#ifndef VCHIPD_RECEIVE_PROGRAM_H
#define VCHIPD_RECEIVE_PROGRAM_H

#include <cstdint>
#include <vector>

#include "kernel_layout.h"

namespace vchipd {

// What the program writes in front of each frame.
struct RingRecord {
  uint32_t length;         // of the frame, without a tag that is kept beside it
  uint16_t division_size;  // 0: it is no packet that is to be divided
  uint16_t flags;
  uint16_t checksum_start;
  uint16_t checksum_offset;
  // The frame is at kPlainFrame, or with its tag at kTaggedFrame.
};
inline constexpr uint16_t kAsksChecksum = 1;
inline constexpr uint16_t kHasTag = 2;
inline constexpr uint32_t kTaggedFrame = sizeof(RingRecord);
inline constexpr uint32_t kPlainFrame = kTaggedFrame + 4;

// What the program and this process tell each other.
struct RingNotes {
  uint64_t missed;     // frames for which there was no room
  uint32_t waits;      // not 0: the program wakes this process with the next frame
  uint32_t processor;  // on which the last frame came
};

// `ring` and `notes` are descriptors of maps; `verdict` is what becomes of the frame then.
// The instructions, of eight bytes each.
std::vector<uint64_t> receive_program(const PacketLayout &layout, int ring, int notes,
                                      int32_t verdict);

}  // namespace vchipd

#endif
