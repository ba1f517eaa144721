// SPDX-License-Identifier: MIT
#include "command/manual.h"

#include "command/help.h"
#include "command/value.h"
#include "run/options.h"
#include "text.h"

namespace swsh {
namespace {

// A backslash would begin an escape.
std::string escaped(const std::string &text) {
  std::string all;
  for (const char character : text) {
    all += character == '\\' ? std::string("\\e") : std::string(1, character);
  }
  return all;
}

// A word after a macro: it must not be taken for a macro of its own, as a
// short one or a lone sign might be.
std::string argument(const std::string &word) {
  constexpr size_t kLongestMacro = 3;
  return (word.size() <= kLongestMacro ? "\\&" : "") + escaped(word);
}

// Text, each sentence on a line of its own, none of which begins a macro.
std::string sentences(const std::string &plain) {
  const std::string text = escaped(plain);
  std::string all;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool is_blank = text[i] == ' ' || text[i] == '\n';
    const bool is_end = is_blank && i > 0 && text[i - 1] == '.';
    const bool is_start = all.empty() || all.back() == '\n';
    if (is_start && (text[i] == '.' || text[i] == '\'')) all += "\\&";
    all += is_end ? '\n' : is_blank ? ' ' : text[i];
  }
  while (!all.empty() && (all.back() == '\n' || all.back() == ' ')) all.pop_back();
  return all + '\n';
}

std::string item(const std::string &head, const std::string &text) {
  return ".It " + head + '\n' + text;
}

std::string list(const std::string &width, const std::string &items) {
  return items.empty() ? "" : ".Bl -tag -width " + width + '\n' + items + ".El\n";
}

std::string options_section() {
  std::string items;
  for (const Option &each : options()) {
    if (each.help.empty()) continue;
    std::string head = "Fl ";
    if (each.letter != 0) head += std::string(1, each.letter) + " , ";
    head += each.name;
    if (!each.value.empty()) head += " Ar " + argument(each.value);
    items += item(head, sentences(each.help + '.'));
  }
  return ".Sh OPTIONS\n" + list("Ds", items);
}

std::string keyword_head(const Parameter &keyword) {
  const std::string value = value_usage(keyword.type);
  return "Cm " + argument(keyword.name) + (value.empty() ? "" : " Ar " + argument(value));
}

std::string word_line(const std::string &head, bool required) {
  return (required ? "." : ".Op ") + head + '\n';
}

std::string parameter_item(const Parameter &parameter, const std::string &head) {
  std::string choices;
  for (const Choice &each : parameter.type.choices) {
    if (!each.help.empty())
      choices += item("Cm " + argument(each.word), sentences(each.help + '.'));
  }
  const bool is_any_word = parameter.type.kind == Kind::text;
  const std::string text = is_any_word ? parameter.help : described(parameter);
  return item(head, sentences(text + '.') + list("Ds -compact", choices));
}

// A head may grow long, so it has lines of its own.
std::string command_item(const Node &node, const std::string &path) {
  std::string head, words;
  const auto add = [&](const Parameter &parameter, const std::string &name) {
    head += word_line(name, parameter.required);
    words += parameter_item(parameter, name);
  };
  for (const Parameter &each : node.positional) add(each, "Ar " + argument(each.name));
  for (const Parameter &each : node.keywords) add(each, keyword_head(each));
  return item("Xo\n.Ic " + path + '\n' + head + ".Xc",
              sentences(node.help + ".\n" + node.details) + list("Ds -compact", words));
}

std::string command_items(const Node &node, const std::string &path) {
  if (node.run != nullptr) return command_item(node, path);
  std::string items = item("Ic " + path + " Ar COMMAND", sentences(node.help + '.'));
  for (const Node &child : node.children) items += command_items(child, path + ' ' + child.name);
  return items;
}

std::string object_section(const Node &object) {
  std::string all = ".Ss " + object.name + '\n';
  if (object.run != nullptr) return all + list("Ds", command_item(object, object.name));
  all += sentences(object.help + '.');
  std::string items;
  for (const Node &child : object.children) {
    items += command_items(child, object.name + ' ' + child.name);
  }
  return all + list("Ds", items);
}

}  // namespace

std::string manual_sections(const Node &root) {
  std::string all = options_section() + ".Sh COMMANDS\n";
  for (const Node &object : root.children) all += object_section(object);
  return all;
}

}  // namespace swsh
