// SPDX-License-Identifier: MIT
#include <swctl/l2.h>

#include "chip/call.h"
#include "chip/lead.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/mac.h"

namespace swsh {
namespace {

Record count_record(const Port &port, bool violations) {
  const uint32_t learned = ask(SWSH_CALL(user_mac_learn_count_get_by_port), port, port.chip);
  Record record;
  record.add("port", port.interface);
  record.add("learned", int64_t{learned});
  if (!violations) return record;
  const uint32_t marked = ask(SWSH_CALL(user_mac_violate_count_get_by_port), port, port.chip);
  return record.add("violations", int64_t{marked});
}

Answer count(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  Answer answer = {.shape = Shape::table, .records = {}, .text = ""};
  for (const Port &port : chosen_ports(arguments)) {
    answer.records.push_back(count_record(port, arguments.has("violations")));
  }
  return answer;
}

Answer show_limits(const std::vector<Port> &ports) {
  Answer answer = {.shape = Shape::table, .records = {}, .text = ""};
  for (const Port &port : ports) {
    user_l2_learn_limit_t limit = {};
    limit.port = port.chip;
    perform(SWSH_CALL(user_mac_learn_limit_get), port, kLead, &limit);
    answer.records.push_back(
        Record().add("port", port.interface).add("limit", int64_t{limit.limit}));
  }
  return answer;
}

Answer limit(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  const std::vector<Port> ports = chosen_ports(arguments);
  if (!arguments.has("max")) return show_limits(ports);
  for (const Port &port : ports) {
    user_l2_learn_limit_t limit = {};
    limit.port = port.chip;
    limit.limit = arguments.i32("max");
    perform(SWSH_CALL(user_mac_learn_limit_set), port, kLead, limit);
  }
  return {};
}

Answer aging(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  if (arguments.has("TIME")) {
    const auto time = arguments.u32("TIME");
    perform(SWSH_CALL(user_mac_age_time_set), "the time " + std::to_string(time), kLead, time);
    return {};
  }
  const uint32_t time = ask(SWSH_CALL(user_mac_age_time_get), std::string("the reading"), kLead);
  return {Shape::detail, {Record().add("aging", int64_t{time})}, ""};
}

Parameter ports_parameter() {
  return {.name = "PORTS", .type = interface_list(), .help = "Ports; all if not given"};
}

}  // namespace

std::vector<Node> mac_learning_commands() {
  return {
      {.name = "count",
       .help = "Show how many addresses ports have learned",
       .positional = {ports_parameter()},
       .keywords = {{.name = "violations",
                     .type = flag(),
                     .help = "Count the entries too that the chip marks"}},
       .details = "violations writes and reads the dump file " USER_MACTABLE_PATH ".\n",
       .run = count},
      {.name = "limit",
       .help = "Show or set how many addresses ports may learn",
       .positional = {ports_parameter()},
       .keywords = {{.name = "max",
                     .type = number(0, USER_LEARN_LIMIT_MAX, "addresses"),
                     .help = "The new limit"}},
       .run = limit},
      {.name = "aging",
       .help = "Show or set how long an address stays that is not seen",
       .positional = {{.name = "TIME",
                       .type = number(0, 0xFFFFFFFF),
                       .help = "The new time, in the unit of the chip"}},
       .run = aging},
  };
}

}  // namespace swsh
