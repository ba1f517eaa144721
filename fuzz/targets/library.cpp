// SPDX-License-Identifier: MIT
// Sequences of library calls on the virtual chip.
#include "library/calls.h"
#include "support/stage.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  constexpr int kMostCalls = 24;
  swfuzz::reset();
  swfuzz::Input input(data, size);
  const swfuzz::Stage stage;
  swfuzz::make_calls(input, kMostCalls);
  return 0;
}
