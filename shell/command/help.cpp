// SPDX-License-Identifier: MIT
#include "command/help.h"

#include <algorithm>
#include <sstream>

#include "command/value.h"
#include "output/wrap.h"
#include "run/options.h"
#include "text.h"

namespace swsh {
namespace {

constexpr char kProgram[] = "swctl";
constexpr size_t kMargin = 2;
constexpr size_t kNarrowLeft = 20;  // the left side of lines may always have this

// A line of help: what to write, and what it means.
struct Line {
  std::string left;
  std::string right;
};

// Where the right side begins. Beside a few long words on the left it would be
// narrow; they have a line of their own then.
size_t right_column(const std::vector<Line> &lines, size_t width) {
  size_t longest = 0;
  for (const Line &line : lines) longest = std::max(longest, line.left.size());
  return kMargin + std::min(longest, std::max(width / 3, kNarrowLeft)) + kMargin;
}

std::string line_text(const Line &line, size_t column, size_t width) {
  const std::string left = std::string(kMargin, ' ') + line.left;
  if (line.right.empty()) return left + '\n';
  const bool fits = left.size() + kMargin <= column;
  const std::string start = fits ? padded(left, column) : left + '\n' + std::string(column, ' ');
  return start + wrapped(line.right, column, column, width) + '\n';
}

std::string lines_text(const std::vector<Line> &lines, size_t width) {
  const size_t column = right_column(lines, width);
  std::string all;
  for (const Line &line : lines) all += line_text(line, column, width);
  return all;
}

std::string keyword_usage(const Parameter &keyword) {
  const std::string value = value_usage(keyword.type);
  return value.empty() ? keyword.name : keyword.name + ' ' + value;
}

std::string optional_usage(const std::string &usage, bool required) {
  return required ? usage : '[' + usage + ']';
}

// What may follow the node's words: what belongs together is one part.
std::vector<std::string> usage_parts(const Node &node, bool is_root) {
  if (node.run == nullptr && is_root) return {"OBJECT", "COMMAND", "[KEYWORD VALUE]..."};
  if (node.run == nullptr) return {"COMMAND ..."};
  std::vector<std::string> parts;
  for (const Parameter &each : node.positional) {
    parts.push_back(optional_usage(each.name, each.required));
  }
  for (const Parameter &each : node.keywords) {
    parts.push_back(optional_usage(keyword_usage(each), each.required));
  }
  return parts;
}

std::string usage_start(const std::vector<std::string> &path) {
  std::vector<std::string> words = path;
  words.insert(words.begin(), path.empty() ? "swctl [OPTIONS]" : kProgram);
  return join(words, " ");
}

size_t longest_of(const std::vector<std::string> &parts) {
  size_t longest = 0;
  for (const std::string &part : parts) longest = std::max(longest, part.size());
  return longest;
}

// Later lines begin below the first part, if there is room.
std::string usage_text(const Node &node, const std::vector<std::string> &path, size_t width) {
  const std::string start = "Usage: " + usage_start(path);
  std::vector<std::string> parts = usage_parts(node, path.empty());
  const size_t below = start.size() + 1;
  const bool has_room = below <= width / 2 && below + longest_of(parts) <= width;
  const size_t indent = has_room ? below : 2 * kMargin;
  parts.insert(parts.begin(), start);
  return wrapped(parts, 0, indent, width) + "\n";
}

std::vector<Line> choice_lines(const Parameter &parameter) {
  std::vector<Line> lines;
  for (const Choice &each : parameter.type.choices) {
    if (!each.help.empty()) lines.push_back({"  " + each.word, each.help});
  }
  return lines;
}

std::string parameters_text(const Node &node, size_t width) {
  std::vector<Line> lines;
  const auto add = [&](const Parameter &parameter, const std::string &left) {
    lines.push_back({left, described(parameter)});
    for (Line &line : choice_lines(parameter)) lines.push_back(std::move(line));
  };
  for (const Parameter &each : node.positional) add(each, each.name);
  for (const Parameter &each : node.keywords) add(each, keyword_usage(each));
  return lines.empty() ? "" : '\n' + lines_text(lines, width);
}

std::string children_text(const Node &node, bool is_root, size_t width) {
  std::vector<Line> lines;
  for (const Node &child : node.children) lines.push_back({child.name, child.help});
  lines.push_back({kHelpWord, "Say what may come next, here and after every word"});
  return (is_root ? "\nObjects:\n" : "\nCommands:\n") + lines_text(lines, width);
}

std::string options_text(size_t width) {
  std::vector<Line> lines;
  for (const Option &option : options()) {
    if (!option.help.empty()) lines.push_back({option_usage(option), option.help});
  }
  return "\nOptions, with one dash or two:\n" + lines_text(lines, width);
}

// Details are written in lines; a narrow terminal has the same words in others.
std::string details_text(const std::string &details, size_t width) {
  std::string words;
  size_t longest = 0;
  std::istringstream lines(details);
  for (std::string line; std::getline(lines, line);) {
    words += (words.empty() ? "" : " ") + line;
    longest = std::max(longest, line.size());
  }
  return longest <= width ? details : wrapped(words, 0, 0, width) + '\n';
}

std::string node_text(const Node &node, const std::vector<std::string> &path, size_t width) {
  std::string all = usage_text(node, path, width) + '\n' + node.help + ".\n";
  all += details_text(node.details, width);
  all +=
      node.run != nullptr ? parameters_text(node, width) : children_text(node, path.empty(), width);
  return path.empty() ? all + options_text(width) : all;
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
  std::vector<std::string> parts = usage_parts(node, path.empty());
  parts.insert(parts.begin(), usage_start(path));
  return join(parts, " ");
}

Answer help_answer(const Node &node, const std::vector<std::string> &path, size_t width) {
  Record record;
  record.add("usage", usage_line(node, path));
  record.add("help", node.help);
  record.add("words", word_records(node));
  return {Shape::text, {record}, node_text(node, path, width)};
}

std::string expected_text(const std::vector<Expected> &expected, size_t width) {
  std::vector<Line> lines;
  for (const Expected &each : expected) lines.push_back({each.word, each.help});
  return lines.empty() ? "  end of command\n" : lines_text(lines, width);
}

}  // namespace swsh
