// SPDX-License-Identifier: MIT
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>
#include <swctl/platform/trap_read.h>
#include <swctl/stp.h>

#include <optional>

#include "chip/call.h"
#include "chip/each.h"
#include "chip/optional_call.h"
#include "chip/ports.h"
#include "fault.h"
#include "objects/registry.h"

namespace swsh {
namespace {

// Where the chip keeps what becomes of frames.
enum class Kept { for_all_ports, by_port, by_address_group };

using SetForAll = Call<int32_t(uint32_t lead, uint32_t unit, uint32_t value)>;

// Frames of a protocol: the call of the library that sets what becomes of them
// and which way its last argument runs, and the chip's code for them. Without
// a call, they are chosen by port.
struct Trap {
  const char *frames;
  const char *help;
  std::optional<SetForAll> call;
  uint32_t to_cpu;
  uint32_t otherwise;
  Kept kept;
  uint32_t code;
};

constexpr Trap kTraps[] = {
    {"igmp", "IGMP", SWSH_CALL(user_igmp_trap_to_cpu), 1, CHIP_TRAP_FORWARD, Kept::for_all_ports,
     CHIP_TRAP_FRAME_IGMP},
    {"mld", "MLD", SWSH_CALL(user_mld_trap_to_cpu), 1, CHIP_TRAP_FORWARD, Kept::for_all_ports,
     CHIP_TRAP_FRAME_MLD},
    {"own-mac", "To the switch's own address", SWSH_CALL(user_selfmac_trap_to_cpu), 1,
     CHIP_TRAP_FORWARD, Kept::for_all_ports, CHIP_TRAP_FRAME_OWN_MAC},
    {"bpdu", "Spanning tree, on every front port", SWSH_CALL(user_stg_set_bpdu_forward), 0,
     CHIP_TRAP_FORWARD, Kept::by_port, CHIP_TRAP_FRAME_BPDU},
    {"lldp", "LLDP, on every front port or some", std::nullopt, 0, CHIP_TRAP_FORWARD, Kept::by_port,
     CHIP_TRAP_FRAME_LLDP},
    {"lacp", "Link aggregation", SWSH_CALL(user_trunk_trap_lacp), 1, CHIP_TRAP_DROP,
     Kept::by_address_group, CHIP_TRAP_GROUP_LACP},
    {"oam", "Link monitoring", SWSH_CALL(user_eoam_trap_set), 1, CHIP_TRAP_DROP,
     Kept::by_address_group, CHIP_TRAP_GROUP_OAM},
};

constexpr auto kFrameAction = SWSH_OPTIONAL_CALL(swctl_platform_trap_frame_get);
constexpr auto kPortFrameAction = SWSH_OPTIONAL_CALL(swctl_platform_trap_port_frame_get);
constexpr auto kGroupAction = SWSH_OPTIONAL_CALL(swctl_platform_trap_group_get);
constexpr auto kBypass = SWSH_OPTIONAL_CALL(swctl_platform_trap_bypass_get);

std::vector<Choice> trap_actions() {
  return {{"cpu", CHIP_TRAP_TO_CPU, "To the processor"},
          {"forward", CHIP_TRAP_FORWARD, "Switched"},
          {"drop", CHIP_TRAP_DROP, "Dropped"}};
}

Record trap_record(const Trap &trap, uint32_t action) {
  return Record()
      .add("frames", std::string(trap.frames))
      .add("action", word_value(trap_actions(), action));
}

Record &add_all_ports(Record &record) {
  std::vector<int64_t> interfaces;
  for (const Port &port : front_ports()) interfaces.push_back(port.interface);
  return record.add("ports", interfaces, "all");
}

Record switch_wide_record(const Trap &trap, const Context &context) {
  Record record =
      trap_record(trap, ask(kFrameAction, std::string(trap.frames), context.unit, trap.code));
  add_all_ports(record);
  record.add("passes_blocked", nullptr);
  return record;
}

Record group_trap_record(const Trap &trap, const Context &context) {
  Record record =
      trap_record(trap, ask(kGroupAction, std::string(trap.frames), context.unit, trap.code));
  add_all_ports(record);
  if (trap.code != CHIP_TRAP_GROUP_LACP) return record.add("passes_blocked", nullptr);
  const uint32_t passes =
      ask(kBypass, std::string(trap.frames), context.unit, CHIP_TRAP_BYPASS_SLOW_PROTOCOLS);
  return record.add("passes_blocked", passes != 0);
}

// One record for the ports that do the same.
std::vector<Record> port_trap_records(const Trap &trap, const Context &context) {
  const auto ports = interfaces_by(front_ports(), [&](const Port &port) {
    return ask(kPortFrameAction, port, context.unit, port.chip, trap.code);
  });
  std::vector<Record> records;
  for (const auto &[action, interfaces] : ports)
    records.push_back(
        trap_record(trap, action).add("ports", interfaces).add("passes_blocked", nullptr));
  return records;
}

std::vector<Record> trap_records(const Trap &trap, const Context &context) {
  switch (trap.kept) {
    case Kept::for_all_ports: return {switch_wide_record(trap, context)};
    case Kept::by_port: return port_trap_records(trap, context);
    case Kept::by_address_group: return {group_trap_record(trap, context)};
  }
  return {};
}

Answer show_traps(const Arguments &arguments, const Context &context) {
  Answer answer = {Shape::table, {}, ""};
  for (const Trap &trap : kTraps) {
    if (arguments.has("FRAMES") && arguments.word("FRAMES") != trap.frames) continue;
    for (Record &record : trap_records(trap, context)) answer.records.push_back(std::move(record));
  }
  return answer;
}

void expect_possible(const Arguments &arguments, const Trap &trap) {
  if (arguments.has("ports") && trap.kept != Kept::by_port) {
    throw CommandError(
        wrong_usage("only frames of bpdu and lldp are chosen by port", arguments.word("ports")));
  }
}

constexpr auto kSetLldp = SWSH_CALL(user_lldp_set_bpdu_forward);

void set_lldp_of(const Arguments &arguments, const Context &context, uint32_t forward) {
  constexpr int32_t kEveryPort = 0;
  if (!arguments.has("ports")) {
    perform(kSetLldp, context, kLead, context.unit, forward, kEveryPort);
    return;
  }
  for_each_port(ports_given(arguments, "ports"), [&](const Port &port) {
    perform(kSetLldp, port, kLead, context.unit, forward, static_cast<int32_t>(port.interface));
  });
}

// What the library has no function for, the chip does all the same.
void set_by_port(const Arguments &arguments, const Context &context, const Trap &trap) {
  const std::vector<Port> ports =
      arguments.has("ports") ? ports_given(arguments, "ports") : front_ports();
  for_each_port(ports, [&](const Port &port) {
    perform(SWSH_CALL(rtk_trap_portMgmtFrameAction_set), port, context.unit, port.chip, trap.code,
            arguments.u32("ACTION"));
  });
}

void set_by_group(const Arguments &arguments, const Context &context, const Trap &trap) {
  const std::string frames = trap.frames;
  if (trap.code == CHIP_TRAP_GROUP_LACP)
    perform(SWSH_CALL(rtk_trap_bypassStp_set), frames, context.unit,
            CHIP_TRAP_BYPASS_SLOW_PROTOCOLS, 0u);
  perform(SWSH_CALL(rtk_trap_rmaGroupAction_set), frames, context.unit, trap.code,
          arguments.u32("ACTION"));
}

void set_directly(const Arguments &arguments, const Context &context, const Trap &trap) {
  switch (trap.kept) {
    case Kept::by_port: return set_by_port(arguments, context, trap);
    case Kept::by_address_group: return set_by_group(arguments, context, trap);
    case Kept::for_all_ports: break;
  }
  perform(SWSH_CALL(rtk_trap_mgmtFrameAction_set), std::string(trap.frames), context.unit,
          trap.code, arguments.u32("ACTION"));
}

Answer set_trap(const Arguments &arguments, const Context &context) {
  const Trap &trap = kTraps[arguments.number("FRAMES")];
  expect_possible(arguments, trap);
  const int64_t action = arguments.number("ACTION");
  const bool to_cpu = action == CHIP_TRAP_TO_CPU;
  const uint32_t value = to_cpu ? trap.to_cpu : 1 - trap.to_cpu;
  const bool library_can = to_cpu || action == trap.otherwise;
  if (!library_can || (trap.call && arguments.has("ports"))) {
    set_directly(arguments, context, trap);
  } else if (trap.call) {
    perform(*trap.call, context, kLead, context.unit, value);
  } else {
    set_lldp_of(arguments, context, value);
  }
  return {};
}

Parameter frames_parameter(bool required) {
  std::vector<Choice> frames;
  for (const Trap &trap : kTraps)
    frames.push_back({trap.frames, static_cast<int64_t>(frames.size()), trap.help});
  return {.name = "FRAMES", .type = choice(frames), .help = "Which frames", .required = required};
}

}  // namespace

Node trap_object() {
  return {
      .name = "trap",
      .help = "Protocol frames for the processor",
      .children =
          {
              {.name = "show",
               .help = "Show what becomes of protocol frames",
               .positional = {frames_parameter(false)},
               .details = "Ports that do the same share a line. An action that trap set does not\n"
                          "have is the chip's code. passes_blocked: whether frames are taken from\n"
                          "ports that spanning tree blocks.\n",
               .run = show_traps},
              {.name = "set",
               .help = "Say what becomes of protocol frames",
               .positional = {frames_parameter(true),
                              required("ACTION", choice(trap_actions()), "What becomes of them")},
               .keywords = {{.name = "ports",
                             .type = interface_list(),
                             .help = "Only these ports; of bpdu and lldp"}},
               .details = "On all ports, the answer is that of the last one.\n",
               .run = set_trap},
          },
  };
}

}  // namespace swsh
