// SPDX-License-Identifier: MIT
#include "replay.h"

#include <dlfcn.h>
#include <stdexcept>
#include <utility>

namespace swreplay {
namespace {

std::string place_of(const Recording &recording, size_t index) {
  return recording.name + ':' + std::to_string(recording.lines[index]);
}

std::string warning_of(const std::string &name, uint64_t cut_off) {
  if (cut_off == 0) return {};
  return name + ':' + std::to_string(cut_off) +
         ": the recording is cut off here; what comes before is used";
}

// Functions of the library are in a recording for its reader; the calls that
// they made are there too.
bool is_repeated(const swprobe::Call &call) {
  return !call.made_up && !call.of_library;
}

// Outputs are there if the call succeeded.
bool same_answer(const swprobe::Call &one, const swprobe::Call &other) {
  if (one.result != other.result || one.arguments.size() != other.arguments.size()) return false;
  for (size_t i = 0; i < one.arguments.size(); ++i)
    if (one.arguments[i].after != other.arguments[i].after) return false;
  return true;
}

swprobe::Call made_again(const swprobe::Call &recorded) {
  swprobe::forget();
  swprobe::repeat(recorded);
  return swprobe::take().at(0);
}

}  // namespace

Recording read(const std::string &path) {
  const std::string name = path == "-" ? "standard input" : path;
  swprobe::Recording read = swprobe::load_recording(path);
  Recording recording = {name, std::move(read.calls), std::move(read.lines),
                         warning_of(name, read.cut_off)};
  for (size_t i = 0; i < recording.calls.size(); ++i) {
    try {
      if (is_repeated(recording.calls[i])) swprobe::prepare(recording.calls[i]);
    } catch (const std::invalid_argument &error) {
      throw std::runtime_error(place_of(recording, i) + ": " + error.what());
    }
  }
  return recording;
}

const char *platform_fault() {
  using Open = const char *(*)();
  const auto open = reinterpret_cast<Open>(dlsym(RTLD_DEFAULT, "swctl_platform_open"));
  return open == nullptr ? nullptr : open();
}

bool replay(const Recording &recording, bool keep_going, Outcome &outcome) {
  for (size_t i = 0; i < recording.calls.size(); ++i) {
    const swprobe::Call &recorded = recording.calls[i];
    if (recorded.made_up) ++outcome.made_up;
    if (!is_repeated(recorded)) continue;
    const swprobe::Call answered = made_again(recorded);
    ++outcome.replayed;
    if (same_answer(recorded, answered)) continue;
    outcome.differences.push_back({place_of(recording, i), recorded, answered});
    if (!keep_going) return false;
  }
  return true;
}

}  // namespace swreplay
