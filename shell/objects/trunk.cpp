// SPDX-License-Identifier: MIT
#include <swctl/mirror_trunk.h>
#include <swctl/platform/sdk.h>
#include <swctl/platform/trunk_read.h>

#include <algorithm>

#include "chip/absent.h"
#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/optional_call.h"
#include "chip/platform.h"
#include "chip/ports.h"
#include "objects/registry.h"
#include "text.h"

namespace swsh {
namespace {

constexpr auto kNextTrunk = SWSH_OPTIONAL_CALL(swctl_platform_trunk_next);

std::string trunk_text(uint32_t trunk) {
  return "trunk " + std::to_string(trunk);
}

// The choices of trunk hash, with the chip's bits of each.
struct TrunkHash {
  const char *word;
  const char *help;
  std::optional<uint32_t> selector;  // of the library; it has none for the source port
  uint32_t bits;
};
constexpr TrunkHash kTrunkHashes[] = {
    {"source-port", "The port that they came in on", std::nullopt, CHIP_TRUNK_HASH_SOURCE_PORT},
    {"none", "Nothing", USER_TRUNK_HASH_NONE, 0},
    {"source-mac", "Source MAC", USER_TRUNK_HASH_SOURCE_MAC, CHIP_TRUNK_HASH_SOURCE_MAC},
    {"destination-mac", "Destination MAC", USER_TRUNK_HASH_DESTINATION_MAC,
     CHIP_TRUNK_HASH_DESTINATION_MAC},
    {"macs", "Both MACs", USER_TRUNK_HASH_MACS,
     CHIP_TRUNK_HASH_SOURCE_MAC | CHIP_TRUNK_HASH_DESTINATION_MAC},
    {"source-ip", "Source IP", USER_TRUNK_HASH_SOURCE_IP, CHIP_TRUNK_HASH_SOURCE_IP},
    {"destination-ip", "Destination IP", USER_TRUNK_HASH_DESTINATION_IP,
     CHIP_TRUNK_HASH_DESTINATION_IP},
    {"ips", "Both IPs", USER_TRUNK_HASH_IPS,
     CHIP_TRUNK_HASH_SOURCE_IP | CHIP_TRUNK_HASH_DESTINATION_IP},
};

uint32_t read_hash(const Context &context) {
  return ask(SWSH_OPTIONAL_CALL(swctl_platform_trunk_hash_get), context, context.unit,
             CHIP_TRUNK_ALGORITHM);
}

// The word of what the chip hashes; its bits where trunk hash has no word.
Record &add_hash(Record &record, uint32_t bits) {
  for (const TrunkHash &each : kTrunkHashes)
    if (each.bits == bits) return record.add("hash", std::string(each.word));
  return record.add("hash", int64_t{bits}, hexadecimal(bits));
}

std::vector<swctl_platform_trunk> read_trunks(const Context &context) {
  std::vector<swctl_platform_trunk> trunks;
  each_record(kNextTrunk, "trunk", context.unit, 0,
              [&](const swctl_platform_trunk &trunk) { trunks.push_back(trunk); });
  return trunks;
}

// Throws there_is_no() for a trunk without members.
void expect_trunk(const Arguments &arguments, const std::vector<swctl_platform_trunk> &trunks) {
  const auto is_it = [&](const swctl_platform_trunk &trunk) {
    return trunk.index == arguments.number("TRUNK");
  };
  if (std::ranges::none_of(trunks, is_it))
    throw there_is_no("trunk", std::to_string(arguments.number("TRUNK")));
}

Answer show_trunks(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const Interfaces interfaces;
  const uint32_t hash = read_hash(context);
  const std::vector<swctl_platform_trunk> trunks = read_trunks(context);
  if (arguments.has("TRUNK")) expect_trunk(arguments, trunks);
  Answer answer = {Shape::table, {}, ""};
  for (const swctl_platform_trunk &trunk : trunks) {
    if (arguments.has("TRUNK") && arguments.number("TRUNK") != trunk.index) continue;
    Record record;
    record.add("trunk", int64_t{trunk.index});
    record.add("ports", interfaces_of(interfaces, trunk.members));
    answer.records.push_back(add_hash(record, hash));
  }
  return answer;
}

Answer set_trunk(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const uint32_t trunk = arguments.u32("TRUNK");
  user_trunk_desc_t members = {};
  for (const Port &port : ports_given(arguments, "PORTS"))
    members.ports[members.count++] = static_cast<uint8_t>(port.chip);
  perform(SWSH_CALL(user_trunk_set), trunk_text(trunk), kLead, context.unit, trunk, members);
  return {};
}

Answer del_trunk(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const uint32_t trunk = arguments.u32("TRUNK");
  if (kNextTrunk.find() != nullptr) expect_trunk(arguments, read_trunks(context));
  perform(SWSH_CALL(user_trunk_destroy), trunk_text(trunk), kLead, context.unit, trunk);
  return {};
}

Answer hash(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  if (!arguments.has("FIELDS")) {
    Record record;
    return {Shape::detail, {add_hash(record, read_hash(context))}, ""};
  }
  const uint32_t bits = arguments.u32("FIELDS");
  const auto hash = std::ranges::find(kTrunkHashes, bits, &TrunkHash::bits);
  if (hash->selector) {
    perform(SWSH_CALL(user_trunk_loadbalance_set), context, kLead, context.unit, 0u,
            *hash->selector);
  } else {
    perform(SWSH_CALL(rtk_trunk_distributionAlgorithmParam_set), context, context.unit,
            CHIP_TRUNK_ALGORITHM, bits);
  }
  return {};
}

Parameter trunk_parameter(bool required = true) {
  return {.name = "TRUNK", .type = number(0, kLastTrunk), .help = "Trunk", .required = required};
}

Type hash_fields() {
  std::vector<Choice> choices;
  for (const TrunkHash &each : kTrunkHashes) choices.push_back({each.word, each.bits, each.help});
  return choice(choices);
}

}  // namespace

Node trunk_object() {
  return {
      .name = "trunk",
      .help = "Trunks: ports that work as one link",
      .children =
          {
              {.name = "show",
               .help = "Show the trunks that have members",
               .positional = {trunk_parameter(false)},
               .run = show_trunks},
              {.name = "set",
               .help = "Give a trunk its members",
               .positional = {trunk_parameter(),
                              required("PORTS", interface_list(), "All of its ports")},
               .details = "Ports that are not named are no longer members.\n",
               .run = set_trunk},
              {.name = "del",
               .help = "Take every port out of a trunk",
               .positional = {trunk_parameter()},
               .run = del_trunk},
              {.name = "hash",
               .help = "Show or choose what spreads frames over members",
               .positional = {{.name = "FIELDS", .type = hash_fields(), .help = "Header fields"}},
               .details =
                   "The choice holds for all trunks. Other fields that the chip hashes are shown\n"
                   "as its bits.\n",
               .run = hash},
          },
  };
}

}  // namespace swsh
