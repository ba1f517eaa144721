// SPDX-License-Identifier: MIT
#include "chip/vlans.h"

#include <swctl/platform/vlan_read.h>
#include <swctl/stp.h>

#include <map>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "stp/commands.h"
#include "stp/instance.h"

namespace swsh {
namespace {

Answer show_vlans(const Arguments &arguments, const Context &context) {
  std::map<uint32_t, std::vector<int64_t>> vlans;
  each_record(SWSH_OPTIONAL_CALL(swctl_platform_vlan_next), "VLAN", context.unit, 1,
              [&](const swctl_platform_vlan &vlan) { vlans[vlan.instance].push_back(vlan.index); });
  Answer answer = {Shape::table, {}, ""};
  for (const uint32_t instance : chosen_instances(arguments, context))
    answer.records.push_back(
        Record().add("instance", int64_t{instance}).add("vlans", vlans[instance]));
  return answer;
}

Answer add_vlans(const Arguments &arguments, const Context &context) {
  const uint32_t instance = existing(context, arguments.u32("instance"));
  vlans_of(context, arguments.numbers("VLANS"));
  for_each_number(arguments.numbers("VLANS"), [&](int64_t vid) {
    perform(SWSH_CALL(user_stg_vlan_add), "VLAN " + std::to_string(vid), kLead, context.unit,
            instance, static_cast<uint32_t>(vid));
  });
  return {};
}

Answer remove_vlans(const Arguments &arguments, const Context &context) {
  vlans_of(context, arguments.numbers("VLANS"));
  for_each_number(arguments.numbers("VLANS"), [&](int64_t vid) {
    perform(SWSH_CALL(user_stg_vlan_remove), "VLAN " + std::to_string(vid), kLead, context.unit, 0u,
            static_cast<uint32_t>(vid));
  });
  return {};
}

Parameter vlans_parameter() {
  return required("VLANS", numbers(kFirstVlan, kLastVlan), "VLANs to move");
}

}  // namespace

Node stp_vlan_commands() {
  return {
      .name = "vlan",
      .help = "The VLANs of instances",
      .children = {{.name = "show",
                    .help = "Show the VLANs of instances",
                    .positional = {instance_parameter(false)},
                    .run = show_vlans},
                   {.name = "add",
                    .help = "Put VLANs into an instance",
                    .positional = {vlans_parameter()},
                    .keywords = {required("instance", number(0, kLastInstance), "Where they go")},
                    .run = add_vlans},
                   {.name = "del",
                    .help = "Put VLANs back into instance 0",
                    .positional = {vlans_parameter()},
                    .run = remove_vlans}}};
}

}  // namespace swsh
