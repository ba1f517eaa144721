// SPDX-License-Identifier: MIT
// Reading a line from a terminal. Built with libedit there are history,
// completion and help at the key; built without it, only the line.
#ifndef SWCTL_SHELL_RUN_LINE_EDITOR_H
#define SWCTL_SHELL_RUN_LINE_EDITOR_H

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace swsh {

// What the editor asks about the line in front of the cursor.
struct LineHelper {
  // The words that may be where the cursor is.
  std::function<std::vector<std::string>(const std::string &line)> completions;
  // The part of the line that such a word would replace.
  std::function<std::string(const std::string &line)> partial_word;
  // Whether the cursor is inside quotes.
  std::function<bool(const std::string &line)> in_quotes;
  // What may come next, for a person; lines with line ends.
  std::function<std::string(const std::string &line)> help;
};

// What came from the terminal.
struct Typed {
  enum Kind { line, cancelled, end } kind;
  std::string text;  // of a line, without its end
};

class LineEditor {
 public:
  virtual ~LineEditor() = default;
  // The next line. An interrupt cancels it; its mark is taken.
  virtual Typed read() = 0;
};

// `output` is the descriptor of the terminal; `history` the file that keeps
// the lines, none if empty.
std::unique_ptr<LineEditor> make_line_editor(const std::string &prompt, int output,
                                             const std::string &history, LineHelper helper);

}  // namespace swsh

#endif
