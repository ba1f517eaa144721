// SPDX-License-Identifier: MIT
// Characters from a terminal that libedit has in its hands.
#ifndef SWCTL_SHELL_RUN_TERMINAL_INPUT_H
#define SWCTL_SHELL_RUN_TERMINAL_INPUT_H

#include <csignal>
#include <cwchar>
#include <histedit.h>
#include <map>
#include <optional>

namespace swsh {

// Characters are those of the locale; of UTF-8 if the locale has ASCII alone.
// Call it before the editor is made.
void choose_characters();

// Reads a character at a time. What is none becomes a replacement character,
// so that a word with it is refused rather than taken without it.
class TerminalInput {
 public:
  explicit TerminalInput(EditLine *editor) : editor_(editor) {}

  // As libedit wants it: 1 for a character, 0 at the end, -1 for an interrupt,
  // which leaves its mark.
  int read(wchar_t *character);

 private:
  bool wait() const;
  std::optional<char> next_byte();
  void handle_signals() const;

  EditLine *editor_;
  std::optional<char> put_back_;
};

// While there is one, the terminal is put in order before a signal stops or
// ends the program, and taken again when it goes on.
class TerminalSignals {
 public:
  TerminalSignals();
  ~TerminalSignals();
  TerminalSignals(const TerminalSignals &) = delete;
  TerminalSignals &operator=(const TerminalSignals &) = delete;

 private:
  std::map<int, struct sigaction> before_;
};

}  // namespace swsh

#endif
