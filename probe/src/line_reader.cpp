// SPDX-License-Identifier: MIT
#include "line_reader.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <unistd.h>

#include "os/high_descriptor.h"

namespace swprobe {

LineReader::LineReader(const std::string &path) : name_(path == "-" ? "standard input" : path) {
  const int descriptor = path == "-" ? dup(STDIN_FILENO) : os::open_high(path, 0);
  file_ = descriptor < 0 ? nullptr : fdopen(descriptor, "r");
  if (file_ == nullptr) unreadable();
}

LineReader::~LineReader() {
  fclose(file_);
  free(buffer_);
}

std::optional<Line> LineReader::next() {
  const ssize_t length = getline(&buffer_, &capacity_, file_);
  if (length < 0 && ferror(file_) != 0) unreadable();
  if (length < 0) return std::nullopt;
  ++number_;
  std::string text(buffer_, static_cast<size_t>(length));
  const bool whole = text.back() == '\n';
  if (whole) text.pop_back();
  return Line{std::move(text), whole};
}

void LineReader::unreadable() const {
  throw std::runtime_error("cannot read '" + name_ + "': " + std::strerror(errno));
}

}  // namespace swprobe
