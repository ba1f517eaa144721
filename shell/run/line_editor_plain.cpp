// SPDX-License-Identifier: MIT
#include <poll.h>
#include <unistd.h>

#include "interrupt.h"
#include "run/line_editor.h"

namespace swsh {
namespace {

class PlainEditor : public LineEditor {
 public:
  PlainEditor(std::string prompt, int output) : prompt_(std::move(prompt)), output_(output) {}

  Typed read() override {
    if (!write(prompt_)) return {Typed::end, ""};
    for (;;) {
      const size_t end = read_.find('\n');
      if (end != std::string::npos) return take(end);
      if (!wait()) return cancel();
      if (!read_more()) return {read_.empty() ? Typed::end : Typed::line, std::exchange(read_, "")};
    }
  }

 private:
  bool write(const std::string &text) {
    return ::write(output_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  }

  Typed take(size_t end) {
    std::string line = read_.substr(0, end);
    read_.erase(0, end + 1);
    return {Typed::line, std::move(line)};
  }

  // The terminal has dropped the line that was being typed.
  Typed cancel() {
    write("\n");
    return {Typed::cancelled, ""};
  }

  // Whether there is something to read, and no interrupt.
  static bool wait() {
    for (;;) {
      const BlockedSignals blocked({SIGINT});
      if (take_interrupt()) return false;
      pollfd input = {STDIN_FILENO, POLLIN, 0};
      if (ppoll(&input, 1, nullptr, blocked.before()) > 0) return true;
    }
  }

  bool read_more() {
    char buffer[4096];
    const ssize_t length = ::read(STDIN_FILENO, buffer, sizeof buffer);
    if (length > 0) read_.append(buffer, static_cast<size_t>(length));
    return length > 0;
  }

  std::string prompt_;
  int output_;
  std::string read_;  // and not yet taken
};

}  // namespace

std::unique_ptr<LineEditor> make_line_editor(const std::string &prompt, int output,
                                             const std::string &, LineHelper) {
  return std::make_unique<PlainEditor>(prompt, output);
}

}  // namespace swsh
