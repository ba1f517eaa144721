// SPDX-License-Identifier: MIT
#include <swctl/platform/field_read.h>

#include <algorithm>
#include <set>

#include "acl/actions.h"
#include "acl/qualifiers.h"
#include "acl/rules.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "config/kinds.h"
#include "config/plain.h"
#include "number_list.h"
#include "output/writer.h"
#include "run/words.h"
#include "text.h"

namespace swsh {
namespace {

// A rule as words: its form, "double template 5 ", and what it matches and does. Deleting
// a rule leaves its form; template 0 is none.
struct RuleText {
  bool is_double = false;
  int64_t template_index = 0;
  std::string match;
  std::string actions;
  bool enabled = false;

  // Whether it is as after power-on.
  bool is_empty() const { return form().empty() && body().empty(); }
  std::string form() const;
  std::string body() const;
  Content words() const;
  void clear_body() {
    match.clear();
    actions.clear();
    enabled = false;
  }
};

std::string RuleText::form() const {
  const std::string joined = is_double ? "double " : "";
  if (template_index == 0) return joined;
  return joined + "template " + std::to_string(template_index) + ' ';
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

void read_rule(SettingReader &reader, const swctl_platform_acl_rule &rule) {
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
  const Content before = draft.at(id);
  RuleText rule = rule_in(before);
  const bool is_new = rule.body().empty();
  rule.match = conditions_text(conditions_of(statement.arguments));
  if (statement.arguments.has("action"))
    rule.actions = planned_text(actions_of(statement.arguments.word("action")));
  rule.enabled = statement.arguments.has("enable");
  for (const Parameter &each : qualifier_parameters()) statement.take(each.name);
  statement.take("action");
  statement.take("enable");
  if (!is_new && rule.words() != before) throw written_twice(id.number);
  draft.put(id, rule.words());
}

template <typename Step>
void change_rule(Draft &draft, int64_t number, Step step) {
  RuleText rule = rule_in(draft.at({number}));
  step(rule);
  draft.put({number}, rule.words());
}

void set_joined(Draft &draft, int64_t first, bool joined) {
  change_rule(draft, first, [=](RuleText &rule) {
    rule.is_double = joined;
    rule.template_index = 0;
  });
  change_rule(draft, first + 1, [=](RuleText &rule) { rule.template_index = joined ? 1 : 0; });
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
    each_joined_pair([&](int64_t rule) { set_joined(draft, rule, true); });
  } else if (command == "acl double" || command == "acl single") {
    set_joined(draft, statement.take("RULE")->number, command == "acl double");
  } else if (command == "acl template") {
    const int64_t index = statement.take("TEMPLATE")->number;
    change_rule(draft, statement.take("RULE")->number,
                [=](RuleText &rule) { rule.template_index = index; });
  } else {
    for (const int64_t rule : statement.take("RULES")->numbers)
      change_rule(draft, rule, [&](RuleText &text) {
        if (command == "acl del") text.clear_body();
        if (command == "acl enable") text.enabled = true;
      });
  }
  return true;
}

// What prepare_acl() leaves to do.
void change_acl(const Change &change, Commands &commands) {
  const RuleText rule = rule_in(change.to);
  if (rule_in(change.from).body().empty()) {
    commands.push_back("acl add " + change.ids + ' ' + rule.body());
  } else {
    commands.push_back("acl enable " + change.ids);
  }
}

// Makes the forms of the rules, and deletes what is to go or to become something else.
class Former {
 public:
  Former(Contents &now, const Contents &wanted, Commands &commands)
      : now_(now), wanted_(wanted), commands_(commands) {}

  void run() {
    std::set<int64_t> rules;
    for (const auto &[id, content] : now_) rules.insert(id.number);
    for (const auto &[id, content] : wanted_) rules.insert(id.number);
    delete_bodies(rules);
    for (const int64_t rule : rules)
      if (here(rule).is_double && !there(rule).is_double) join(rule, "single", false);
    if (wants_init()) {
      commands_.emplace_back("acl init");
      each_joined_pair([&](int64_t rule) { join(rule, nullptr, true); });
    }
    for (const int64_t rule : rules)
      if (there(rule).is_double && !here(rule).is_double) join(rule, "double", true);
    for (int64_t rule = 0; rule <= kLastRule; ++rule) set_template(rule);
  }

