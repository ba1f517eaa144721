// SPDX-License-Identifier: MIT
#include <ctime>

#include "config/change.h"
#include "config/file.h"
#include "config/lines.h"
#include "config/pending.h"
#include "config/store.h"
#include "fault.h"
#include "objects/registry.h"
#include "text.h"

namespace swsh {
namespace {

constexpr int64_t kLongestConfirmation = 86400;
constexpr char kRunning[] = "running";

std::string object_chosen(const Arguments &arguments) {
  return arguments.has("OBJECT") ? arguments.word("OBJECT") : "";
}

Record line_record(const TextLine &line) {
  const bool is_read = line.unread == nullptr;
  const bool misses = !is_read && !line.unread->missing.empty();
  return Record()
      .add("object", line.object)
      .add("setting", line.setting)
      .add("command", is_read ? Value(line.command) : Value(nullptr))
      .add("reason", is_read ? Value(nullptr) : Value(line.unread->reason))
      .add("missing", misses ? Value(line.unread->missing) : Value(nullptr));
}

Answer show_config(const Arguments &arguments, const Context &context) {
  const Board board;
  const State state = read_state(context, board, object_chosen(arguments));
  Answer answer = {Shape::text, {}, ""};
  for (const TextLine &line : text_lines(state, board)) {
    answer.records.push_back(line_record(line));
    answer.text += line.text() + '\n';
  }
  return answer;
}

Answer save_config(const Arguments &arguments, const Context &context) {
  const Board board;
  const std::string text = text_of(read_state(context, board), board);
  write_whole(arguments.word("FILE"), text);
  return {};
}

State good_file(const std::string &path, const Context &context, const Board &board) {
  FileState file = read_file(path, context, board);
  expect_good(file);
  return std::move(file.state);
}

// The process that would bring the old configuration back waits before anything is changed:
// it does so too if this one is killed half-way.
void load_until_confirmed(const State &target, int64_t seconds, const Context &context,
                          const Board &board) {
  const Snapshot before(context, board);
  await_confirmation(context.unit, seconds, text_of(before.state(), board));
  try {
    change_from(before, target, context, board);
  } catch (const CommandError &) {
    confirm(context.unit);
    throw;
  }
}

Answer load_config(const Arguments &arguments, const Context &context) {
  const Board board;
  const State target = good_file(arguments.word("FILE"), context, board);
  if (arguments.has("confirm")) {
    load_until_confirmed(target, arguments.number("confirm"), context, board);
  } else {
    change_to(target, context, board);
  }
  return {};
}

Answer confirm_config(const Arguments &, const Context &context) {
  if (!confirm(context.unit))
    throw CommandError(wrong_usage("no load waits for a confirmation", std::nullopt));
  return {};
}

Answer keep_config(const Arguments &arguments, const Context &context) {
  const Board board;
  keep_checkpoint(context.unit, arguments.word("NAME"), text_of(read_state(context, board), board));
  return {};
}

Answer roll_back(const Arguments &arguments, const Context &context) {
  const Board board;
  const std::string file = checkpoint_file(context.unit, arguments.word("NAME"));
  change_to(good_file(file, context, board), context, board);
  return {};
}

Answer forget_config(const Arguments &arguments, const Context &context) {
  forget_checkpoint(context.unit, arguments.word("NAME"));
  return {};
}

std::string time_text(int64_t time) {
  const auto seconds = static_cast<time_t>(time);
  char text[sizeof "2000-01-01T00:00:00+0000"];
  strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S%z", localtime(&seconds));
  return text;
}

Answer list_checkpoints(const Arguments &, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const Checkpoint &each : checkpoints(context.unit))
    answer.records.push_back(
        Record().add("checkpoint", each.name).add("time", time_text(each.time)));
  return answer;
}

Answer check_config(const Arguments &arguments, const Context &context) {
  const Board board;
  expect_good(read_file(arguments.word("FILE"), context, board));
  return {};
}

// A configuration to compare, by the name that it has in the answer.
struct Side {
  std::string name;
  State state;
};

// Without files, what is after power-on and what runs; with one, what runs and the file.
std::vector<Side> sides_of(const Arguments &arguments, const Context &context, const Board &board) {
  std::vector<Side> sides;
  if (!arguments.has("FILE")) sides.push_back({"power-on", State(board)});
  if (!arguments.has("FILE2")) sides.push_back({kRunning, read_state(context, board)});
  for (const char *name : {"FILE", "FILE2"})
    if (arguments.has(name)) {
      const std::string &path = arguments.word(name);
      sides.push_back({path, good_file(path, context, board)});
    }
  return sides;
}

std::vector<std::string> lines_of(const State &state, const Board &board) {
  std::vector<std::string> lines;
  for (const TextLine &line : text_lines(state, board))
    if (line.unread == nullptr) lines.push_back(line.command);
  return lines;
}

Answer diff_config(const Arguments &arguments, const Context &context) {
  const Board board;
  const std::vector<Side> sides = sides_of(arguments, context, board);
  Answer answer = {Shape::text, {}, ""};
  const std::vector<Step> steps = plan(sides[0].state, sides[1].state, board);
  for (const Step &step : steps) {
    const SettingKind &kind = kinds(board)[step.kind];
    answer.records.push_back(Record()
                                 .add("object", kind.object)
                                 .add("setting", kind.title())
                                 .add("command", step.command));
    if (arguments.has("commands")) answer.text += step.command + '\n';
  }
  if (!arguments.has("commands"))
    answer.text = unified_diff(sides[0].name, lines_of(sides[0].state, board), sides[1].name,
                               lines_of(sides[1].state, board));
  return answer;
}

std::vector<Choice> config_objects() {
  std::vector<Choice> objects;
  for (const char *object : {"acl", "dos", "flood", "mac", "mcast", "meter", "mirror", "port",
                             "qos", "storm", "stp", "trap", "trunk", "vlan"})
    objects.push_back({object, static_cast<int64_t>(objects.size()), ""});
  return objects;
}

Parameter file_parameter(const char *name, const char *help, bool is_required) {
  return {.name = name, .type = text(), .help = help, .required = is_required};
}

Node show_config_command() {
  return {.name = "show",
          .help = "Show the configuration as commands",
          .positional = {{.name = "OBJECT",
                          .type = choice(config_objects()),
                          .help = "Only settings of this object"}},
          .details =
              "What differs from power-on, as commands in an order that loads. What\n"
              "this platform cannot read is a comment.\n",
          .run = show_config};
}

Node load_config_command() {
  return {.name = "load",
          .help = "Change the chip to a configuration",
          .positional = {file_parameter("FILE", "Configuration; - is standard input", true)},
          .keywords = {{.name = "confirm",
                        .type = number(1, kLongestConfirmation, "seconds"),
                        .help = "Take it back after this time without config confirm"}},
          .details =
              "Changes what differs and nothing else; what the file does not make is made as\n"
              "after power-on. The file is checked whole before anything is changed. What is\n"
              "refused half-way is put back, and what cannot be is named.\n",
          .run = load_config};
}

Node diff_config_command() {
  return {.name = "diff",
          .help = "Show what differs",
          .positional = {file_parameter("FILE", "Compared with what runs", false),
                         file_parameter("FILE2", "Compared with FILE instead", false)},
          .keywords = {{.name = "commands",
                        .type = flag(),
                        .help = "The commands that make the first the second"}},
          .details = "Without a file, what runs is compared with what is after power-on.\n",
          .run = diff_config};
}

Node name_command(const char *name, const char *help, Handler run) {
  return {.name = name,
          .help = help,
          .positional = {file_parameter("NAME", "Name of the checkpoint", true)},
          .details =
              "Checkpoints are files below /var/lib/swctl, or SWCTL_STATE_DIRECTORY; at\n"
              "most 50 are kept of a unit.\n",
          .run = run};
}

}  // namespace

Node config_object() {
  return {
      .name = "config",
      .help = "The configuration as text",
      .children = {show_config_command(),
                   {.name = "save",
                    .help = "Write the configuration to a file",
                    .positional = {file_parameter("FILE", "Written whole or not at all", true)},
                    .run = save_config},
                   load_config_command(),
                   diff_config_command(),
                   {.name = "check",
                    .help = "Say everything that is wrong with a configuration",
                    .positional = {file_parameter("FILE", "Configuration", true)},
                    .details = "Nothing is changed.\n",
                    .run = check_config},
                   {.name = "confirm",
                    .help = "Keep what a load with confirm has made",
                    .run = confirm_config},
                   name_command("checkpoint", "Keep the configuration under a name", keep_config),
                   name_command("rollback", "Change the chip to a checkpoint", roll_back),
                   name_command("forget", "Remove a checkpoint", forget_config),
                   {.name = "checkpoints",
                    .help = "Show the checkpoints",
                    .run = list_checkpoints}},
  };
}

}  // namespace swsh
