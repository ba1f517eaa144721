// SPDX-License-Identifier: MIT
#include "config/file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unordered_map>

#include "command/walker.h"
#include "objects/registry.h"
#include "run/source.h"
#include "text.h"

namespace swsh {
namespace {

// The kinds that a command may be of.
const std::vector<size_t> &kinds_of(const std::string &command, const Board &board) {
  static const auto all = [&] {
    std::unordered_map<std::string, std::vector<size_t>> by_command;
    for (size_t number = 0; number < kinds(board).size(); ++number)
      for (const std::string &each : kinds(board)[number].commands)
        by_command[each].push_back(number);
    return by_command;
  }();
  static const std::vector<size_t> none;
  const auto found = all.find(command);
  return found == all.end() ? none : found->second;
}

CommandError no_setting(const std::string &command, const std::string &word) {
  return CommandError(
      wrong_usage(in_quotes(word.empty() ? command : word) + " makes no setting of a configuration",
                  word.empty() ? command : word));
}

void expect_all_taken(const Walk &found, const Statement &statement) {
  for (const auto *list : {&found.node->positional, &found.node->keywords})
    for (const Parameter &each : *list)
      if (found.arguments.has(each.name) &&
          std::ranges::find(statement.taken, each.name) == statement.taken.end())
        throw no_setting(statement.command, each.name);
}

}  // namespace

bool take_settings(const std::string &command, const Walk &found, const Context &context,
                   const Board &board, State &state, std::vector<Changed> &changed) {
  Statement statement(command, found.arguments, board);
  bool taken = false;
  for (const size_t number : kinds_of(command, board)) {
    const SettingKind &kind = kinds(board)[number];
    Draft draft(kind, state.contents[number]);
    if (!kind.take(statement, draft)) continue;
    taken = true;
    if (kind.on_unit_zero && context.unit != 0)
      throw CommandError(
          wrong_usage("the library reaches unit 0 only", std::to_string(context.unit), {"unit 0"}));
    for (const Id &id : draft.changed()) changed.push_back({number, id});
  }
  if (taken) expect_all_taken(found, statement);
  return taken;
}

namespace {

// The places of what was set, by kind and ID.
using Places = std::vector<std::map<Id, int64_t>>;

class FileReader {
 public:
  FileReader(const Context &context, const Board &board)
      : context_(context), board_(board), file_{State(board), {}}, places_(kinds(board).size()) {}

  void read(Source &source) {
    name_ = source.name();
    while (std::optional<FileCommand> command = source.next()) {
      if (command->line.words.empty() && command->line.fault.empty()) continue;
      line_ = command->number;
      take(*command);
    }
    if (source.failure() == 0) return;
    line_ = source.number() + 1;
    complain(wrong_usage(strerror(source.failure()), source.name()));
  }

  FileState finish() {
    check_owners();
    check_kinds();
    std::ranges::stable_sort(file_.faults, {}, &LineFault::line);
    return std::move(file_);
  }

 private:
  void complain(Fault fault) {
    file_.faults.push_back({line_, name_ + ':' + std::to_string(line_), std::move(fault)});
  }

  void take(const FileCommand &command) {
    if (!command.line.fault.empty()) return complain(wrong_usage(command.line.fault, command.text));
    const Walk found = walk(command_table(), command.line.words);
    if (found.wrong) return complain(*found.wrong);
    if (found.missing) return complain(*found.missing);
    try {
      if (found.help) throw no_setting(kHelpWord, "");
      take_walk(found);
    } catch (const CommandError &error) {
      if (error.fault().status == kRefused) throw;  // the platform's, not the file's
      Fault fault = error.fault();
      fault.context = join(found.path, " ");
      complain(std::move(fault));
    }
  }

  void take_walk(const Walk &found) {
    const std::string command = join(command_path(command_table(), found), " ");
    std::vector<Changed> changed;
    if (!take_settings(command, found, context_, board_, file_.state, changed))
      throw no_setting(command, "");
    for (const auto &[number, id] : changed) places_[number][id] = line_;
  }

  bool is_there(const Owner &owner) const {
    for (size_t number = 0; number < kinds(board_).size(); ++number) {
      const SettingKind &kind = kinds(board_)[number];
      if (kind.title() != owner.kind) continue;
      const Contents &contents = file_.state.contents[number];
      const auto found = contents.find(owner.id);
      return (found == contents.end() ? kind.usual(owner.id) : found->second).has_value();
    }
    return false;
  }

  // What a setting belongs to has to be made by the same file.
  void check_owners() {
    for (size_t number = 0; number < places_.size(); ++number) {
      const SettingKind &kind = kinds(board_)[number];
      if (!kind.owner) continue;
      for (const auto &[id, content] : file_.state.contents[number]) {
        const std::optional<Owner> owner = kind.owner(id);
        if (!content || is_there(*owner)) continue;
        const std::string thing = owner->kind + ' ' + std::to_string(owner->id.number);
        line_ = places_[number][id];
        complain(wrong_usage("the file makes no " + thing, thing));
      }
    }
  }

  void check_kinds() {
    for (size_t number = 0; number < places_.size(); ++number) {
      const SettingKind &kind = kinds(board_)[number];
      if (!kind.check) continue;
      kind.check(file_.state.contents[number], [&](const Id &id, const std::string &message) {
        line_ = places_[number][id];
        complain(wrong_usage(message, std::nullopt));
      });
    }
  }

  const Context &context_;
  const Board &board_;
  FileState file_;
  Places places_;
  std::string name_;
  int64_t line_ = 0;
};

}  // namespace

FileState read_file(const std::string &path, const Context &context, const Board &board) {
  const std::unique_ptr<Source> source = Source::open(path);
  if (source == nullptr)
    throw CommandError(wrong_usage(in_quotes(path) + ": " + strerror(errno), path));
  FileReader reader(context, board);
  reader.read(*source);
  return reader.finish();
}

FileState read_text(const std::string &name, const std::string &text, const Context &context,
                    const Board &board) {
  std::string copy = text;
  FileReader reader(context, board);
  if (!copy.empty()) {
    Source source(fmemopen(copy.data(), copy.size(), "r"), name);
    reader.read(source);
  }
  return reader.finish();
}

void expect_good(const FileState &file) {
  if (file.faults.empty()) return;
  Fault all = file.faults.front().fault;
  all.context.clear();
  all.suggestions.clear();
  all.expected.clear();
  const size_t count = file.faults.size();
  all.message = std::to_string(count) + (count == 1 ? " fault" : " faults");
  for (const LineFault &each : file.faults)
    all.details.push_back(each.place + ": " + fault_line(each.fault));
  throw CommandError(all);
}

}  // namespace swsh