 private:
  static RuleText rule_of(const Contents &contents, int64_t rule) {
    const auto found = contents.find({rule});
    return found == contents.end() ? RuleText() : rule_in(found->second);
  }
  RuleText here(int64_t rule) const { return rule_of(now_, rule); }
  RuleText there(int64_t rule) const { return rule_of(wanted_, rule); }

  // Nothing is left of a rule that is as after power-on.
  void put(int64_t rule, const RuleText &text) {
    if (text.is_empty()) {
      now_.erase({rule});
    } else {
      now_[{rule}] = text.words();
    }
  }

  void delete_bodies(const std::set<int64_t> &rules) {
    std::vector<int64_t> gone;
    for (const int64_t rule : rules) {
      RuleText text = here(rule);
      const RuleText wanted = there(rule);
      const bool stays = text.match == wanted.match && text.actions == wanted.actions &&
                         (wanted.enabled || !text.enabled);
      if (stays || text.body().empty()) continue;
      gone.push_back(rule);
      text.clear_body();
      put(rule, text);
    }
    if (!gone.empty()) commands_.push_back("acl del " + number_list_text(gone));
  }

  // Where most of the pairs that acl init joins are joined, it is shorter than joining
  // them one by one.
  bool wants_init() const {
    size_t joined = 0;
    size_t wanted = 0;
    size_t pairs = 0;
    each_joined_pair([&](int64_t rule) {
      ++pairs;
      joined += here(rule).is_double ? 1 : 0;
      wanted += there(rule).is_double ? 1 : 0;
    });
    return 2 * wanted > pairs && 2 * joined <= pairs;
  }

  void join(int64_t rule, const char *command, bool joined) {
    if (command != nullptr)
      commands_.push_back(std::string("acl ") + command + ' ' + std::to_string(rule));
    RuleText first = here(rule);
    first.is_double = joined;
    first.template_index = 0;
    put(rule, first);
    RuleText second = here(rule + 1);
    second.template_index = joined ? 1 : 0;
    put(rule + 1, second);
  }

  void set_template(int64_t rule) {
    RuleText text = here(rule);
    const int64_t wanted = there(rule).template_index;
    if (text.template_index == wanted) return;
    commands_.push_back("acl template " + std::to_string(rule) + ' ' + std::to_string(wanted));
    text.template_index = wanted;
    put(rule, text);
  }

  Contents &now_;
  const Contents &wanted_;
  Commands &commands_;
};

void prepare_acl(Contents &now, const Contents &wanted, Commands &commands) {
  Former(now, wanted, commands).run();
}

SettingKind rules_kind() {
  SettingKind kind;
  kind.object = "acl";
  kind.needs = {"swctl_platform_acl_rule_next"};
  kind.commands = {"acl add",      "acl init",   "acl double", "acl single",
                   "acl template", "acl enable", "acl del"};
  kind.usual = [](const Id &) { return Content(); };
  kind.read = [](SettingReader &reader) {
    each_rule(reader.context.unit,
              [&](const swctl_platform_acl_rule &rule) { read_rule(reader, rule); });
  };
  kind.take = take_acl;
  kind.change = change_acl;
  kind.prepare = prepare_acl;
  return kind;
}

}  // namespace

void add_acl_kinds(Kinds &kinds, const Board &board) {
  kinds.push_back(rules_kind());
  kinds.push_back(
      plain_kind({.name = "miss",
                  .command = "acl miss % @",
                  .ids = board.all_interfaces(),
                  .read = [](const SettingReader &reader, int64_t interface) -> int64_t {
                    const Port port = reader.board.port(interface);
                    return ask(SWSH_OPTIONAL_CALL(swctl_platform_acl_miss_get), port,
                               reader.context.unit, static_cast<uint32_t>(port.chip));
                  },
                  .usual = CHIP_ACL_MISS_FORWARD,
                  .needs = {"swctl_platform_acl_miss_get"}}));
}

}  // namespace swsh
