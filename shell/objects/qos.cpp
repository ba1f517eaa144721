// SPDX-License-Identifier: MIT
#include <swctl/platform/qos_read.h>
#include <swctl/qos.h>

#include <numeric>

#include "chip/call.h"
#include "chip/optional_call.h"
#include "chip/ports.h"
#include "chip/unit_zero.h"
#include "fault.h"
#include "number_list.h"
#include "objects/registry.h"
#include "text.h"

namespace swsh {
namespace {

constexpr int64_t kLastPriority = USER_QOS_PRIORITIES - 1;
constexpr int64_t kLastQueue = USER_QOS_QUEUES - 1;
constexpr int64_t kLastCodePoint = 63;
constexpr int64_t kMaxWeight = 0xffff;

std::string priority_text(int64_t priority) {
  return "priority " + std::to_string(priority);
}

std::string code_point_text(int64_t dscp) {
  return "code point " + std::to_string(dscp);
}

std::string trust_group_text(int64_t group) {
  return "trust group " + std::to_string(group);
}

struct Queues {
  uint8_t of_priority[USER_QOS_PRIORITIES];
};

Queues read_queues() {
  Queues queues = {};
  for (uint32_t priority = 0; priority < USER_QOS_PRIORITIES; ++priority) {
    queues.of_priority[priority] = static_cast<uint8_t>(
        ask(SWSH_CALL(user_qos_pri_queue_map_get), priority_text(priority), priority));
  }
  return queues;
}

Answer show_map(const Arguments &, const Context &context) {
  expect_unit_zero(context);
  const Queues queues = read_queues();
  Answer answer = {Shape::table, {}, ""};
  for (size_t priority = 0; priority < USER_QOS_PRIORITIES; ++priority)
    answer.records.push_back(Record()
                                 .add("priority", static_cast<int64_t>(priority))
                                 .add("queue", int64_t{queues.of_priority[priority]}));
  return answer;
}

// The chip takes the whole map, so the rest of it is read first.
Answer set_map(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Queues queues = read_queues();
  for (const int64_t priority : arguments.numbers("PRIORITIES"))
    queues.of_priority[priority] = static_cast<uint8_t>(arguments.number("queue"));
  perform(SWSH_CALL(user_qos_pri_queue_map_set), std::string("the queue map"), queues.of_priority);
  return {};
}

std::vector<int64_t> chosen_or_all(const Arguments &arguments, const char *name, int64_t last) {
  if (arguments.has(name)) return arguments.numbers(name);
  std::vector<int64_t> all;
  for (int64_t number = 0; number <= last; ++number) all.push_back(number);
  return all;
}

Answer show_tag(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const int64_t priority : chosen_or_all(arguments, "PRIORITIES", kLastPriority)) {
    const uint32_t internal =
        ask(SWSH_OPTIONAL_CALL(swctl_platform_qos_tag_get), priority_text(priority), context.unit,
            static_cast<uint32_t>(priority));
    answer.records.push_back(Record().add("priority", priority).add("internal", int64_t{internal}));
  }
  return answer;
}

Answer set_tag(const Arguments &arguments, const Context &context) {
  for (const int64_t priority : arguments.numbers("PRIORITIES"))
    perform(SWSH_CALL(user_qos_pri_remap_set), priority_text(priority), context.unit,
            static_cast<uint32_t>(priority), arguments.u32("internal"));
  return {};
}

Answer show_dscp(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const int64_t dscp : chosen_or_all(arguments, "DSCPS", kLastCodePoint)) {
    const uint32_t priority =
        ask(SWSH_CALL(user_qos_dscp_map_get), code_point_text(dscp), static_cast<uint32_t>(dscp));
    answer.records.push_back(Record().add("dscp", dscp).add("priority", int64_t{priority}));
  }
  return answer;
}

Answer set_dscp(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  for (const int64_t dscp : arguments.numbers("DSCPS"))
    perform(SWSH_CALL(user_qos_dscp_map_set), code_point_text(dscp), static_cast<uint32_t>(dscp),
            arguments.u32("priority"));
  return {};
}

std::vector<Port> chosen_ports(const Arguments &arguments) {
  return arguments.has("PORTS") ? ports_of(arguments.numbers("PORTS")) : front_ports();
}

Answer show_default(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : chosen_ports(arguments)) {
    const uint32_t priority = ask(SWSH_CALL(user_qos_port_cos_get), port, port.chip);
    answer.records.push_back(
        Record().add("port", port.interface).add("priority", int64_t{priority}));
  }
  return answer;
}

