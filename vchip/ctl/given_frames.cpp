// SPDX-License-Identifier: MIT
#include "given_frames.h"

#include "frame_words.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

std::vector<CapturedFrame> frames_of(const std::vector<std::string> &words) {
  std::vector<CapturedFrame> frames;
  for (const std::string &word : words) frames.push_back({frames.size() + 1, 0, parse_frame(word)});
  return frames;
}

}  // namespace

std::vector<CapturedFrame> given_frames(const FrameWords &words) {
  if (words.capture && !words.frames.empty())
    throw UsageError("'" + words.frames.front() +
                     "' does not belong here: --pcap gives the frames");
  if (words.capture) return read_capture(*words.capture, words.filter);
  if (words.filter) throw UsageError("--filter needs --pcap");
  if (words.frames.empty()) throw UsageError("a frame is missing: expected HEX or --pcap FILE");
  return frames_of(words.frames);
}

}  // namespace vchipctl
