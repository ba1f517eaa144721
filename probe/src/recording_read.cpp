// SPDX-License-Identifier: MIT
#include <stdexcept>

#include "line_reader.h"
#include "recording.h"
#include "wrong.h"

namespace swprobe {
namespace {

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
