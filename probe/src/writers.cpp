// SPDX-License-Identifier: MIT
#include "writers.h"

#include <algorithm>
#include <utility>

#include "line.h"
#include "of_this_thread.h"
#include "recording.h"

namespace swprobe {
namespace {

// A function of the library that has not returned.
struct Frame {
  Call call;
  bool shown;           // by the filter
  bool opened = false;  // its first line is written
};

std::vector<Frame> &frames() {
  return of_this_thread<std::vector<Frame>>();
}

int shown_frames() {
  return static_cast<int>(std::ranges::count(frames(), true, &Frame::shown));
}

std::string indented(const std::string &line, int indent) {
  return std::string(static_cast<size_t>(2 * indent), ' ') + line;
}

}  // namespace

Writers::Writers(std::vector<Destination> traces, std::vector<Destination> recordings,
                 Filter filter)
    : traces_(std::move(traces)), recordings_(std::move(recordings)), filter_(std::move(filter)) {}

bool Writers::any_library() const {
  const auto has_library = [](const auto &all) {
    return std::ranges::any_of(all, &Destination::of_library);
  };
  return has_library(traces_) || has_library(recordings_);
}

bool Writers::are_plain_recordings() const {
  return !recordings_.empty() && traces_.empty() && filter_.fits_all() && !any_library();
}

void Writers::record(std::string_view line) {
  for (Destination &each : recordings_) each.file.write(line);
}

// What is called inside a function that is shown is shown with it.
bool Writers::is_shown(const Call &call) const {
  return shown_frames() > 0 || filter_.fits(call);
}

void Writers::trace(const std::string &line, int indent) {
  for (Destination &each : traces_)
    if (each.of_library) each.file.write(indented(line, indent));
}

// A function is shown in one line, unless there is something to show inside it.
void Writers::open_frames() {
  int indent = 0;
  for (Frame &frame : frames()) {
    if (!frame.shown) continue;
    if (!frame.opened) trace(question_of(frame.call) + " {", indent);
    frame.opened = true;
    ++indent;
  }
}

void Writers::add(Call call, const char *sentence) {
  const bool fits = filter_.fits(call);
  const bool shown = is_shown(call);
  call.depth = static_cast<int>(frames().size());
  for (Destination &each : recordings_)
    if (each.of_library ? shown : fits) each.file.write(recording_line(call, each.of_library));
  if (traces_.empty() || !shown) return;
  const std::string line = line_of(call, sentence);
  open_frames();
  trace(line, shown_frames());
  for (Destination &each : traces_)
    if (!each.of_library && fits) each.file.write(line);
}

void Writers::enter(const Call &call) {
  frames().push_back({call, is_shown(call)});
}

void Writers::abandon() {
  frames().pop_back();
}

void Writers::leave(Call call, const char *sentence) {
  const Frame frame = std::move(frames().back());
  frames().pop_back();
  if (!frame.shown) return;
  call.depth = static_cast<int>(frames().size());
  for (Destination &each : recordings_)
    if (each.of_library) each.file.write(recording_line(call, true));
  if (traces_.empty()) return;
  if (!frame.opened) open_frames();
  trace(frame.opened ? closing_of(call, sentence) : line_of(call, sentence), shown_frames());
}

}  // namespace swprobe
