// SPDX-License-Identifier: MIT
#include "run/terminal_input.h"

#include <clocale>
#include <cstdlib>
#include <cwctype>
#include <langinfo.h>
#include <poll.h>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "interrupt.h"

namespace swsh {
namespace {

constexpr size_t kNoCharacter = static_cast<size_t>(-1);
constexpr size_t kUnfinished = static_cast<size_t>(-2);
constexpr wchar_t kAscii = 0x80;
constexpr wchar_t kLastKey = 0xff;  // libedit binds keys up to here

volatile sig_atomic_t came[NSIG] = {};

void on_signal(int signal) {
  came[signal] = 1;
}

struct sigaction marking() {
  struct sigaction action = {};
  action.sa_handler = on_signal;
  return action;
}

wchar_t replacement() {
  return MB_CUR_MAX > 1 ? L'\ufffd' : L'?';
}

// A character that libedit might take for a key with Meta is none.
wchar_t harmless(wchar_t character) {
  const bool may_be_key = character >= kAscii && character <= kLastKey;
  return may_be_key && std::iswprint(static_cast<wint_t>(character)) == 0 ? replacement()
                                                                          : character;
}

void take_again(EditLine *editor) {
  el_set(editor, EL_PREP_TERM, 1);
  el_set(editor, EL_REFRESH);
}

// Stops or ends the program with the terminal in order. It comes back when the
// program goes on, or was not stopped because nobody would let it go on.
void leave(EditLine *editor, int signal) {
  const struct sigaction by_default = {};
  const struct sigaction mark = marking();
  el_set(editor, EL_PREP_TERM, 0);
  sigaction(signal, &by_default, nullptr);
  raise(signal);
  sigaction(signal, &mark, nullptr);
  take_again(editor);
}

}  // namespace

void choose_characters() {
  setlocale(LC_CTYPE, "");
  if (std::string_view(nl_langinfo(CODESET)) == "ANSI_X3.4-1968") setlocale(LC_CTYPE, "C.UTF-8");
}

int TerminalInput::read(wchar_t *character) {
  mbstate_t state = {};
  for (bool first = true;; first = false) {
    if (!put_back_ && !wait()) return -1;
    const std::optional<char> byte = next_byte();
    if (!byte) return 0;
    const size_t used = mbrtowc(character, &*byte, 1, &state);
    if (used == kUnfinished) continue;
    if (used != kNoCharacter) {
      *character = harmless(*character);
    } else {
      // The byte that does not go on with a character may begin another.
      if (!first) put_back_ = byte;
      *character = replacement();
    }
    return 1;
  }
}

std::optional<char> TerminalInput::next_byte() {
  if (put_back_) return std::exchange(put_back_, std::nullopt);
  char byte = 0;
  return ::read(STDIN_FILENO, &byte, 1) == 1 ? std::optional<char>(byte) : std::nullopt;
}

// Whether there is something to read, and no interrupt.
bool TerminalInput::wait() const {
  for (;;) {
    handle_signals();
    const BlockedSignals blocked({SIGINT, SIGWINCH, SIGCONT, SIGTSTP, SIGTERM, SIGHUP, SIGQUIT});
    if (is_interrupted()) return false;
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    if (ppoll(&input, 1, nullptr, blocked.before()) > 0) return true;
  }
}

void TerminalInput::handle_signals() const {
  for (const int signal : {SIGTSTP, SIGTERM, SIGHUP, SIGQUIT})
    if (std::exchange(came[signal], 0) != 0) leave(editor_, signal);
  if (std::exchange(came[SIGCONT], 0) != 0) take_again(editor_);
  if (std::exchange(came[SIGWINCH], 0) != 0) el_resize(editor_);
}

TerminalSignals::TerminalSignals() {
  const struct sigaction mark = marking();
  for (const int signal : {SIGWINCH, SIGCONT, SIGTSTP, SIGTERM, SIGHUP, SIGQUIT}) {
    struct sigaction &before = before_[signal];
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &mark, nullptr);
  }
}

TerminalSignals::~TerminalSignals() {
  for (const auto &[signal, before] : before_) sigaction(signal, &before, nullptr);
}

}  // namespace swsh