Answer set_default(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  for (const Port &port : ports_of(arguments.numbers("PORTS")))
    perform(SWSH_CALL(user_qos_port_cos_set), port, port.chip, arguments.u32("priority"));
  return {};
}

std::vector<Choice> trusts() {
  return {{"port", USER_QOS_TRUST_PORT, "The port's"},
          {"tag", USER_QOS_TRUST_TAG, "A tag's, if any"},
          {"dscp", USER_QOS_TRUST_DSCP, "That of the code point, if any"}};
}

using TrustWeights = std::vector<int64_t>;

TrustWeights read_trust_weights(const Context &context, uint32_t group) {
  uint32_t weights[SWCTL_PLATFORM_QOS_WEIGHTS] = {};
  perform(SWSH_OPTIONAL_CALL(swctl_platform_qos_group_get), trust_group_text(group), context.unit,
          group, weights);
  return {std::begin(weights), std::end(weights)};
}

std::string in_given_order(const TrustWeights &weights) {
  std::vector<std::string> words;
  for (const int64_t weight : weights) words.push_back(std::to_string(weight));
  return join(words, ",");
}

Answer show_trust(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : chosen_ports(arguments)) {
    const uint32_t group =
        ask(SWSH_OPTIONAL_CALL(swctl_platform_qos_port_group_get), port, context.unit, port.chip);
    const TrustWeights weights = read_trust_weights(context, group);
    answer.records.push_back(Record()
                                 .add("port", port.interface)
                                 .add("trust", word_value(trusts(), group))
                                 .add("weights", weights, in_given_order(weights)));
  }
  return answer;
}

Answer set_trust(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const auto group = arguments.i32("TRUST");
  const std::vector<Port> ports = ports_of(arguments.numbers("PORTS"));
  perform(SWSH_CALL(user_qos_trust_sel_group_set), trust_group_text(group), group);
  for (const Port &port : ports)
    perform(SWSH_CALL(user_qos_port_trust_mode_set), port, port.chip, static_cast<uint32_t>(group));
  return {};
}

std::vector<Choice> modes() {
  return {{"strict", USER_QOS_SCHEDULE_STRICT, "A queue goes before all lower ones"},
          {"equal", USER_QOS_SCHEDULE_EQUAL, "All queues have the same share"},
          {"weighted", USER_QOS_SCHEDULE_WEIGHTED, "Shares by weight, algorithm 1"},
          {"weighted-0", USER_QOS_SCHEDULE_WEIGHTED_0, "Shares by weight, algorithm 0"}};
}

// In percent of what strict queues leave; those take what they want.
void add_share(Record &record, uint32_t weight, uint64_t sum) {
  if (weight == 0) {
    record.add("share", nullptr, "strict");
    return;
  }
  const uint64_t percent = (100 * uint64_t{weight} + sum / 2) / sum;
  record.add("share", percent, std::to_string(percent) + " %");
}

Record queue_record(uint32_t queue, uint32_t mode, uint32_t weight, uint64_t sum) {
  Record record;
  record.add("queue", int64_t{queue});
  record.add("schedule", word_value(modes(), mode));
  record.add("weight", int64_t{weight});
  add_share(record, weight, sum);
  return record;
}

Answer show_schedule(const Arguments &, const Context &context) {
  expect_unit_zero(context);
  uint32_t mode = 0;
  uint32_t weights[USER_QOS_QUEUES] = {};
  perform(SWSH_CALL(user_qos_schedule_get), context, &mode, weights);
  const auto sum = std::accumulate(std::begin(weights), std::end(weights), uint64_t{0});
  Answer answer = {Shape::table, {}, ""};
  for (uint32_t queue = 0; queue < USER_QOS_QUEUES; ++queue)
    answer.records.push_back(queue_record(queue, mode, weights[queue], sum));
  return answer;
}

// Unlike a list of numbers these stay in their order.
std::vector<uint32_t> weights_of(const std::string &word) {
  std::vector<uint32_t> weights;
  for (size_t start = 0, comma = 0; comma != std::string::npos; start = comma + 1) {
    comma = word.find(',', start);
    const ParsedNumber weight = parse_number(word.substr(start, comma - start), 0, kMaxWeight);
    if (!weight.fault.empty()) return {};
    weights.push_back(static_cast<uint32_t>(weight.number));
  }
  return weights;
}

