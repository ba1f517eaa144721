// SPDX-License-Identifier: MIT
#include "command/help.h"

#include <algorithm>

#include "command/value.h"
#include "run/options.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kProgram[] = "swctl";
constexpr size_t kMargin = 2;

// A line of help: what to write, and what it means.
struct Line {
  std::string left;
  std::string right;
};

std::string lines_text(const std::vector<Line> &lines) {
  size_t width = 0;
  for (const Line &line : lines) width = std::max(width, line.left.size());
  std::string all;
  for (const Line &line : lines) {
    const std::string left(kMargin, ' ');
    all += line.right.empty() ? left + line.left
                              : left + padded(line.left, width + kMargin) + line.right;
    all += '\n';
  }
  return all;
}

std::string keyword_usage(const Parameter &keyword) {
  const std::string value = value_usage(keyword.type);
  return value.empty() ? keyword.name : keyword.name + ' ' + value;
}

std::string optional_usage(const std::string &usage, bool required) {
  return required ? usage : '[' + usage + ']';
}

std::string parameters_usage(const Node &node) {
  std::string usage;
  for (const Parameter &each : node.positional) {
    usage += ' ' + optional_usage(each.name, each.required);
  }
  for (const Parameter &each : node.keywords) {
    usage += ' ' + optional_usage(keyword_usage(each), each.required);
  }
  return usage;
}

std::vector<Line> choice_lines(const Parameter &parameter) {
  std::vector<Line> lines;
  for (const Choice &each : parameter.type.choices) {
    if (!each.help.empty()) lines.push_back({"  " + each.word, each.help});
  }
  return lines;
}

std::string parameters_text(const Node &node) {
  std::vector<Line> lines;
  const auto add = [&](const Parameter &parameter, const std::string &left) {
    lines.push_back({left, described(parameter)});
    for (Line &line : choice_lines(parameter)) lines.push_back(std::move(line));
  };
  for (const Parameter &each : node.positional) add(each, each.name);
  for (const Parameter &each : node.keywords) add(each, keyword_usage(each));
  return lines.empty() ? "" : '\n' + lines_text(lines);
}

std::string children_text(const Node &node, bool is_root) {
  std::vector<Line> lines;
  for (const Node &child : node.children) lines.push_back({child.name, child.help});
  lines.push_back({kHelpWord, "Say what may come next, here and behind every word"});
  return (is_root ? "\nObjects:\n" : "\nCommands:\n") + lines_text(lines);
}

std::string options_text() {
  std::vector<Line> lines;
  for (const Option &option : options()) {
    if (!option.help.empty()) lines.push_back({option_usage(option), option.help});
  }
  return "\nOptions, with one dash or two:\n" + lines_text(lines);
}

std::string node_text(const Node &node, const std::vector<std::string> &path) {
  std::string all = "Usage: " + usage_line(node, path) + "\n\n" + node.help + ".\n";
  if (!node.details.empty()) all += node.details;
  all += node.run != nullptr ? parameters_text(node) : children_text(node, path.empty());
  return path.empty() ? all + options_text() : all;
}

Record parameter_record(const Parameter &parameter, bool positional) {
  return Record()
      .add(positional ? "place" : "word", parameter.name)
      .add("value", value_usage(parameter.type))
      .add("required", parameter.required)
      .add("help", described(parameter));
}

std::vector<Record> word_records(const Node &node) {
  std::vector<Record> words;
  for (const Node &child : node.children) {
    words.push_back(Record().add("word", child.name).add("help", child.help));
  }
  for (const Parameter &each : node.positional) words.push_back(parameter_record(each, true));
  for (const Parameter &each : node.keywords) words.push_back(parameter_record(each, false));
  return words;
}

}  // namespace

std::string described(const Parameter &parameter) {
  const bool has_choices = !parameter.type.choices.empty();
  const std::string values = has_choices ? "" : join(value_expected(parameter.type), " or ");
  return values.empty() ? parameter.help : parameter.help + ": " + values;
}

std::string usage_line(const Node &node, const std::vector<std::string> &path) {
  std::vector<std::string> words = path;
  words.insert(words.begin(), path.empty() ? "swctl [OPTIONS]" : kProgram);
  const std::string start = join(words, " ");
  if (node.run != nullptr) return start + parameters_usage(node);
  return start + (path.empty() ? " OBJECT COMMAND [KEYWORD VALUE]..." : " COMMAND ...");
}

Answer help_answer(const Node &node, const std::vector<std::string> &path) {
  Record record;
  record.add("usage", usage_line(node, path));
  record.add("help", node.help);
  record.add("words", word_records(node));
  return {Shape::text, {record}, node_text(node, path)};
}

std::string expected_text(const std::vector<Expected> &expected) {
  std::vector<Line> lines;
  for (const Expected &each : expected) lines.push_back({each.word, each.help});
  return lines.empty() ? "  end of command\n" : lines_text(lines);
}

}  // namespace swsh
