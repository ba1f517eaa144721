// SPDX-License-Identifier: MIT
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <unistd.h>

#include "high_descriptor.h"
#include "recording.h"

namespace swprobe {
namespace {

[[noreturn]] void wrong(const std::string &what) {
  throw std::runtime_error(what);
}

struct Line {
  std::string text;
  bool whole;  // it has its line end
};

class LineReader {
 public:
  explicit LineReader(const std::string &path) : name_(path == "-" ? "standard input" : path) {
    const int descriptor = path == "-" ? dup(STDIN_FILENO) : open_high(path, 0);
    file_ = descriptor < 0 ? nullptr : fdopen(descriptor, "r");
    if (file_ == nullptr) unreadable();
  }
  ~LineReader() {
    fclose(file_);
    free(buffer_);
  }
  LineReader(const LineReader &) = delete;
  LineReader &operator=(const LineReader &) = delete;

  std::optional<Line> next() {
    const ssize_t length = getline(&buffer_, &capacity_, file_);
    if (length < 0 && ferror(file_) != 0) unreadable();
    if (length < 0) return std::nullopt;
    ++number_;
    std::string text(buffer_, static_cast<size_t>(length));
    const bool whole = text.back() == '\n';
    if (whole) text.pop_back();
    return Line{std::move(text), whole};
  }
  const std::string &name() const { return name_; }
  uint64_t number() const { return number_; }
  std::string place() const { return name_ + ':' + std::to_string(number_); }

 private:
  [[noreturn]] void unreadable() const {
    wrong("cannot read '" + name_ + "': " + std::strerror(errno));
  }

  std::string name_;
  FILE *file_;
  char *buffer_ = nullptr;
  size_t capacity_ = 0;
  uint64_t number_ = 0;
};

class Reader {
 public:
  explicit Reader(const std::string &path) : lines_(path) {}

  Recording read() {
    std::optional<Line> line = lines_.next();
    if (!line) wrong(lines_.name() + ":1: the header is missing");
    read_header(*line);
    while ((line = lines_.next())) read_call(*line);
    return std::move(recording_);
  }

 private:
  void read_header(const Line &line) {
    try {
      turned_ = from_other_order(line.text);
    } catch (const std::exception &error) {
      wrong(lines_.place() + ": " + error.what());
    }
  }

  void read_call(const Line &line) {
    try {
      Call call = call_of(line.text);
      if (turned_) turn_bytes(call);
      recording_.calls.push_back(std::move(call));
      recording_.lines.push_back(lines_.number());
    } catch (const std::exception &error) {
      if (line.whole) wrong(lines_.place() + ": " + error.what());
      recording_.cut_off = lines_.number();
    }
  }

  LineReader lines_;
  bool turned_ = false;
  Recording recording_;
};

}  // namespace

Recording load_recording(const std::string &path) {
  return Reader(path).read();
}

std::vector<Call> read_recording(const std::string &path) {
  return load_recording(path).calls;
}

}  // namespace swprobe
