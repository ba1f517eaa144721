// SPDX-License-Identifier: MIT
// The commands of a file.
#ifndef SWCTL_SHELL_RUN_SOURCE_H
#define SWCTL_SHELL_RUN_SOURCE_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "run/words.h"

namespace swsh {

// A command of a file: one line, or several that a backslash holds together.
struct FileCommand {
  int64_t number = 0;  // of its first line
  std::string text;    // without the backslashes and line ends
  Line line;
};

class Source {
 public:
  // "-" is standard input. Null, with errno set, if the file cannot be opened.
  static std::unique_ptr<Source> open(const std::string &file);

  Source(FILE *file, std::string name) : file_(file), name_(std::move(name)) {}
  ~Source();
  Source(const Source &) = delete;
  Source &operator=(const Source &) = delete;

  const std::string &name() const { return name_; }
  int64_t number() const { return number_; }
  // Why reading stopped before the end; 0 if it did not.
  int failure() const { return failure_; }

  // The next command; none at the end of the file.
  std::optional<FileCommand> next();

 private:
  bool is_directory() const;
  std::optional<std::string> read_line();

  FILE *file_;
  std::string name_;
  char *buffer_ = nullptr;
  size_t capacity_ = 0;
  int64_t number_ = 0;
  int failure_ = 0;
};

}  // namespace swsh

#endif
