// SPDX-License-Identifier: MIT
#include "run/session.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "command/completion.h"
#include "command/help.h"
#include "command/walker.h"
#include "interrupt.h"
#include "output/wrap.h"
#include "run/command.h"
#include "run/filter.h"
#include "run/line_editor.h"
#include "run/session_words.h"
#include "run/words.h"

namespace swsh {
namespace {

constexpr char kPrompt[] = "swctl> ";

std::string environment(const char *name) {
  const char *value = getenv(name);
  return value == nullptr ? "" : value;
}

std::filesystem::path state_directory() {
  const std::string state = environment("XDG_STATE_HOME");
  if (!state.empty()) return state;
  const std::string home = environment("HOME");
  return home.empty() ? "" : std::filesystem::path(home) / ".local" / "state";
}

// Makes the directory if need be. A directory that cannot be made shows when
// the file is written.
std::string history_file() {
  const std::filesystem::path state = state_directory();
  if (state.empty()) return "";
  std::error_code ignored;
  std::filesystem::create_directories(state / "swctl", ignored);
  return state / "swctl" / "history";
}

// The line in front of the cursor: its whole words, and the one being written.
struct Position {
  std::vector<std::string> words;
  std::string partial;
};

Position position_of(const std::string &line) {
  Line split = split_words(line);
  Position position = {std::move(split.words), ""};
  if (!split.at_new_word) {
    position.partial = position.words.back();
    position.words.pop_back();
  }
  return position;
}

std::vector<Expected> fitting(std::vector<Expected> expected, const Position &position) {
  if (position.words.empty()) {
    expected.insert(expected.end(), session_words().begin(), session_words().end());
  }
  std::erase_if(expected, [&](const Expected &each) {
    return each.literal && !each.word.starts_with(position.partial);
  });
  return expected;
}

std::string help_at(const Node &root, const std::string &line, size_t width) {
  const Position position = position_of(line);
  const Walk found = walk(root, position.words);
  if (found.wrong) return "  " + fault_line(*found.wrong) + '\n';
  return expected_text(fitting(found.expected, position), width);
}

std::vector<std::string> completions_at(const Node &root, const std::string &line) {
  const Position position = position_of(line);
  std::vector<std::string> words;
  for (const Expected &each : completions(root, position.words, position.partial)) {
    words.push_back(each.word);
  }
  if (!position.words.empty()) return words;
  for (const Expected &own : session_words()) {
    if (own.word.starts_with(position.partial)) words.push_back(own.word);
  }
  return words;
}

LineHelper helper_for(const Node &root, int terminal) {
  return {
      [&root](const std::string &line) { return completions_at(root, line); },
      [](const std::string &line) { return position_of(line).partial; },
      [](const std::string &line) { return !split_words(line).fault.empty(); },
      [&root, terminal](const std::string &line) {
        return help_at(root, line, text_width(terminal));
      },
  };
}

Outcome run_line(const Node &root, const std::string &text, const Line &line, Context context,
                 int terminal) {
  context.width = text_width(terminal);  // it may have changed meanwhile
  if (!line.fault.empty()) return {{}, wrong_usage(line.fault, text)};
  std::vector<std::string> words = line.words;
  std::vector<Filter> filters;
  const std::optional<Fault> wrong = take_filters(words, filters);
  if (wrong) return {{}, wrong};
  Outcome outcome = run_command(root, words, context);
  if (!outcome.fault) outcome.answer = filtered(std::move(outcome.answer), filters);
  return outcome;
}

}  // namespace

Status run_session(const Node &root, const Context &context, const Style &style,
                   DataOutput &output) {
  const Interrupts interrupts;
  const auto editor = make_line_editor(kPrompt, output.descriptor(), history_file(),
                                       helper_for(root, output.descriptor()));
  for (Typed typed = editor->read(); typed.kind != Typed::end; typed = editor->read()) {
    const Line line = split_words(typed.text);
    if (ends_session(line.words)) break;
    if (line.words.empty() && line.fault.empty()) continue;
    report(run_line(root, typed.text, line, context, output.descriptor()), "swctl", style, output);
  }
  return kDone;
}

}  // namespace swsh
