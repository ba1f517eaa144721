// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include <algorithm>

#include "acl/actions.h"
#include "acl/qualifiers.h"
#include "acl/rules.h"
#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

constexpr uint32_t kBytes = 1;

constexpr auto kDestroy = SWSH_CALL(user_field_entry_destroy);

std::string rule_name(int64_t rule) {
  return "rule " + std::to_string(rule);
}

std::string counter_name(int64_t counter) {
  return "counter " + std::to_string(counter);
}

Record rule_record(const swctl_platform_acl_rule &rule) {
  const Record match = match_record(rule);
  Record record;
  record.add("rule", int64_t{rule.index});
  record.add("enabled", rule.valid != 0);
  record.add("match", match, match.fields.empty() ? "all" : "");
  const std::vector<ReadAction> actions = actions_in(rule.action);
  record.add("actions", action_records(actions), actions_text(actions));
  if (rule.written[CHIP_ACL_FIELD_TEMPLATE] != 0) {
    record.add_detail("template", int64_t{rule.data[CHIP_ACL_FIELD_TEMPLATE][0]});
  } else {
    record.add_detail("template", nullptr);
  }
  record.add_detail("double", rule.joined != 0);
  return record;
}

Answer show_acl(const Arguments &arguments, const Context &context) {
  const bool chosen = arguments.has("RULES");
  const auto wanted = [&](const swctl_platform_acl_rule &rule) {
    if (!chosen) return is_in_use(rule);
    const std::vector<int64_t> &numbers = arguments.numbers("RULES");
    return std::binary_search(numbers.begin(), numbers.end(), rule.index);
  };
  if (chosen) expect_rules(context.unit, arguments.numbers("RULES"));
  Answer answer = {arguments.has("detail") ? Shape::detail : Shape::table, {}, ""};
  each_rule(context.unit, [&](const swctl_platform_acl_rule &rule) {
    if (wanted(rule)) answer.records.push_back(rule_record(rule));
  });
  return answer;
}

void expect_free(const Context &context, int32_t rule) {
  if (!is_in_use(context.unit, rule)) return;
  const std::string number = std::to_string(rule);
  throw CommandError(wrong_usage("rule " + number + " is in use", number,
                                 {"a free rule, or acl del " + number + " before"}));
}

struct RulePlan {
  int32_t rule;
  std::vector<Condition> conditions;
  std::vector<PlannedAction> actions;
  bool enable;
};

RulePlan plan_of(const Arguments &arguments) {
  RulePlan plan = {arguments.i32("RULE"), conditions_of(arguments), {}, arguments.has("enable")};
  if (arguments.has("action")) plan.actions = actions_of(arguments.word("action"));
  return plan;
}

void install(const Context &context, int32_t rule) {
  perform(SWSH_CALL(user_field_entry_install), rule_name(rule), kLead, context.unit, rule);
}

void write_rule(const RulePlan &plan, const Context &context) {
  for (const Condition &each : plan.conditions) write_condition(each, context.unit, plan.rule);
  for (const PlannedAction &each : plan.actions) add_action(each, context.unit, plan.rule);
  if (plan.enable) install(context, plan.rule);
}

// Removes what was written of a rule and says so beside what went wrong.
[[noreturn]] void take_back(const RulePlan &plan, const Context &context, Fault fault) {
  const int32_t result = kDestroy.get()(kLead, context.unit, plan.rule);
  fault.message += result < 0 ? "; what was written of it could not be removed (result " +
                                    std::to_string(result) + ")"
                              : "; nothing of it was kept";
  throw CommandError(fault);
}

Answer add_acl(const Arguments &arguments, const Context &context) {
  const RulePlan plan = plan_of(arguments);
  expect_free(context, plan.rule);
  try {
    write_rule(plan, context);
  } catch (const CommandError &error) {
    take_back(plan, context, error.fault());
  }
  return {};
}

Answer del_acl(const Arguments &arguments, const Context &context) {
  expect_rules(context.unit, arguments.numbers("RULES"));
  for_each_number(arguments.numbers("RULES"), [&](int64_t rule) {
    perform(kDestroy, rule_name(rule), kLead, context.unit, static_cast<int32_t>(rule));
  });
  return {};
}

