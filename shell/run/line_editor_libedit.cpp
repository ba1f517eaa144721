// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <histedit.h>
#include <unistd.h>

#include "interrupt.h"
#include "run/line_editor.h"
#include "run/terminal_input.h"

namespace swsh {
namespace {

constexpr int kHistoryLines = 1000;

std::string common_start(const std::vector<std::string> &words) {
  std::string start = words.front();
  for (const std::string &word : words) {
    const auto [end, other] = std::mismatch(start.begin(), start.end(), word.begin(), word.end());
    start.erase(end, start.end());
  }
  return start;
}

std::string in_lines(const std::vector<std::string> &words) {
  std::string all;
  for (const std::string &word : words) all += "  " + word + '\n';
  return all;
}

class LibeditEditor : public LineEditor {
 public:
  LibeditEditor(std::string prompt, int output, std::string history_file, LineHelper helper)
      : prompt_(std::move(prompt)),
        history_file_(std::move(history_file)),
        helper_(std::move(helper)),
        terminal_(fdopen(dup(output), "w")),
        history_(history_init()),
        editor_(make_editor(terminal_)),
        input_(editor_) {
    set_up_history();
    set_up_editor();
  }

  ~LibeditEditor() override {
    history_end(history_);
    el_end(editor_);
    fclose(terminal_);
  }
  LibeditEditor(const LibeditEditor &) = delete;
  LibeditEditor &operator=(const LibeditEditor &) = delete;

  Typed read() override {
    const TerminalSignals signals;
    int length = 0;
    const char *text = el_gets(editor_, &length);
    if (take_interrupt()) {
      fputs("^C\n", terminal_);
      fflush(terminal_);
      return {Typed::cancelled, ""};
    }
    if (text == nullptr || length <= 0) {
      fputc('\n', terminal_);
      fflush(terminal_);
      return {Typed::end, ""};
    }
    std::string line(text, static_cast<size_t>(length));
    if (line.ends_with('\n')) line.pop_back();
    remember(line);
    return {Typed::line, line};
  }

 private:
  static EditLine *make_editor(FILE *terminal) {
    choose_characters();
    return el_init("swctl", stdin, terminal, stderr);
  }

  static int read_character(EditLine *editor, wchar_t *character) {
    return self(editor).input_.read(character);
  }

  void set_up_history() {
    HistEvent event = {};
    history(history_, &event, H_SETSIZE, kHistoryLines);
    history(history_, &event, H_SETUNIQUE, 1);
    if (!history_file_.empty()) history(history_, &event, H_LOAD, history_file_.c_str());
  }

  void set_up_editor() {
    el_set(editor_, EL_CLIENTDATA, this);
    el_set(editor_, EL_PROMPT, show_prompt);
    el_set(editor_, EL_EDITOR, "emacs");
    el_wset(editor_, EL_GETCFN, read_character);
    el_set(editor_, EL_HIST, history, history_);
    // The wide form keeps these texts as they are; the other one copies them and
    // never gives the copies back.
    el_wset(editor_, EL_ADDFN, L"swctl-complete", L"Complete the word", complete);
    el_wset(editor_, EL_ADDFN, L"swctl-help", L"Say what may come next", help);
    el_set(editor_, EL_BIND, "^I", "swctl-complete", nullptr);
    el_set(editor_, EL_BIND, "?", "swctl-help", nullptr);
  }

  // The file is written after every line: a session that is killed loses none.
  void remember(const std::string &line) {
    if (line.find_first_not_of(" \t") == std::string::npos) return;
    HistEvent event = {};
    history(history_, &event, H_ENTER, line.c_str());
    if (history_file_.empty()) return;
    errno = 0;
    if (history(history_, &event, H_SAVE, history_file_.c_str()) >= 0) return;
    fprintf(stderr, "swctl: history file \"%s\": %s\n", history_file_.c_str(), strerror(errno));
    history_file_.clear();
  }

  static LibeditEditor &self(EditLine *editor) {
    void *data = nullptr;
    el_get(editor, EL_CLIENTDATA, &data);
    return *static_cast<LibeditEditor *>(data);
  }

  static char *show_prompt(EditLine *editor) { return self(editor).prompt_.data(); }

  static std::string line_to_cursor(EditLine *editor) {
    const LineInfo *info = el_line(editor);
    return {info->buffer, info->cursor};
  }

  void print(const std::string &text) {
    fputc('\n', terminal_);
    fputs(text.c_str(), terminal_);
    fflush(terminal_);
  }

  static unsigned char complete(EditLine *editor, wint_t) {
    LibeditEditor &me = self(editor);
    const std::string line = line_to_cursor(editor);
    const std::vector<std::string> words = me.helper_.completions(line);
    if (words.empty()) return CC_REFRESH_BEEP;
    std::string more = common_start(words).substr(me.helper_.partial_word(line).size());
    if (words.size() == 1) more += ' ';
    if (!more.empty()) return el_insertstr(editor, more.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
    me.print(in_lines(words));
    return CC_REDISPLAY;
  }

  static unsigned char help(EditLine *editor, wint_t) {
    LibeditEditor &me = self(editor);
    const std::string line = line_to_cursor(editor);
    if (me.helper_.in_quotes(line)) {
      return el_insertstr(editor, "?") == 0 ? CC_REFRESH : CC_ERROR;
    }
    me.print(me.helper_.help(line));
    return CC_REDISPLAY;
  }

  std::string prompt_;
  std::string history_file_;
  LineHelper helper_;
  FILE *terminal_;
  History *history_;
  EditLine *editor_;
  TerminalInput input_;
};

}  // namespace

std::unique_ptr<LineEditor> make_line_editor(const std::string &prompt, int output,
                                             const std::string &history, LineHelper helper) {
  return std::make_unique<LibeditEditor>(prompt, output, history, std::move(helper));
}

}  // namespace swsh
