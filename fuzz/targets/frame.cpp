// SPDX-License-Identifier: MIT
// Frames of any bytes, on chips with settings of every block.
#include <swctl-vchip/frame.h>
#include <swctl-vchip/vchip.h>

#include <cstdlib>
#include <random>

#include "frames/frames.h"
#include "random_settings.h"

namespace {

constexpr uint64_t kHour = 3600 * uint64_t{1000000000};

// The environment variable SWFUZZ_SETTINGS has their number.
bool set() {
  const char *number = getenv("SWFUZZ_SETTINGS");
  unsetenv("VCHIP_IMAGE");
  vchip_reset();
  swfuzz::plug_cables();
  std::mt19937 random(number == nullptr ? 1 : static_cast<uint32_t>(atoi(number)));
  frames::set_at_random(random);
  return true;
}

}  // namespace

// In the hour after an input every learned address ends, buckets fill and queues
// drain.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  constexpr uint32_t kLookEvery = 4096;
  constexpr int kMostFrames = 16;
  static const bool ready = set();
  (void)ready;
  swfuzz::Input input(data, size);
  for (int each = 0; each < kMostFrames && !input.empty(); ++each) {
    swfuzz::send_frame(input);
    if (input.byte() % 8 == 0) vchip_clock_advance(input.word());
  }
  vchip_clock_advance(kHour);
  swfuzz::take_frames();
  // All words of the chip take long to look at.
  static uint32_t inputs = 0;
  if (inputs++ % kLookEvery == 0) swfuzz::expect_possible();
  return 0;
}
