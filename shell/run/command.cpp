// SPDX-License-Identifier: MIT
#include "run/command.h"

#include <cstdio>
#include <unistd.h>

#include "chip/platform.h"
#include "command/help.h"
#include "command/value.h"
#include "command/walker.h"
#include "config/idempotent.h"
#include "interrupt.h"
#include "output/wrap.h"
#include "run/pager.h"
#include "text.h"

namespace swsh {
namespace {

constexpr size_t kIndent = 2;  // of what goes on with a line

// "swctl help port set" asks the same as "swctl port set help".
std::vector<std::string> help_behind(std::vector<std::string> words) {
  if (words.size() < 2 || words.front() != kHelpWord) return words;
  words.erase(words.begin());
  words.push_back(kHelpWord);
  return words;
}

Outcome failed(Fault fault, const std::vector<std::string> &path) {
  if (fault.context.empty()) fault.context = join(path, " ");
  return {{}, std::move(fault)};
}

bool needs_platform(const Node &root, const Walk &found) {
  for (const Node &object : root.children) {
    if (object.name == found.path.front()) return object.needs_platform;
  }
  return false;
}

std::vector<std::string> notes_on(const Walk &found) {
  std::vector<std::string> notes;
  for (const auto *parameters : {&found.node->positional, &found.node->keywords}) {
    for (const Parameter &each : *parameters) {
      if (!found.arguments.has(each.name)) continue;
      const auto taken = value_taken(each.type, found.arguments.at(each.name));
      if (taken) notes.push_back(join(found.path, " ") + ": " + each.name + " is " + *taken);
    }
  }
  return notes;
}

Answer run(const Node &root, const Walk &found, const Context &context,
           std::vector<std::string> &notes) {
  if (needs_platform(root, found)) expect_platform();
  if (context.may_exist) {
    Context plain = context;
    plain.may_exist = false;
    std::optional<Answer> answer = run_if_needed(found, plain, notes);
    if (answer) return *answer;
  }
  return found.node->run(found.arguments, context);
}

}  // namespace

Outcome run_command(const Node &root, const std::vector<std::string> &words,
                    const Context &context) {
  const Walk found = walk(root, help_behind(words));
  if (found.help)
    return {help_answer(*found.node, command_path(root, found), context.width), std::nullopt};
  if (found.wrong) return failed(*found.wrong, found.path);
  if (found.missing) return failed(*found.missing, found.path);
  try {
    std::vector<std::string> notes = notes_on(found);
    Answer answer = run(root, found, context, notes);
    stop_if_interrupted();  // it may have cut a wait short
    return {std::move(answer), std::nullopt, std::move(notes)};
  } catch (const CommandError &error) {
    // What failed may have failed because it was interrupted.
    return failed(take_interrupt() ? interrupted() : error.fault(), found.path);
  }
}

Value outcome_value(const Outcome &outcome) {
  if (outcome.fault) return fault_record(*outcome.fault);
  return outcome.answer.records;
}

namespace {

// All that the outcome says on standard output.
std::string outcome_text(const Outcome &outcome, Format format) {
  if (outcome.answer.shape == Shape::shown) return "";
  if (format != Format::human) return json_text(outcome_value(outcome), format) + '\n';
  return outcome.fault ? "" : answer_text(outcome.answer, format);
}

}  // namespace

namespace {

// A terminal would break the line within a word; a program wants one line.
void say(const std::string &line) {
  const auto width = terminal_width(STDERR_FILENO);
  const std::string text = width ? wrapped(line, 0, kIndent, *width) : line;
  fputs((text + '\n').c_str(), stderr);
}

}  // namespace

void complain(const std::string &place, const Fault &fault) {
  for (const std::string &detail : fault.details) say(printable(detail));
  say(place + ": " + fault_line(fault));
}

void complain(const std::string &place, const Outcome &outcome) {
  if (outcome.fault) return complain(place, *outcome.fault);
  for (const std::string &note : outcome.notes) {
    say(place + ": " + printable(note));
  }
}

Status report(const Outcome &outcome, const std::string &place, const Style &style,
              DataOutput &output) {
  complain(place, outcome);
  std::string text = outcome_text(outcome, style.format);
  if (style.echo_status) text += "status " + std::to_string(outcome.status()) + '\n';
  if (!show_by_pager(style.pager, text, output.descriptor())) output.write(text);
  return outcome.status();
}

}  // namespace swsh
