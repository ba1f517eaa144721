// SPDX-License-Identifier: MIT
#include "run/batch.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

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
    while (status_ == kDone || settings_.force) {
      const std::optional<FileCommand> command = source_.next();
      if (!command || ends_session(command->line.words)) break;
      if (!command->line.words.empty() || !command->line.fault.empty()) run_one(*command);
    }
    if (source_.failure() != 0) report_unreadable();
    if (elements_) elements_->end();
    return status_;
  }

 private:
  void run_one(const FileCommand &command) {
    if (command.line.fault.empty()) {
      show(command, run_command(root_, command.line.words, settings_.context));
    } else {
      show(command, {{}, wrong_usage(command.line.fault, command.text)});
    }
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
  Status status_ = kDone;
};

}  // namespace

Status run_batch(const Node &root, const BatchSettings &settings, DataOutput &output) {
  const std::unique_ptr<Source> source = Source::open(settings.file);
  if (source == nullptr) {
    const std::string reason = strerror(errno);
    const Fault fault =
        wrong_usage("batch file " + quoted(settings.file) + ": " + reason, settings.file);
    return report({{}, fault}, "swctl", settings.style, output);
  }
  return Batch(root, settings, *source, output).run();
}

}  // namespace swsh
