// SPDX-License-Identifier: MIT
#include "common/standard_error.h"

#include <cerrno>
#include <unistd.h>

namespace vchip {

void write_error_line(std::string line) {
  if (line.empty() || line.back() != '\n') line += '\n';
  size_t done = 0;
  while (done < line.size()) {
    const ssize_t part = write(STDERR_FILENO, line.data() + done, line.size() - done);
    if (part < 0 && errno != EINTR) return;
    if (part > 0) done += static_cast<size_t>(part);
  }
}

void write_notice(const std::string &line) {
  if (isatty(STDERR_FILENO) != 0) write_error_line(line);
}

}  // namespace vchip
