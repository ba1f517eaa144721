// SPDX-License-Identifier: MIT
#include <swctl/platform/field_read.h>

#include <algorithm>

#include "acl/actions.h"
#include "acl/qualifiers.h"
#include "acl/rules.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/plain.h"
#include "output/writer.h"
#include "run/words.h"
#include "text.h"

namespace swsh {
namespace {

// A rule as words: its form, "double template 5 ", and what it matches and does.
struct RuleText {
  bool is_double = false;
  std::optional<int64_t> template_index;
  std::string match;
  std::string actions;
  bool enabled = false;

  // Whether it is as after power-on.
  bool is_empty() const { return form().empty() && body().empty(); }
  std::string form() const;
  std::string body() const;
  Content words() const;
};

std::string RuleText::form() const {
  const std::string joined = is_double ? "double " : "";
  if (!template_index) return joined;
  return joined + "template " + std::to_string(*template_index) + ' ';
}

std::string RuleText::body() const {
  std::vector<std::string> words;
  if (!match.empty()) words.push_back(match);
  if (!actions.empty()) words.push_back("action " + actions);
  if (enabled) words.emplace_back("enable");
  return join(words, " ");
}

Content RuleText::words() const {
  if (is_empty()) return std::nullopt;
  return form() + body();
}

RuleText rule_in(const Content &content) {
  RuleText rule;
  if (!content) return rule;
  std::string rest = *content;
  const auto drop = [&](const std::string &word) {
    const bool there = rest.starts_with(word);
    if (there) rest.erase(0, word.size());
    return there;
  };
  rule.is_double = drop("double ");
  if (drop("template ")) {
    rule.template_index = std::stoll(rest);
    rest.erase(0, rest.find(' ') + 1);
  }
  if (rest.ends_with("enable")) {
    rule.enabled = true;
    rest.erase(rest.size() - std::min(rest.size(), sizeof " enable" - 1));
  }
  const size_t action = rest.starts_with("action ") ? 0 : rest.find(" action ");
  if (action != std::string::npos) {
    rule.actions = rest.substr(rest.find("action ", action) + sizeof "action");
    rest.erase(action);
  }
  rule.match = rest;
  return rule;
}

// Actions that have no name, or a port without an interface, cannot be written.
bool has_words(const std::vector<ReadAction> &actions) {
  return std::ranges::all_of(actions, [](const ReadAction &action) {
    const bool nameless = action.name.front() == 'w' && action.name.size() > 1 &&
                          action.name[1] >= '0' && action.name[1] <= '9';
    return !nameless && (action.parameter || !action.chip_port);
  });
}

void read_rule(Reader &reader, const swctl_platform_acl_rule &rule) {
  const std::vector<ReadAction> actions = actions_in(rule.action);
  RuleText text;
  text.is_double = rule.joined != 0;
  if (rule.written[CHIP_ACL_FIELD_TEMPLATE] != 0)
    text.template_index = rule.data[CHIP_ACL_FIELD_TEMPLATE][0];
  const Record match = match_record(rule);
  text.match = words_text(match);
  text.actions = actions_text(actions);
  text.enabled = rule.valid != 0;
  if (has_words(actions)) {
    reader.put({rule.index}, text.words());
  } else {
    reader.leave_out(std::to_string(rule.index), "no command writes its action " + text.actions);
  }
}

CommandError written_twice(int64_t rule) {
  const std::string number = std::to_string(rule);
  return CommandError(wrong_usage("rule " + number + " is there already", number));
}

void take_new_rule(Statement &statement, Draft &draft) {
  const Id id = {statement.take("RULE")->number};
  RuleText rule = rule_in(draft.at(id));
  if (!rule.body().empty()) throw written_twice(id.number);
  rule.match = conditions_text(conditions_of(statement.arguments));
  if (statement.arguments.has("action"))
    rule.actions = planned_text(actions_of(statement.arguments.word("action")));
  rule.enabled = statement.arguments.has("enable");
  for (const Parameter &each : qualifier_parameters()) statement.take(each.name);
  statement.take("action");
  statement.take("enable");
  draft.put(id, rule.words());
}

template <typename Step>
void change_rule(Draft &draft, int64_t number, Step step) {
  RuleText rule = rule_in(draft.at({number}));
  step(rule);
  draft.put({number}, rule.words());
}

void join_rules(Draft &draft, int64_t first) {
  change_rule(draft, first, [](RuleText &rule) {
    rule.is_double = true;
    rule.template_index = 0;
  });
  change_rule(draft, first + 1, [](RuleText &rule) { rule.template_index = 1; });
}

// What acl init joins.
struct Block {
  int64_t first;
  int64_t end;
};
constexpr Block kJoinedBlocks[] = {{0, 256}, {1024, 1280}, {1280, 1536}};

template <typename Visit>
void each_joined_pair(Visit visit) {
  for (const Block &block : kJoinedBlocks)
    for (int64_t rule = block.first; rule < block.end; rule += 2) visit(rule);
}

bool take_acl(Statement &statement, Draft &draft) {
  const std::string &command = statement.command;
  if (command == "acl add") {
    take_new_rule(statement, draft);
  } else if (command == "acl init") {
    each_joined_pair([&](int64_t rule) { join_rules(draft, rule); });
  } else if (command == "acl double") {
    join_rules(draft, statement.take("RULE")->number);
  } else if (command == "acl template") {
    const int64_t index = statement.take("TEMPLATE")->number;
    change_rule(draft, statement.take("RULE")->number,
                [=](RuleText &rule) { rule.template_index = index; });
  } else {
    for (const int64_t rule : statement.take("RULES")->numbers)
      change_rule(draft, rule, [&](RuleText &text) {
        if (command == "acl del") text = {};
        if (command == "acl enable") text.enabled = true;
      });
  }
  return true;
}

// A form is not taken back, and the body comes on top of none.
bool needs_removal(const std::string &from, const std::string &to) {
  const RuleText before = rule_in(from);
  const RuleText after = rule_in(to);
  const bool less_form =
      (before.is_double && !after.is_double) || (before.template_index && !after.template_index);
  const bool less_body = before.match != after.match || before.actions != after.actions ||
                         (before.enabled && !after.enabled);
  return less_form || (less_body && !before.body().empty());
}

void change_acl(const Change &change, Commands &commands) {
  if (!change.to) {
    commands.push_back("acl del " + change.ids);
    return;
  }
  const RuleText rule = rule_in(change.to);
  const RuleText before = rule_in(change.from);
  if (rule.template_index && rule.template_index != before.template_index)
    commands.push_back("acl template " + change.ids + ' ' + std::to_string(*rule.template_index));
  if (before.body().empty() && !rule.body().empty())
    commands.push_back("acl add " + change.ids + ' ' + rule.body());
  else if (!before.enabled && rule.enabled)
    commands.push_back("acl enable " + change.ids);
}

bool is_joined(const Contents &contents, int64_t rule) {
  const auto found = contents.find({rule});
  return found != contents.end() && found->second && found->second->starts_with("double ");
}

void join_contents(Contents &contents, int64_t rule) {
  const auto set_form = [&](int64_t number, bool first) {
    Content &content = contents[{number}];
    RuleText text = rule_in(content);
    if (first) text.is_double = true;
    text.template_index = first ? 0 : 1;
    content = text.words();
  };
  set_form(rule, true);
  set_form(rule + 1, false);
}

// Where most of the pairs that acl init joins are joined, it is shorter than joining
// them one by one.
bool wants_init(const Contents &now, const Contents &wanted) {
  size_t here = 0;
  size_t there = 0;
  size_t pairs = 0;
  each_joined_pair([&](int64_t rule) {
    ++pairs;
    here += is_joined(now, rule) ? 1 : 0;
    there += is_joined(wanted, rule) ? 1 : 0;
  });
  return 2 * there > pairs && 2 * here <= pairs;
}

// Joining two rules writes to both, so it comes before the rest.
void prepare_acl(Contents &now, const Contents &wanted, Commands &commands) {
  if (wants_init(now, wanted)) {
    commands.emplace_back("acl init");
    each_joined_pair([&](int64_t rule) { join_contents(now, rule); });
  }
  for (const auto &[id, content] : wanted) {
    if (!is_joined(wanted, id.number) || is_joined(now, id.number)) continue;
    commands.push_back("acl double " + std::to_string(id.number));
    join_contents(now, id.number);
  }
}

SettingKind rules_kind() {
  SettingKind kind;
  kind.object = "acl";
  kind.needs = {"swctl_platform_acl_rule_next"};
  kind.removal_merges = true;
  kind.commands = {"acl add", "acl init", "acl double", "acl template", "acl enable", "acl del"};
  kind.usual = [](const Id &) { return Content(); };
  kind.read = [](Reader &reader) {
    each_rule(reader.context.unit,
              [&](const swctl_platform_acl_rule &rule) { read_rule(reader, rule); });
  };
  kind.take = take_acl;
  kind.change = change_acl;
  kind.remade = needs_removal;
  kind.prepare = prepare_acl;
  return kind;
}

}  // namespace

void add_acl_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(rules_kind());
  kinds.push_back(plain_kind({.name = "miss",
                              .command = "acl miss % @",
                              .ids = board.all_interfaces(),
                              .read = [](const Reader &reader, int64_t interface) -> int64_t {
                                const Port port = reader.board.port(interface);
                                return ask(SWSH_OPTIONAL_CALL(swctl_platform_acl_miss_get), port,
                                           reader.context.unit, static_cast<uint32_t>(port.chip));
                              },
                              .usual = CHIP_ACL_MISS_FORWARD,
                              .needs = {"swctl_platform_acl_miss_get"}}));
}

}  // namespace swsh
