// SPDX-License-Identifier: MIT
// Recordings of calls, read back.
#include <swctl-probe/probe.h>

#include <stdexcept>

#include "support/input.h"
#include "support/stage.h"

namespace {

// A refusal says where.
void expect_place(const std::string &message, const std::string &path) {
  if (!message.starts_with(path + ':')) swfuzz::wrong("no place: " + message);
}

// Whatever was read can be shown, and be looked at for a replay.
void look_at(const swprobe::Call &call) {
  if (!call.line().starts_with(call.name)) swfuzz::wrong(call.line());
  try {
    swprobe::prepare(call);
  } catch (const std::invalid_argument &error) {
    if (!std::string(error.what()).starts_with(call.name)) swfuzz::wrong(error.what());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static swfuzz::MemoryFile file;
  file.set(swfuzz::Input(data, size).rest());
  try {
    for (const swprobe::Call &call : swprobe::read_recording(file.path())) look_at(call);
  } catch (const std::runtime_error &error) {
    expect_place(error.what(), file.path());
  }
  return 0;
}
