// SPDX-License-Identifier: MIT
#include "line_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

#include "high_descriptor.h"

namespace swprobe {
namespace {

std::string with_process_id(std::string path) {
  const size_t mark = path.find("%p");
  return mark == std::string::npos ? path : path.replace(mark, 2, std::to_string(getpid()));
}

// 0, or the error number.
int write_all(int descriptor, const char *text, size_t size) {
  while (size > 0) {
    const ssize_t written = ::write(descriptor, text, size);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    text += written;
    size -= static_cast<size_t>(written);
  }
  return 0;
}

}  // namespace

// If it is closed, whatever is opened next has its number.
LineFile::LineFile() : descriptor_(fcntl(STDERR_FILENO, F_GETFD) < 0 ? -1 : STDERR_FILENO) {}

LineFile::LineFile(const std::string &path)
    : path_(with_process_id(path)),
      descriptor_(open_high(path_, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0666)) {
  if (descriptor_ < 0) {
    throw std::runtime_error("cannot write '" + path_ + "': " + std::strerror(errno));
  }
}

LineFile::~LineFile() {
  if (descriptor_ > STDERR_FILENO) close(descriptor_);
}

LineFile::LineFile(LineFile &&other) noexcept
    : path_(std::move(other.path_)), descriptor_(std::exchange(other.descriptor_, -1)) {}

void LineFile::write(std::string line) {
  if (descriptor_ < 0) return;
  line += '\n';
  const int error = write_all(descriptor_, line.data(), line.size());
  if (error == 0 || path_.empty()) return;
  complain("cannot write '" + path_ + "' any further: " + std::strerror(error));
  close(std::exchange(descriptor_, -1));
}

void complain(const std::string &what) {
  LineFile().write("swprobe: " + what);
}

void refuse(const std::string &what) {
  complain(what);
  // Handlers that are registered for the end of the process may call the SDK;
  // none of those calls may pass either.
  std::fflush(stdout);
  _exit(1);
}

}  // namespace swprobe
