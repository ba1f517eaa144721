// SPDX-License-Identifier: MIT
/**
 * @file explain.h
 * @brief What would become of a frame in the virtual chip, and why.
 *
 * The same steps as vchip_frame_arrive(), with somebody listening, on a copy of
 * the chip that is thrown away: nothing is learned, counted or sent. What
 * leaves is what vchip_frame_arrive() would then let leave at the same time.
 */
#ifndef SWCTL_VCHIP_EXPLAIN_H
#define SWCTL_VCHIP_EXPLAIN_H

#include <swctl/types.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vchip {

// What one step looked at and what came of it. Ports in the text are the
// numbers on the box.
struct ExplainedStep {
  std::string step;      // "port" ... as in the table of docs/virtual-chip.md
  std::string decision;  // "pass", "drop", "to-cpu", "copy", "tagged" ...
  std::string why;
  std::string setting;  // the SDK's call that decided; empty where none does
  int32_t port;         // chip port: where the frame came in, or leaves
  bool ends;            // the frame's way ended here
};

// A frame that leaves at once.
struct ExplainedFrame {
  int32_t port;  // chip port
  std::vector<uint8_t> bytes;
  uint32_t reason;  // on port 28: VCHIP_TO_CPU_*
};

struct Explanation {
  std::vector<ExplainedStep> steps;  // only those that looked
  std::vector<ExplainedFrame> out;   // by port, and on each in the order of leaving
  bool dropped;                      // at the last step that ends the way
  std::string dropped_at;            // its name
  std::string dropped_why;
};

// Of a frame that arrives at a port now. Throws std::out_of_range for a unit or
// port that does not exist, std::invalid_argument for a length that no frame
// has, std::runtime_error if the image cannot be used.
SWCTL_API Explanation explain(uint32_t unit, int32_t port, const uint8_t *bytes, uint32_t length);

// The same as a JSON document on one line: {"steps":[...],"out":[...],"dropped":...}.
// Ports are the numbers on the box, or text such as "p27".
SWCTL_API std::string explain_json(uint32_t unit, int32_t port, const uint8_t *bytes,
                                   uint32_t length);

// A frame that really arrived and was dropped, or one that was dropped on its way out.
struct LostFrame {
  int32_t port;          // chip port by which it came in, or was to leave
  bool outbound;         // it was to leave
  const uint8_t *bytes;  // those of the arrival, or as it was to leave
  uint32_t length;
  const char *step;  // "filter", "queue" ..., valid for ever
  const std::string &why;
};

// Tells of each frame of a unit that a step drops in this process from now on;
// an empty function ends that. It is called under the chip's lock and calls nothing of
// the chip. Until then nothing is looked for, and frames take no longer. What is lost
// with its link is not told of.
SWCTL_API void hear_losses(uint32_t unit, std::function<void(const LostFrame &)> hear);

}  // namespace vchip

#endif
