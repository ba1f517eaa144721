// SPDX-License-Identifier: MIT
// The short way from a call to its line in a recording, for a probe that does
// nothing but record: the same line as recording_line() gives, without a Call.
#ifndef SWCTL_PROBE_PLAIN_RECORDING_H
#define SWCTL_PROBE_PLAIN_RECORDING_H

#include <string_view>
#include <vector>

#include "capture.h"
#include "site.h"
#include "text_buffer.h"

namespace swprobe {

// What has returned, but for its outputs.
struct Answered {
  bool has_outputs;  // the platform was called and did not refuse
  int32_t result;
  bool made_up;
};

class PlainRecording {
 public:
  // The one of this thread: a thread makes one call at a time.
  static PlainRecording &mine();

  // Takes what goes into the call.
  void begin(const Site &site, std::span<const Address> addresses);
  // Takes what came of it.
  void end(const Site &site, std::span<const Address> addresses, const Answered &answered);
  // The line, for the call of this number. Valid until the next call.
  std::string_view line(uint64_t number);

 private:
  TextBuffer inputs_;         // every argument as far as it is known before the call
  std::vector<size_t> ends_;  // of each of them
  TextBuffer rest_;           // all after the number
  TextBuffer line_;
};

}  // namespace swprobe

#endif
