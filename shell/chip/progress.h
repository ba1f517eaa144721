// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_PROGRESS_H
#define SWCTL_SHELL_CHIP_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <string>

namespace swsh {

// A line on standard error while something takes longer than a second, if that
// is a terminal. The line is taken away again at the end.
class Progress {
 public:
  explicit Progress(std::string what);
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  void step();

 private:
  using Clock = std::chrono::steady_clock;

  std::string what_;
  bool wanted_;
  bool shown_ = false;
  size_t steps_ = 0;
  Clock::time_point next_;
};

}  // namespace swsh

#endif