Answer enable(const Arguments &arguments, const Context &context) {
  expect_rules(context.unit, arguments.numbers("RULES"));
  for_each_number(arguments.numbers("RULES"),
                  [&](int64_t rule) { install(context, static_cast<int32_t>(rule)); });
  return {};
}

Answer choose_template(const Arguments &arguments, const Context &context) {
  const int32_t rule = arguments.i32("RULE");
  const auto index = arguments.u32("TEMPLATE");
  perform(SWSH_CALL(user_field_set_select_tempate_idx), rule_name(rule), kLead, context.unit, rule,
          index);
  return {};
}

Answer join_with_next(const Arguments &arguments, const Context &context) {
  const int32_t rule = arguments.i32("RULE");
  perform(SWSH_CALL(user_field_set_double_entry), rule_name(rule), kLead, context.unit, rule);
  return {};
}

// The library joins rules and never parts them: this is the chip's own way back.
Answer part_from_next(const Arguments &arguments, const Context &context) {
  const int32_t rule = arguments.i32("RULE");
  const chip_acl_operation apart = {};
  perform(SWSH_CALL(rtk_acl_ruleOperation_set), rule_name(rule), context.unit, CHIP_ACL_TABLE, rule,
          &apart);
  for (const int32_t each : {rule, rule + 1})
    perform(SWSH_CALL(user_field_set_select_tempate_idx), rule_name(each), kLead, context.unit,
            each, 0u);
  return {};
}

Answer init(const Arguments &, const Context &context) {
  perform(SWSH_CALL(user_field_init), std::string("the rule table"), kLead, context.unit);
  return {};
}

std::vector<Choice> miss_actions() {
  return {{"drop", CHIP_ACL_MISS_DROP, "They are discarded"},
          {"forward", CHIP_ACL_MISS_FORWARD, "They go on"}};
}

std::vector<Port> all_ports() {
  std::vector<Port> ports = {port_of(0)};
  for (const Port &port : front_ports()) ports.push_back(port);
  return ports;
}

// One record for the ports with the same action.
Answer show_miss(const Arguments &arguments, const Context &context) {
  const auto ports = arguments.has("PORTS") ? ports_given(arguments, "PORTS") : all_ports();
  const auto by_action = interfaces_by(ports, [&](const Port &port) {
    return ask(SWSH_OPTIONAL_CALL(swctl_platform_acl_miss_get), port, context.unit,
               static_cast<uint32_t>(port.chip));
  });
  Answer answer = {Shape::table, {}, ""};
  for (const auto &[action, interfaces] : by_action)
    answer.records.push_back(
        Record().add("action", word_value(miss_actions(), action)).add("ports", interfaces));
  return answer;
}

Answer miss_acl(const Arguments &arguments, const Context &context) {
  if (!arguments.has("ACTION")) return show_miss(arguments, context);
  const std::vector<Port> ports = ports_given(arguments, "PORTS");
  const uint32_t action =
      arguments.number("ACTION") == CHIP_ACL_MISS_DROP ? USER_FIELD_MISS_ACTION : 0;
  for_each_port(ports, [&](const Port &port) {
    perform(SWSH_CALL(user_field_lookupMissAct_set), port, kLead, context.unit,
            static_cast<uint32_t>(port.chip), action);
  });
  return {};
}

int64_t read_count(const Context &context, int64_t counter, uint32_t kind) {
  uint32_t words[2] = {};
  perform(SWSH_CALL(user_field_get_statistics), counter_name(counter), kLead, context.unit,
          static_cast<uint32_t>(counter), kind, words);
  return static_cast<int64_t>(uint64_t{words[0]} << 32 | words[1]);
}

void clear_count(const Context &context, int64_t counter, uint32_t kind) {
  perform(SWSH_CALL(user_field_clear_statistics), counter_name(counter), kLead, context.unit,
          static_cast<uint32_t>(counter), kind);
}

