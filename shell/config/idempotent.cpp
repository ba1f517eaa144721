// SPDX-License-Identifier: MIT
#include "config/idempotent.h"

#include <algorithm>
#include <set>

#include "config/change.h"
#include "config/file.h"
#include "number_list.h"
#include "objects/registry.h"
#include "run/words.h"
#include "text.h"

namespace swsh {
namespace {

std::vector<std::string> words_of(const char *path) {
  return split_words(path).words;
}

// "already so: vlan 10-12, port vlan 3"
std::string already_so(const std::vector<Changed> &same, const Board &board) {
  std::vector<std::string> names;
  for (size_t at = 0; at < same.size();) {
    const SettingKind &kind = kinds(board)[same[at].kind];
    std::set<int64_t> numbers;
    size_t next = at;
    for (; next < same.size() && same[next].kind == same[at].kind; ++next) {
      const Id &id = same[next].id;
      if (id.text.empty()) numbers.insert(id.number);
      if (!id.text.empty()) names.push_back(kind.title() + ' ' + id.text);
    }
    const bool is_one = !kind.merges && kind.usual({}) && numbers == std::set<int64_t>{0};
    if (is_one) names.push_back(kind.title());
    if (!numbers.empty() && !is_one)
      names.push_back(kind.title() + ' ' + number_list_text({numbers.begin(), numbers.end()}));
    at = next;
  }
  return "already so: " + join(names, ", ");
}

Content content_of(const State &state, const Changed &setting, const Board &board) {
  const Contents &contents = state.contents[setting.kind];
  const auto found = contents.find(setting.id);
  return found == contents.end() ? kinds(board)[setting.kind].usual(setting.id) : found->second;
}

}  // namespace

std::optional<Answer> run_if_needed(const Walk &found, const Context &context,
                                    std::vector<std::string> &notes) {
  const std::vector<std::string> path = command_path(command_table(), found);
  const Board board;
  // A command is about one object, but a VLAN is wanted by others too.
  const Snapshot before(context, board);
  State wanted = before.state();
  std::vector<Changed> changed;
  if (!take_settings(join(path, " "), found, context, board, wanted, changed)) return std::nullopt;
  std::erase_if(changed, [&](const Changed &each) {
    return content_of(before.state(), each, board) != content_of(wanted, each, board);
  });
  if (!changed.empty()) notes.push_back(join(found.path, " ") + ": " + already_so(changed, board));
  change_from(before, wanted, context, board);
  return Answer();
}

namespace {

// The words of a command, which a handler can be made for.
template <size_t size>
struct CommandWords {
  constexpr CommandWords(const char (&words)[size]) { std::ranges::copy(words, text); }
  char text[size] = {};
};

template <CommandWords add>
Answer replace(const Arguments &arguments, const Context &context) {
  const Board board;
  const Snapshot before(context, board);
  State wanted = before.state();
  Walk found;
  found.node = &command_table();
  found.arguments = arguments;
  for (const std::string &word : words_of(add.text))
    for (const Node &child : found.node->children)
      if (child.name == word) {
        found.node = &child;
        break;
      }
  State fresh(board);
  std::vector<Changed> changed;
  // What ages is no setting, and takes the place of what is there anyway.
  if (!take_settings(add.text, found, context, board, fresh, changed))
    return found.node->run(arguments, context);
  for (const Changed &each : changed) {
    const Content content = content_of(fresh, each, board);
    Draft(kinds(board)[each.kind], wanted.contents[each.kind]).put(each.id, content);
  }
  change_from(before, wanted, context, board);
  return {};
}

constexpr char kAdd[] = "add";
constexpr char kReplace[] = "replace";
constexpr char kReplaceHelp[] = "Add, in place of what is there";

struct Replacing {
  const char *add;
  Handler run;
};

template <CommandWords add>
constexpr Replacing replacing_by() {
  return {add.text, replace<add>};
}

constexpr Replacing kReplacing[] = {
    replacing_by<"acl add">(),
    replacing_by<"mac add">(),
    replacing_by<"mcast add">(),
    replacing_by<"mcast ip add">(),
    replacing_by<"vlan add">(),
    replacing_by<"vlan translate add">(),
    replacing_by<"vlan rule add translation">(),
    replacing_by<"vlan rule add double-tag">(),
    replacing_by<"vlan rule add mac">(),
    replacing_by<"vlan rule add ip4">(),
    replacing_by<"vlan rule add voice">(),
    replacing_by<"vlan rule add protocol">(),
};

Node *child_named(Node &node, const std::string &name) {
  for (Node &child : node.children)
    if (child.name == name) return &child;
  return nullptr;
}

// The command "add" once more, which puts aside what is there.
Node replacing(const Node &add, const std::string &name, const std::string &help, Handler run) {
  Node command = add;
  command.name = name;
  command.help = help;
  command.details = "What is there already is not touched.\n";
  command.run = run;
  return command;
}

}  // namespace

void add_replace_commands(Node &root) {
  for (const Replacing &each : kReplacing) {
    std::vector<std::string> words = words_of(each.add);
    const std::string last = words.back();
    if (last != kAdd) words.pop_back();
    words.pop_back();
    Node *node = &root;
    for (const std::string &word : words) node = child_named(*node, word);
    Node &add = *child_named(*node, kAdd);
    if (last == kAdd) {
      node->children.push_back(replacing(add, kReplace, kReplaceHelp, each.run));
      continue;
    }
    // "add" has a word for each sort of entry.
    const Node &sort = *child_named(add, last);
    Node command = replacing(sort, last, sort.help, each.run);
    if (child_named(*node, kReplace) == nullptr)
      node->children.push_back({.name = kReplace, .help = kReplaceHelp});
    child_named(*node, kReplace)->children.push_back(std::move(command));
  }
}

}  // namespace swsh