Answer set_schedule(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const auto mode = arguments.u32("SCHEDULE");
  const bool weighted = mode >= USER_QOS_SCHEDULE_WEIGHTED;
  std::vector<uint32_t> weights(USER_QOS_QUEUES, 1);
  if (weighted != arguments.has("weights")) {
    throw CommandError(weighted ? wrong_usage("the schedule needs weights", {}, {"weights"})
                                : wrong_usage("the schedule has no weights", "weights"));
  }
  if (weighted) weights = weights_of(arguments.word("weights"));
  if (weights.size() != USER_QOS_QUEUES) {
    throw CommandError(wrong_usage("bad weights \"" + arguments.word("weights") + '"',
                                   arguments.word("weights"),
                                   {"eight numbers 0-65535 such as 0,0,1,1,2,2,4,8"}));
  }
  perform(SWSH_CALL(user_qos_schedule_set), context, mode, weights.data());
  return {};
}

Parameter required(const char *name, Type type, const char *help) {
  return {.name = name, .type = std::move(type), .help = help, .required = true};
}

Node map_commands() {
  return {
      .name = "map",
      .help = "The queue of each internal priority",
      .children = {{.name = "show", .help = "Show the queue of each priority", .run = show_map},
                   {.name = "set",
                    .help = "Send priorities to a queue",
                    .positional = {required("PRIORITIES", numbers(0, kLastPriority), "Priorities")},
                    .keywords = {required("queue", number(0, kLastQueue), "Queue")},
                    .run = set_map}}};
}

Node dscp_commands() {
  return {
      .name = "dscp",
      .help = "The internal priority of each code point",
      .children = {{.name = "show",
                    .help = "Show the priority of code points",
                    .positional = {{.name = "DSCPS",
                                    .type = numbers(0, kLastCodePoint),
                                    .help = "Code points to show"}},
                    .run = show_dscp},
                   {.name = "set",
                    .help = "Give code points a priority",
                    .positional = {required("DSCPS", numbers(0, kLastCodePoint), "Code points")},
                    .keywords = {required("priority", number(0, kLastPriority), "Priority")},
                    .run = set_dscp}}};
}

Node default_commands() {
  return {.name = "default",
          .help = "The priority of frames without a tag",
          .children = {
              {.name = "show",
               .help = "Show the priority of ports",
               .positional = {{.name = "PORTS", .type = interface_list(), .help = "Ports to show"}},
               .run = show_default},
              {.name = "set",
               .help = "Give ports a priority",
               .positional = {required("PORTS", interface_list(), "Ports to change")},
               .keywords = {required("priority", number(0, kLastPriority), "Priority")},
               .run = set_default}}};
}

Node trust_commands() {
  return {
      .name = "trust",
      .help = "Which of its priorities a frame follows",
      .children = {
          {.name = "show",
           .help = "Show what ports trust",
           .positional = {{.name = "PORTS", .type = interface_list(), .help = "Ports to show"}},
           .details = "weights are the words of the port's group in the chip. A group that qos\n"
                      "trust set does not choose is its number.\n",
           .run = show_trust},
          {.name = "set",
           .help = "Choose what ports trust",
           .positional = {required("PORTS", interface_list(), "Ports to change"),
                          required("TRUST", choice(trusts()), "Whose priority counts")},
           .run = set_trust}}};
}

Node schedule_commands() {
  return {.name = "schedule",
          .help = "How the queues of the front ports take turns",
          .children = {
              {.name = "show",
               .help = "Show the queues with their shares",
               .details = "Read from the first port; all front ports are set alike.\n",
               .run = show_schedule},
              {.name = "set",
               .help = "Schedule the queues of all front ports",
               .positional = {required("SCHEDULE", choice(modes()), "How they take turns")},
               .keywords = {{.name = "weights",
                             .type = text(),
                             .help = "Of the queues 0 to 7, with commas between; 0 is strict"}},
               .run = set_schedule}}};
}

Node tag_commands() {
  return {.name = "tag",
          .help = "The internal priority of each priority in a tag",
          .children = {
              {.name = "show",
               .help = "Show the internal priority of priorities",
               .positional = {{.name = "PRIORITIES",
                               .type = numbers(0, kLastPriority),
                               .help = "Priorities to show"}},
               .run = show_tag},
              {.name = "set",
               .help = "Give priorities of tags an internal one",
               .positional = {required("PRIORITIES", numbers(0, kLastPriority), "In the tag")},
               .keywords = {required("internal", number(0, kLastPriority), "Internal priority")},
               .run = set_tag}}};
}

}  // namespace

Node qos_object() {
  return {.name = "qos",
          .help = "Quality of service: priorities and queues",
          .children = {
              map_commands(),
              dscp_commands(),
              default_commands(),
              trust_commands(),
              schedule_commands(),
              tag_commands(),
          }};
}

}  // namespace swsh
