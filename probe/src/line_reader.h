// SPDX-License-Identifier: MIT
#ifndef SWCTL_PROBE_LINE_READER_H
#define SWCTL_PROBE_LINE_READER_H

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace swprobe {

struct Line {
  std::string text;
  bool whole;  // it has its line end
};

// Reads a file line by line; "-" is standard input. All of it throws
// std::runtime_error naming the file.
class LineReader {
 public:
  explicit LineReader(const std::string &path);
  ~LineReader();
  LineReader(const LineReader &) = delete;
  LineReader &operator=(const LineReader &) = delete;

  std::optional<Line> next();
  const std::string &name() const { return name_; }
  uint64_t number() const { return number_; }  // of the line that next() gave
  // "name:number"
  std::string place() const { return name_ + ':' + std::to_string(number_); }

 private:
  [[noreturn]] void unreadable() const;

  std::string name_;
  FILE *file_;
  char *buffer_ = nullptr;
  size_t capacity_ = 0;
  uint64_t number_ = 0;
};

}  // namespace swprobe

#endif
