// SPDX-License-Identifier: MIT
#include "run/batch.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <sys/stat.h>

#include "run/command.h"
#include "run/elements.h"
#include "run/session_words.h"
#include "run/words.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kStandardInput[] = "-";

// A command of the file: one line, or several that a backslash holds together.
struct Command {
  int64_t number = 0;  // of its first line
  std::string text;    // without the backslashes and line ends
  Line line;
};

class Source {
 public:
  // Null, with errno set, if the file cannot be opened.
  static std::unique_ptr<Source> open(const std::string &file) {
    if (file == kStandardInput) return std::make_unique<Source>(stdin, "stdin");
    FILE *opened = fopen(file.c_str(), "re");
    if (opened == nullptr) return nullptr;
    auto source = std::make_unique<Source>(opened, file);
    return source->is_directory() ? nullptr : std::move(source);
  }

  Source(FILE *file, std::string name) : file_(file), name_(std::move(name)) {}
  ~Source() {
    if (file_ != stdin) fclose(file_);
    free(buffer_);
  }
  Source(const Source &) = delete;
  Source &operator=(const Source &) = delete;

  const std::string &name() const { return name_; }
  int64_t number() const { return number_; }
  // Why reading stopped before the end; 0 if it did not.
  int failure() const { return failure_; }

  // The next command; none at the end of the file.
  std::optional<Command> next() {
    std::optional<std::string> text = read_line();
    if (!text) return std::nullopt;
    Command command = {number_, "", {}};
    Splitter splitter;
    while (text) {
      const bool continued = splitter.add(*text);
      if (continued) text->pop_back();
      command.text += *text;
      if (!continued) break;
      text = read_line();
    }
    command.line = splitter.finish();
    return command;
  }

 private:
  bool is_directory() const {
    struct stat status = {};
    const bool directory = fstat(fileno(file_), &status) == 0 && S_ISDIR(status.st_mode);
    if (directory) errno = EISDIR;
    return directory;
  }

  std::optional<std::string> read_line() {
    errno = 0;
    const ssize_t length = getline(&buffer_, &capacity_, file_);
    if (length < 0) {
      failure_ = ferror(file_) != 0 ? errno : 0;
      return std::nullopt;
    }
    ++number_;
    std::string text(buffer_, static_cast<size_t>(length));
    if (text.ends_with('\n')) text.pop_back();
    if (text.ends_with('\r')) text.pop_back();
    return text;
  }

  FILE *file_;
  std::string name_;
  char *buffer_ = nullptr;
  size_t capacity_ = 0;
  int64_t number_ = 0;
  int failure_ = 0;
};

class Batch {
 public:
  Batch(const Node &root, const BatchSettings &settings, Source &source, DataOutput &output)
      : root_(root), settings_(settings), source_(source), output_(output) {
    if (settings.style.format != Format::human)
      elements_.emplace(settings.style.format, settings.in_array, output);
  }

  Status run() {
    while (status_ == kDone || settings_.force) {
      const std::optional<Command> command = source_.next();
      if (!command || ends_session(command->line.words)) break;
      if (!command->line.words.empty() || !command->line.fault.empty()) run_one(*command);
    }
    if (source_.failure() != 0) report_unreadable();
    if (elements_) elements_->end();
    return status_;
  }

 private:
  void run_one(const Command &command) {
    if (command.line.fault.empty()) {
      show(command, run_command(root_, command.line.words, settings_.context));
    } else {
      show(command, {{}, wrong_usage(command.line.fault, command.text)});
    }
  }

  void report_unreadable() {
    const Command nowhere = {source_.number() + 1, "", {}};
    show(nowhere, {{}, wrong_usage(strerror(source_.failure()), source_.name())});
  }

  void show(const Command &command, const Outcome &outcome) {
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
