// SPDX-License-Identifier: MIT
#include <iostream>
#include <unistd.h>

#include "run/line_editor.h"

namespace swsh {
namespace {

class PlainEditor : public LineEditor {
 public:
  PlainEditor(std::string prompt, int output) : prompt_(std::move(prompt)), output_(output) {}

  std::optional<std::string> read() override {
    if (write(output_, prompt_.data(), prompt_.size()) < 0) return std::nullopt;
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return line;
  }

 private:
  std::string prompt_;
  int output_;
};

}  // namespace

std::unique_ptr<LineEditor> make_line_editor(const std::string &prompt, int output,
                                             const std::string &, LineHelper) {
  return std::make_unique<PlainEditor>(prompt, output);
}

}  // namespace swsh
