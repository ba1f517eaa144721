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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  static swfuzz::MemoryFile file;
  file.set(swfuzz::Input(data, size).rest());
  try {
    for (const swprobe::Call &call : swprobe::read_recording(file.path()))
      if (!call.line().starts_with(call.name)) swfuzz::wrong(call.line());
  } catch (const std::runtime_error &error) {
    expect_place(error.what(), file.path());
  }
  return 0;
}
