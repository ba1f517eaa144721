// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_RUN_DATA_OUTPUT_H
#define SWCTL_SHELL_RUN_DATA_OUTPUT_H

#include <stdexcept>
#include <string>
#include <string_view>

namespace swsh {

// Standard output did not take what was written.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Where the shell's answers go. Nothing is held back: what write() was given
// has been handed to the system when it returns.
class DataOutput {
 public:
  // Takes standard output over for answers and turns the C library's stdout
  // to standard error: libswctl and the platform print diagnostics on it,
  // which would break tables and JSON. Call it once, before anything prints.
  static DataOutput take_standard_output();

  explicit DataOutput(int descriptor) : descriptor_(descriptor) {}
  // Throws OutputError.
  void write(std::string_view text);
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

}  // namespace swsh

#endif
