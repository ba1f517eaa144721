// SPDX-License-Identifier: MIT
// The stream of a live capture, block by block.
#ifndef VCHIPCTL_CAPTURE_BLOCKS_H
#define VCHIPCTL_CAPTURE_BLOCKS_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vchipctl {

class CaptureBlocks {
 public:
  // What has come; the bytes of the blocks that are whole by now.
  std::vector<uint8_t> take(const uint8_t *bytes, size_t size);
  // The stream does not end inside a block.
  bool is_whole() const { return rest_.empty(); }
  uint64_t frames() const { return frames_; }
  // Frames that were not read fast enough; known at the end.
  uint64_t missed() const { return missed_; }

 private:
  void look(const uint8_t *block, size_t size);

  std::vector<uint8_t> rest_;
  uint64_t frames_ = 0;
  uint64_t missed_ = 0;
};

}  // namespace vchipctl

#endif