Answer stats(const Arguments &arguments, const Context &context) {
  Answer answer;
  answer.shape = Shape::table;
  for (const int64_t counter : arguments.numbers("COUNTERS")) {
    Record record;
    record.add("counter", counter);
    record.add("packets", read_count(context, counter, USER_FIELD_COUNT_PACKETS));
    record.add("bytes", read_count(context, counter, kBytes));
    answer.records.push_back(record);
  }
  if (!arguments.has("clear")) return answer;
  for_each_number(arguments.numbers("COUNTERS"), [&](int64_t counter) {
    clear_count(context, counter, USER_FIELD_COUNT_PACKETS);
    clear_count(context, counter, kBytes);
  });
  return answer;
}

Parameter one_rule() {
  return required("RULE", number(0, kLastRule), "Rule");
}

Parameter rules(bool required) {
  return {.name = "RULES", .type = numbers(0, kLastRule), .help = "Rules", .required = required};
}

Node show_acl_command() {
  return {
      .name = "show",
      .help = "Show rules",
      .positional = {rules(false)},
      .keywords = {{.name = "detail",
                    .type = flag(),
                    .help = "Line by line, with template and double entry"}},
      .details =
          "Without RULES, all rules that match or do something. Match and actions read\n"
          "as acl add takes them.\n",
      .run = show_acl,
  };
}

Node add_acl_command() {
  Node node = {
      .name = "add",
      .help = "Write a rule",
      .positional = {one_rule()},
      .keywords = qualifier_parameters(),
      .needs_keyword = true,
      .details =
          "VALUE or VALUE/MASK: a frame matches if it equals VALUE in the bits of MASK.\n"
          "The rule is written whole or not at all, and takes effect with enable.\n"
          "Actions: drop, permit, trap, redirect:PORT, redirect-ports:N,\n"
          "redirect-group:N, mirror:SESSION, count:COUNTER, meter:METER, outer-vlan:ID,\n"
          "inner-vlan:ID, priority:N, queue:N, remark-0:N, remark-1:N, remark-2:N, and\n"
          "code:ACTION:PARAM0:PARAM1 for any action of the library by its number.\n",
      .run = add_acl,
  };
  node.keywords.push_back(action_parameter());
  node.keywords.push_back({.name = "enable", .type = flag(), .help = "Put it into effect at once"});
  return node;
}

Node stats_command() {
  return {
      .name = "stats",
      .help = "Show what rules counted",
      .positional = {required("COUNTERS", numbers(0, kLastRuleCounter),
                              "Counters, as the action count names them")},
      .keywords = {{.name = "clear", .type = flag(), .help = "Set them to 0 afterwards"}},
      .run = stats,
  };
}

Node miss_acl_command() {
  return {
      .name = "miss",
      .help = "Show or say what becomes of frames that no rule matches",
      .positional = {{.name = "PORTS",
                      .type = interface_list(0),
                      .help = "Ports that the frames came in on"},
                     {.name = "ACTION",
                      .type = choice(miss_actions()),
                      .help = "What becomes of them; shown if not given"}},
      .run = miss_acl,
  };
}

Node template_command() {
  return {
      .name = "template",
      .help = "Choose the template of a rule",
      .positional = {one_rule(), required("TEMPLATE", number(0, kLastRuleTemplate), "Template")},
      .run = choose_template,
  };
}

}  // namespace

Node acl_object() {
  return {
      .name = "acl",
      .help = "Access-control rules",
      .children =
          {show_acl_command(),
           add_acl_command(),
           {.name = "del", .help = "Delete rules", .positional = {rules(true)}, .run = del_acl},
           {.name = "enable",
            .help = "Put rules into effect",
            .positional = {rules(true)},
            .run = enable},
           stats_command(),
           miss_acl_command(),
           template_command(),
           {.name = "double",
            .help = "Join a rule with the next one into a double entry",
            .positional = {one_rule()},
            .run = join_with_next},
           {.name = "single",
            .help = "Part a rule from the next one again, both with template 0",
            .positional = {one_rule()},
            .run = part_from_next},
           {.name = "init",
            .help = "Prepare the rule table: templates, selectors, double entries",
            .run = init}},
  };
}

}  // namespace swsh
