// SPDX-License-Identifier: MIT
// Fault plans, and library calls that they answer.
#include <swctl-probe/probe.h>

#include <sstream>
#include <stdexcept>

#include "library/arguments.h"
#include "library/chip.h"
#include "support/stage.h"

namespace {

bool add_rules(const std::string &text) {
  std::istringstream lines(text);
  bool any = false;
  for (std::string rule; std::getline(lines, rule);) {
    try {
      swprobe::plan(rule);
      any = true;
    } catch (const std::invalid_argument &error) {
      if (*error.what() == '\0') swfuzz::wrong("a refusal without a reason");
    }
  }
  return any;
}

using Call = void (*)(swfuzz::Input &);
#define SWFUZZ_CALL(name) [](swfuzz::Input &input) { swfuzz::call_with_input(input, #name, name); }
// Functions with every form of argument. None walks a table: a plan may say
// that a table has no end.
constexpr Call kCalls[] = {SWFUZZ_CALL(user_port_link_status_get),
                           SWFUZZ_CALL(user_port_speed_get),
                           SWFUZZ_CALL(user_port_ability_advert_set),
                           SWFUZZ_CALL(user_port_untagged_vlan_get),
                           SWFUZZ_CALL(user_stat_port_getAll),
                           SWFUZZ_CALL(user_mac_addr_add),
                           SWFUZZ_CALL(user_mac_addr_get),
                           SWFUZZ_CALL(user_mac_addr_delete),
                           SWFUZZ_CALL(user_mac_mcast_addr_add),
                           SWFUZZ_CALL(user_vlan_port_get),
                           SWFUZZ_CALL(user_vlan_mac_add),
                           SWFUZZ_CALL(user_vlan_translate_egress_add),
                           SWFUZZ_CALL(user_field_qualify_SrcIp6),
                           SWFUZZ_CALL(user_field_action_add),
                           SWFUZZ_CALL(user_field_get_statistics),
                           SWFUZZ_CALL(User_ip_mcast_add),
                           SWFUZZ_CALL(User_ip6_mcast_add),
                           SWFUZZ_CALL(User_ip6_mcast_del),
                           SWFUZZ_CALL(user_mirror_port_set),
                           SWFUZZ_CALL(user_qos_schedule_get),
                           SWFUZZ_CALL(user_stg_stp_get),
                           SWFUZZ_CALL(user_trunk_set)};

void make_calls(swfuzz::Input &input) {
  constexpr int kMostCalls = 8;
  for (int made = 0; made < kMostCalls && !input.empty(); ++made)
    kCalls[input.byte() % std::size(kCalls)](input);
}

}  // namespace

// A plan, a zero byte, and calls.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  swfuzz::Input input(data, size);
  swfuzz::renew_chip();
  swprobe::clear_plan();
  if (!add_rules(input.text())) return 0;
  const swfuzz::Stage stage;
  make_calls(input);
  for (const std::string &line : swprobe::take_lines())
    if (line.find('(') == std::string::npos) swfuzz::wrong(line);
  return 0;
}
