// SPDX-License-Identifier: MIT
#include <swctl/l2.h>

#include "chip/lead.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/mac.h"

namespace swsh {
namespace {

std::vector<Port> chosen_ports(const Arguments &arguments) {
  return arguments.has("PORTS") ? ports_of(arguments.numbers("PORTS")) : front_ports();
}

Record count_record(const Port &port, bool violations) {
  uint32_t learned = 0;
  check_result(user_mac_learn_count_get_by_port(port.chip, &learned),
               "user_mac_learn_count_get_by_port", port.interface);
  Record record;
  record.add("port", port.interface);
  record.add("learned", int64_t{learned});
  if (!violations) return record;
  uint32_t marked = 0;
  user_mac_violate_count_get_by_port(port.chip, &marked);
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
    check_result(user_mac_learn_limit_get(kLead, &limit), "user_mac_learn_limit_get",
                 port.interface);
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
    limit.limit = static_cast<int32_t>(arguments.number("max"));
    check_result(user_mac_learn_limit_set(kLead, limit), "user_mac_learn_limit_set",
                 port.interface);
  }
  return {};
}

Answer aging(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  if (arguments.has("TIME")) {
    const auto time = static_cast<uint32_t>(arguments.number("TIME"));
    check_call(user_mac_age_time_set(kLead, time), "user_mac_age_time_set",
               "the time " + std::to_string(time));
    return {};
  }
  uint32_t time = 0;
  check_call(user_mac_age_time_get(kLead, &time), "user_mac_age_time_get", "the reading");
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
