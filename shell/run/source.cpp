// SPDX-License-Identifier: MIT
#include "run/source.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>

namespace swsh {
namespace {

constexpr char kStandardInput[] = "-";

}  // namespace

std::unique_ptr<Source> Source::open(const std::string &file) {
  if (file == kStandardInput) return std::make_unique<Source>(stdin, "stdin");
  FILE *opened = fopen(file.c_str(), "re");
  if (opened == nullptr) return nullptr;
  auto source = std::make_unique<Source>(opened, file);
  return source->is_directory() ? nullptr : std::move(source);
}

Source::~Source() {
  if (file_ != stdin) fclose(file_);
  free(buffer_);
}

std::optional<FileCommand> Source::next() {
  std::optional<std::string> text = read_line();
  if (!text) return std::nullopt;
  FileCommand command = {number_, "", {}};
  Splitter splitter;
  while (text) {
    const bool continued = splitter.add(*text);
    if (continued) text->pop_back();
    command.text += *text;
    if (!continued) break;
    text = read_line();
  }
  command.line = splitter.finish();
  return command;
}

bool Source::is_directory() const {
  struct stat status = {};
  const bool directory = fstat(fileno(file_), &status) == 0 && S_ISDIR(status.st_mode);
  if (directory) errno = EISDIR;
  return directory;
}

std::optional<std::string> Source::read_line() {
  errno = 0;
  const ssize_t length = getline(&buffer_, &capacity_, file_);
  if (length < 0) {
    failure_ = ferror(file_) != 0 ? errno : 0;
    return std::nullopt;
  }
  ++number_;
  std::string text(buffer_, static_cast<size_t>(length));
  if (text.ends_with('\n')) text.pop_back();
  if (text.ends_with('\r')) text.pop_back();
  return text;
}

}  // namespace swsh
