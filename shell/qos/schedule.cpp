// SPDX-License-Identifier: MIT
#include <swctl/qos.h>

#include <numeric>

#include "chip/call.h"
#include "chip/platform.h"
#include "fault.h"
#include "number_list.h"
#include "qos/commands.h"

namespace swsh {
namespace {

constexpr int64_t kMaxWeight = 0xffff;

std::vector<Choice> modes() {
  return {
      {"strict", USER_QOS_SCHEDULE_STRICT, "Strict priority: a queue goes before all lower ones"},
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
  const std::string words = arguments.has("weights") ? arguments.word("weights") : "";
  std::vector<uint32_t> weights =
      schedule_weights(mode, arguments.has("weights") ? &words : nullptr);
  perform(SWSH_CALL(user_qos_schedule_set), context, mode, weights.data());
  return {};
}

}  // namespace

std::vector<uint32_t> schedule_weights(uint32_t schedule, const std::string *words) {
  const bool weighted = schedule >= USER_QOS_SCHEDULE_WEIGHTED;
  if (weighted != (words != nullptr)) {
    throw CommandError(weighted ? wrong_usage("the schedule needs weights", {}, {"weights"})
                                : wrong_usage("the schedule has no weights", "weights"));
  }
  if (!weighted) return std::vector<uint32_t>(USER_QOS_QUEUES, 1);
  std::vector<uint32_t> weights = weights_of(*words);
  if (weights.size() != USER_QOS_QUEUES) {
    throw CommandError(wrong_usage("bad weights \"" + *words + '"', *words,
                                   {"eight numbers 0-65535 such as 0,0,1,1,2,2,4,8"}));
  }
  return weights;
}

Node qos_schedule_commands() {
  return {.name = "schedule",
          .help = "Scheduling of the queues of the front ports",
          .children = {
              {.name = "show",
               .help = "Show the queues with their shares",
               .details = "Read from the first port; all front ports are set alike.\n",
               .run = show_schedule},
              {.name = "set",
               .help = "Schedule the queues of all front ports",
               .positional = {required("SCHEDULE", choice(modes()), "Scheduling")},
               .keywords = {{.name = "weights",
                             .type = text(),
                             .help = "Of the queues 0 to 7, with commas between; 0 is strict"}},
               .run = set_schedule}}};
}

}  // namespace swsh
