// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <string>
#include <unistd.h>

#include "chip/call.h"
#include "port/commands.h"
#include "text.h"

namespace swsh {
namespace {

std::string state_text(uint32_t state) {
  switch (state) {
    case USER_CABLE_OK: return "ok";
    case USER_CABLE_OPEN: return "open";
    case USER_CABLE_SHORT: return "short";
    case USER_CABLE_MISMATCH: return "mismatch";
    case USER_CABLE_FAULTY: return "faulty";
    default: return std::to_string(state);
  }
}

// The wire as far as it is good, and how it ends.
std::string wire(uint32_t state, uint32_t length, uint32_t longest) {
  constexpr uint32_t kWidth = 32;
  const auto scaled = static_cast<size_t>(uint64_t{kWidth} * length / longest);
  std::string drawn(std::max<size_t>(scaled, 1), '=');
  switch (state) {
    case USER_CABLE_OK: return drawn + "|";
    case USER_CABLE_OPEN: return drawn + "  ";
    case USER_CABLE_SHORT: return drawn + "]";
    default: return drawn + "x";
  }
}

std::string trimmed(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

std::string drawing(const user_cable_diag_t &cable, const Port &port) {
  std::string text =
      "port " + std::to_string(port.interface) + ": " + state_text(cable.state) + '\n';
  const uint32_t longest =
      *std::max_element(cable.pair_length, cable.pair_length + USER_CABLE_PAIRS);
  for (int pair = 0; pair < USER_CABLE_PAIRS; ++pair) {
    const uint32_t state = cable.pair_state[pair];
    const uint32_t length = cable.pair_length[pair];
    const std::string label(1, static_cast<char>('A' + pair));
    text += "  " + label + "  " + padded(state_text(state), 10) +
            padded(std::to_string(length) + " m", 8) + trimmed(wire(state, length, longest)) + '\n';
  }
  return text;
}

Record record_of(const user_cable_diag_t &cable, const Port &port) {
  std::vector<Record> pairs;
  for (int pair = 0; pair < USER_CABLE_PAIRS; ++pair) {
    Record record;
    record.add("pair", std::string(1, static_cast<char>('A' + pair)));
    record.add("state", state_text(cable.pair_state[pair]));
    record.add("length", int64_t{cable.pair_length[pair]});
    pairs.push_back(record);
  }
  Record record;
  record.add("port", port.interface);
  record.add("state", state_text(cable.state));
  record.add("pairs", pairs);
  return record;
}

// The test blocks its caller: a person is told that it goes on.
void say_wait(const Port &port) {
  if (isatty(STDERR_FILENO) != 0)
    fprintf(stderr, "testing the cable of port %lld, about three seconds ...\n",
            static_cast<long long>(port.interface));
}

Answer test(const Arguments &arguments, const Context &context) {
  const Port port = port_of(arguments.number("PORT"));
  say_wait(port);
  constexpr auto kTest = SWSH_CALL(User_port_cablediag);
  user_cable_diag_t cable = {};
  const int32_t result = perform(kTest, port, kLead, context.unit, port.chip, &cable);
  // Without pairs the test did not start, whatever the result's sign.
  if (cable.pairs == 0) refuse({kTest.name, result}, subject_of(port));
  return {Shape::text, {record_of(cable, port)}, drawing(cable, port)};
}

}  // namespace

Node port_cable_command() {
  return {
      .name = "cable",
      .help = "Test the cable of a copper port",
      .positional = {required("PORT", interface_number(), "Port to test")},
      .details =
          "Takes three seconds and interrupts the link. Shows for each pair of wires its\n"
          "state and the length to the fault, or to the far end.\n",
      .run = test,
  };
}

}  // namespace swsh
