// SPDX-License-Identifier: MIT
#include <swctl/mirror_trunk.h>
#include <swctl/stp.h>

#include "chip/lead.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

enum Action : int64_t { kForward, kDrop, kCpu };
enum Frames : int64_t { kIgmp, kMld, kOwnMac, kBpdu, kLldp, kLacp, kOam };

// A call of the library, and which way its last argument runs.
struct Trap {
  Frames frames;
  const char *function;
  int32_t (*call)(uint32_t lead, uint32_t unit, uint32_t value);
  uint32_t to_cpu;
  Action otherwise;
};

int32_t set_lldp(uint32_t lead, uint32_t unit, uint32_t forward) {
  return user_lldp_set_bpdu_forward(lead, unit, forward, 0);
}

constexpr Trap kTraps[] = {
    {kIgmp, "user_igmp_trap_to_cpu", user_igmp_trap_to_cpu, 1, kForward},
    {kMld, "user_mld_trap_to_cpu", user_mld_trap_to_cpu, 1, kForward},
    {kOwnMac, "user_selfmac_trap_to_cpu", user_selfmac_trap_to_cpu, 1, kForward},
    {kBpdu, "user_stg_set_bpdu_forward", user_stg_set_bpdu_forward, 0, kForward},
    {kLldp, "user_lldp_set_bpdu_forward", set_lldp, 0, kForward},
    {kLacp, "user_trunk_trap_lacp", user_trunk_trap_lacp, 1, kDrop},
    {kOam, "user_eoam_trap_set", user_eoam_trap_set, 1, kDrop},
};

void expect_possible(const Arguments &arguments, const Trap &trap) {
  const int64_t action = arguments.number("ACTION");
  if (action != kCpu && action != trap.otherwise) {
    throw CommandError(wrong_usage("frames of " + arguments.word("FRAMES") + " have no such action",
                                   arguments.word("ACTION"),
                                   {"cpu", trap.otherwise == kDrop ? "drop" : "forward"}));
  }
  if (arguments.has("ports") && trap.frames != kLldp) {
    throw CommandError(
        wrong_usage("only frames of lldp are chosen by port", arguments.word("ports")));
  }
}

void set_lldp_of(const Context &context, const Port &port, uint32_t forward) {
  check_result(user_lldp_set_bpdu_forward(kLead, context.unit, forward,
                                          static_cast<int32_t>(port.interface)),
               "user_lldp_set_bpdu_forward", port.interface);
}

Answer set(const Arguments &arguments, const Context &context) {
  const Trap &trap = kTraps[arguments.number("FRAMES")];
  expect_possible(arguments, trap);
  const bool to_cpu = arguments.number("ACTION") == kCpu;
  const uint32_t value = to_cpu ? trap.to_cpu : 1 - trap.to_cpu;
  if (arguments.has("ports")) {
    for (const Port &port : ports_of(arguments.numbers("ports"))) set_lldp_of(context, port, value);
    return {};
  }
  check_call(trap.call(kLead, context.unit, value), trap.function, unit_text(context));
  return {};
}

}  // namespace

Node trap_object() {
  return {
      .name = "trap",
      .help = "Protocol frames for the processor",
      .children = {{
          .name = "set",
          .help = "Say what becomes of protocol frames",
          .positional = {{.name = "FRAMES",
                          .type = choice({{"igmp", kIgmp, "IGMP"},
                                          {"mld", kMld, "MLD"},
                                          {"own-mac", kOwnMac, "To the switch's own address"},
                                          {"bpdu", kBpdu, "Spanning tree, on every front port"},
                                          {"lldp", kLldp, "LLDP, on every front port or some"},
                                          {"lacp", kLacp, "Link aggregation"},
                                          {"oam", kOam, "Link monitoring"}}),
                          .help = "Which frames",
                          .required = true},
                         {.name = "ACTION",
                          .type = choice({{"cpu", kCpu, "To the processor"},
                                          {"forward", kForward, "Switched; not lacp and oam"},
                                          {"drop", kDrop, "Dropped; only lacp and oam"}}),
                          .help = "What becomes of them",
                          .required = true}},
          .keywords =
              {{.name = "ports", .type = interface_list(), .help = "Only these ports; of lldp"}},
          .details = "The chip cannot be asked what it does. On all ports, the answer is that\n"
                     "of the last one.\n",
          .run = set,
      }},
  };
}

}  // namespace swsh
