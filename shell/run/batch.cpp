// SPDX-License-Identifier: MIT
#include "run/batch.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include "chip/platform.h"
#include "command/walker.h"
#include "config/change.h"
#include "run/command.h"
#include "run/elements.h"
#include "run/session_words.h"
#include "run/source.h"
#include "text.h"

namespace swsh {
namespace {

class Batch {
 public:
  Batch(const Node &root, const BatchSettings &settings, Source &source, DataOutput &output)
      : root_(root), settings_(settings), source_(source), output_(output) {
    if (settings.style.format != Format::human)
      elements_.emplace(settings.style.format, settings.in_array, output);
  }

  Status run() {
    if (settings_.atomic && !take_snapshot()) return status_;
    while (status_ == kDone || settings_.force) {
      const std::optional<FileCommand> command = source_.next();
      if (!command || ends_session(command->line.words)) break;
      if (!command->line.words.empty() || !command->line.fault.empty()) run_one(*command);
    }
    if (source_.failure() != 0) report_unreadable();
    if (status_ != kDone && before_) put_back();
    if (elements_) elements_->end();
    return status_;
  }

 private:
  void run_one(const FileCommand &command) {
    if (command.line.fault.empty()) {
      const Outcome outcome = run_command(root_, command.line.words, settings_.context);
      if (before_) note_lasting(command, outcome);
      show(command, outcome);
    } else {
      show(command, {{}, wrong_usage(command.line.fault, command.text)});
    }
  }

  // False if the chip refuses to say what it has.
  bool take_snapshot() {
    try {
      expect_platform();
      board_.emplace();
      before_.emplace(settings_.context, *board_);
    } catch (const CommandError &error) {
      show({0, "", {}}, {{}, error.fault()});
      if (elements_) elements_->end();
    }
    return before_.has_value();
  }

  void put_back() {
    std::vector<std::string> notes;
    const std::string left = before_->put_back();
    notes.push_back(left.empty() ? "all settings are as they were" : left);
    const std::vector<std::string> unread = before_->unread();
    if (!unread.empty()) notes.push_back("cannot be read: " + named_settings(unread));
    if (!lasting_.empty()) notes.push_back("cannot be undone: " + join(lasting_, ", "));
    Outcome outcome;
    outcome.notes = notes;
    complain(source_.name(), outcome);
  }

  // What a command does that is no setting stays done.
  void note_lasting(const FileCommand &command, const Outcome &outcome) {
    const Walk found = walk(root_, command.line.words);
    if (outcome.fault || !found.runnable()) return;
    const std::string path = join(command_path(root_, found), " ");
    const bool clears = path == "acl stats" && found.arguments.has("clear");
    if (clears || path == "port clear" || path == "storm reset" || path == "kernel send")
      lasting_.push_back(join(found.path, " "));
  }

  void report_unreadable() {
    const FileCommand nowhere = {source_.number() + 1, "", {}};
    show(nowhere, {{}, wrong_usage(strerror(source_.failure()), source_.name())});
  }

  void show(const FileCommand &command, const Outcome &outcome) {
    const std::string place = source_.name() + ':' + std::to_string(command.number);
    if (elements_) {
      complain(place, outcome);
      elements_->add(command.number, join(command.line.words, " "), outcome);
    } else {
      report(outcome, place, settings_.style, output_);
    }
    if (status_ == kDone) status_ = outcome.status();
  }

  const Node &root_;
  const BatchSettings &settings_;
  Source &source_;
  DataOutput &output_;
  std::optional<Elements> elements_;  // in JSON only
  std::optional<Board> board_;        // these are of an atomic batch
  std::optional<Snapshot> before_;
  std::vector<std::string> lasting_;
  Status status_ = kDone;
};

}  // namespace

Status run_batch(const Node &root, const BatchSettings &settings, DataOutput &output) {
  const std::unique_ptr<Source> source = Source::open(settings.file);
  if (source == nullptr) {
    const std::string reason = strerror(errno);
    const Fault fault =
        wrong_usage("batch file " + in_quotes(settings.file) + ": " + reason, settings.file);
    return report({{}, fault}, "swctl", settings.style, output);
  }
  return Batch(root, settings, *source, output).run();
}

}  // namespace swsh
