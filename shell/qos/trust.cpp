// SPDX-License-Identifier: MIT
#include <swctl/platform/qos_read.h>
#include <swctl/qos.h>

#include "chip/each.h"
#include "chip/optional_call.h"
#include "chip/platform.h"
#include "chip/ports.h"
#include "qos/commands.h"
#include "text.h"

namespace swsh {
namespace {

std::string trust_group_text(int64_t group) {
  return "trust group " + std::to_string(group);
}

// The group of the chip that the library gives no weights.
constexpr int64_t kNoTrust = 3;

std::vector<Choice> trusts() {
  return {{"port", USER_QOS_TRUST_PORT, "The port's"},
          {"tag", USER_QOS_TRUST_TAG, "A tag's, if any"},
          {"dscp", USER_QOS_TRUST_DSCP, "That of the code point, if any"},
          {"none", kNoTrust, "None of them, as after power-on"}};
}

using TrustWeights = std::vector<int64_t>;

TrustWeights read_trust_weights(const Context &context, uint32_t group) {
  uint32_t weights[SWCTL_PLATFORM_QOS_WEIGHTS] = {};
  perform(SWSH_OPTIONAL_CALL(swctl_platform_qos_group_get), trust_group_text(group), context.unit,
          group, weights);
  return {std::begin(weights), std::end(weights)};
}

std::string in_given_order(const TrustWeights &weights) {
  std::vector<std::string> words;
  for (const int64_t weight : weights) words.push_back(std::to_string(weight));
  return join(words, ",");
}

Answer show_trust(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const Port &port : chosen_ports(arguments)) {
    const uint32_t group =
        ask(SWSH_OPTIONAL_CALL(swctl_platform_qos_port_group_get), port, context.unit, port.chip);
    const TrustWeights weights = read_trust_weights(context, group);
    answer.records.push_back(Record()
                                 .add("port", port.interface)
                                 .add("trust", word_value(trusts(), group))
                                 .add("weights", weights, in_given_order(weights)));
  }
  return answer;
}

Answer set_trust(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const auto group = arguments.i32("TRUST");
  const std::vector<Port> ports = ports_given(arguments, "PORTS");
  if (group != kNoTrust)
    perform(SWSH_CALL(user_qos_trust_sel_group_set), trust_group_text(group), group);
  for_each_port(ports, [&](const Port &port) {
    perform(SWSH_CALL(user_qos_port_trust_mode_set), port, port.chip, static_cast<uint32_t>(group));
  });
  return {};
}

}  // namespace

Node qos_trust_commands() {
  return {
      .name = "trust",
      .help = "Which priority of a frame a port trusts",
      .children = {
          {.name = "show",
           .help = "Show what ports trust",
           .positional = {ports_to_show()},
           .details = "weights are the words of the port's group in the chip. A group that qos\n"
                      "trust set does not choose is its number.\n",
           .run = show_trust},
          {.name = "set",
           .help = "Choose what ports trust",
           .positional = {ports_to_change(),
                          required("TRUST", choice(trusts()), "Whose priority counts")},
           .run = set_trust}}};
}

}  // namespace swsh
