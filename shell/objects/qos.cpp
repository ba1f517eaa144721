// SPDX-License-Identifier: MIT
#include "objects/registry.h"
#include "qos/commands.h"

namespace swsh {

std::string priority_text(int64_t priority) {
  return "priority " + std::to_string(priority);
}

std::vector<int64_t> chosen_or_all(const Arguments &arguments, const char *name, int64_t last) {
  if (arguments.has(name)) return arguments.numbers(name);
  std::vector<int64_t> all;
  for (int64_t number = 0; number <= last; ++number) all.push_back(number);
  return all;
}

Node qos_object() {
  return {.name = "qos",
          .help = "Quality of service: priorities and queues",
          .children = {
              qos_map_commands(),
              qos_dscp_commands(),
              qos_default_commands(),
              qos_trust_commands(),
              qos_schedule_commands(),
              qos_tag_commands(),
          }};
}

}  // namespace swsh
