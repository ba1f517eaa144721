// SPDX-License-Identifier: MIT
#include <swctl/qos.h>

#include "chip/call.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "qos/commands.h"

namespace swsh {
namespace {

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

}  // namespace

Node qos_map_commands() {
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

}  // namespace swsh
