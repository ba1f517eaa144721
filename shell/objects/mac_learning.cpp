// SPDX-License-Identifier: MIT
#include <swctl/l2.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/each.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/mac.h"

namespace swsh {
namespace {

bool is_violation(const user_l2_addr_t &entry, const Port &port) {
  constexpr uint32_t kLookedAt = L2_FLAG_VIOLATION | USER_L2_FLAG_VIOLATION_IGNORED;
  return entry.port == port.chip && (entry.flags & kLookedAt) == L2_FLAG_VIOLATION;
}

// The library counts in a dump file, and does not say that it cannot write it.
void expect_dump_file() {
  FILE *file = fopen(USER_MACTABLE_PATH, "a");
  if (file != nullptr && fclose(file) == 0) return;
  Fault fault;
  fault.status = kRefused;
  fault.message = USER_MACTABLE_PATH " cannot be written: " + std::string(strerror(errno));
  fault.culprit = USER_MACTABLE_PATH;
  throw CommandError(fault);
}

// Nor does it say that the chip refused: what it counts has to be what the
// table has, and no VLAN may be taken for one that is not there.
int64_t count_violations(const Port &port, const std::vector<user_l2_addr_t> &table) {
  constexpr auto kCount = SWSH_CALL(user_mac_violate_count_get_by_port);
  const Witness witness;
  uint32_t marked = 0;
  const int32_t result = kCount.get()(port.chip, &marked);
  const auto in_table = std::ranges::count_if(
      table, [&](const user_l2_addr_t &entry) { return is_violation(entry, port); });
  if (result < 0 || static_cast<int64_t>(marked) != in_table || witness.saw("rtk_vlan_port_get"))
    refuse(witness.blame(kCount.name, result), subject_of(port));
  return marked;
}

Record count_record(const Port &port) {
  const uint32_t learned = ask(SWSH_CALL(user_mac_learn_count_get_by_port), port, port.chip);
  Record record;
  record.add("port", port.interface);
  return record.add("learned", int64_t{learned});
}

Answer count(const Arguments &arguments, const Context &context) {
  expect_unit_0(context);
  Answer answer = {.shape = Shape::table, .records = {}, .text = ""};
  const bool violations = arguments.has("violations");
  if (violations) expect_dump_file();
  const std::vector<user_l2_addr_t> table =
      violations ? read_addresses() : std::vector<user_l2_addr_t>{};
  for (const Port &port : chosen_ports(arguments)) {
    Record record = count_record(port);
    if (violations) record.add("violations", count_violations(port, table));
    answer.records.push_back(std::move(record));
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
  for_each_port(ports, [&](const Port &port) {
    user_l2_learn_limit_t limit = {};
    limit.port = port.chip;
    limit.limit = arguments.i32("max");
    perform(SWSH_CALL(user_mac_learn_limit_set), port, kLead, limit);
    // The library switches a limit on and never off: the highest is none.
    if (limit.limit == USER_LEARN_LIMIT_MAX)
      perform(SWSH_CALL(rtk_l2_portLimitLearningCntEnable_set), port, 0u, port.chip, 0u);
  });
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
       .help = "Show or set the aging time of addresses",
       .positional = {{.name = "TIME",
                       .type = number(0, 0xFFFFFFFF),
                       .help = "The new time, in the unit of the chip"}},
       .run = aging},
  };
}

}  // namespace swsh
