// SPDX-License-Identifier: MIT
// Rules that choose the VLAN of frames. The adapter keeps them and does not tell
// whether it took one.
#include "objects/vlan_rule.h"

#include <swctl/vlan.h>

#include <stdexcept>
#include <utility>

#include "acl/match_value.h"
#include "chip/address_table.h"
#include "chip/call.h"
#include "chip/limits.h"
#include "chip/platform.h"
#include "chip/ports.h"
#include "chip/vlan_rules.h"
#include "chip/vlans.h"
#include "fault.h"
#include "text.h"

namespace swsh {
namespace {

constexpr uint32_t kUnused = 0;
constexpr Mac kWholeAddress = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
constexpr Mac kMakersPart = {0xFF, 0xFF, 0xFF, 0, 0, 0};

// The bits of the address that must match; `usual` if it is not said.
Mac mask_of(const Arguments &arguments, const Mac &usual) {
  return arguments.has("mask") ? mac_of(arguments, "mask") : usual;
}

// 192.0.2.0/24; without a length, one address.
MatchValue subnet_of(const Arguments &arguments) {
  const std::string &word = arguments.word("SUBNET");
  try {
    return parse_match(Notation::ip, 32, word);
  } catch (const std::invalid_argument &error) {
    throw CommandError(wrong_usage("bad value " + in_quotes(word) + ": " + error.what(), word,
                                   {"a subnet such as 192.0.2.0/24"}));
  }
}

uint32_t word_of(const Arguments &arguments, const char *name) {
  return arguments.has(name) ? arguments.u32(name) : 0;
}

user_pbmp_t ports_of_rule(const Arguments &arguments) {
  if (arguments.has("ports")) return interface_bitmap(interfaces_given(arguments, "ports"));
  std::vector<int64_t> all;
  for (const Port &port : front_ports()) all.push_back(port.interface);
  return interface_bitmap(all);
}

// Hands a rule to the adapter by a call of the library, which does not say what
// the adapter made of it. A rule that was taken without all that belongs to it
// is taken away again.
template <typename Called, typename... Given>
Answer add_rule(const char *word, const Called &called, const Arguments &arguments,
                const Context &context, Given... given) {
  expect_unit_zero(context);
  const RuleKind &kind = rule_kind(word);
  const int32_t index = arguments.i32("INDEX");
  expect_free(kind, index);
  const Witness witness;
  const int32_t result = called.get()(kLead, context.unit, index, given...);
  if (result >= 0 && witness.failed().empty()) return {};
  const CommandError error =
      refusal(witness.blame(called.name, result), subject_of(rule_text(kind, index)));
  if (result < 0 || witness.saw("adp_fp_add_entity_rule")) throw error;
  const Witness removal;
  kind.remove.get()(kLead, context.unit, index);
  throw with_note(error, removal.failed().empty() ? "nothing of it was kept"
                                                  : "what was taken of it could not be removed");
}

Answer add_translation(const Arguments &arguments, const Context &context) {
  const user_pbmp_t ports = ports_of_rule(arguments);
  return add_rule("translation", SWSH_CALL(user_vlan_translate_add), arguments, context, kUnused,
                  &ports, word_of(arguments, "from"), word_of(arguments, "to"));
}

Answer add_double_tag(const Arguments &arguments, const Context &context) {
  const user_pbmp_t ports = ports_of_rule(arguments);
  return add_rule("double-tag", SWSH_CALL(user_vlan_dtag_add), arguments, context, kUnused, &ports,
                  word_of(arguments, "inner"), word_of(arguments, "outer"),
                  word_of(arguments, "priority"));
}

Answer add_mac_rule(const Arguments &arguments, const Context &context) {
  const Mac mac = mac_of(arguments, "MAC");
  const Mac mask = mask_of(arguments, kWholeAddress);
  const user_pbmp_t ports = ports_of_rule(arguments);
  return add_rule("mac", SWSH_CALL(user_vlan_mac_add), arguments, context, mac.data(), mask.data(),
                  word_of(arguments, "vlan"), word_of(arguments, "priority"), &ports);
}

Answer add_voice(const Arguments &arguments, const Context &context) {
  const Mac mac = mac_of(arguments, "MAC");
  const Mac mask = mask_of(arguments, kMakersPart);
  const user_pbmp_t ports = ports_of_rule(arguments);
  return add_rule("voice", SWSH_CALL(user_vlan_voice_oui_mac_add), arguments, context, mac.data(),
                  mask.data(), word_of(arguments, "vlan"), word_of(arguments, "priority"), &ports);
}

Answer add_ip4(const Arguments &arguments, const Context &context) {
  const MatchValue subnet = subnet_of(arguments);
  const user_pbmp_t ports = ports_of_rule(arguments);
  return add_rule("ip4", SWSH_CALL(user_vlan_ip4_add), arguments, context, subnet.number,
                  subnet.mask, word_of(arguments, "vlan"), word_of(arguments, "priority"), &ports);
}

Answer add_protocol(const Arguments &arguments, const Context &context) {
  const user_pbmp_t ports = ports_of_rule(arguments);
  return add_rule("protocol", SWSH_CALL(user_port_protocol_vlan_add), arguments, context, kUnused,
                  &ports, word_of(arguments, "encapsulation"), word_of(arguments, "ethertype"),
                  word_of(arguments, "vlan"), word_of(arguments, "priority"));
}

template <size_t number>
Answer delete_rule(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  const RuleKind &kind = kRuleKinds[number];
  const int32_t index = arguments.i32("INDEX");
  expect_rule(kind, index);
  perform(kind.remove, rule_text(kind, index), kLead, context.unit, index);
  return {};
}

std::string egress_text(const Arguments &arguments) {
  return "entry " + arguments.word("INDEX");
}

Answer add_egress(const Arguments &arguments, const Context &context) {
  const Port port = port_of(arguments.number("port"));
  perform(SWSH_CALL(user_vlan_translate_egress_add), egress_text(arguments), kLead, context.unit,
          arguments.u32("INDEX"), port.chip, arguments.u32("from"), arguments.u32("to"));
  return {};
}

Answer delete_egress(const Arguments &arguments, const Context &context) {
  expect_translation(context.unit, arguments.i32("INDEX"));
  perform(SWSH_CALL(user_vlan_translate_egress_delete), egress_text(arguments), kLead, context.unit,
          arguments.u32("INDEX"));
  return {};
}

Answer init_ingress(const Arguments &, const Context &context) {
  perform(SWSH_CALL(user_vlan_ingress_convert_block_mode_init), context, context.unit);
  return {};
}

Parameter index_place(int64_t count) {
  return required("INDEX", number(0, count - 1), "Place of the rule");
}

Parameter vid_keyword(const char *name, const char *help) {
  return required(name, number(kFirstVlan, kLastVlan), help);
}

Parameter priority_keyword() {
  return {
      .name = "priority", .type = number(0, kLastPriority), .help = "Priority that the frames get"};
}

Parameter mask_keyword() {
  return {.name = "mask", .type = mac_address(), .help = "Bits of the address that must match"};
}

Parameter ports_keyword() {
  return {.name = "ports",
          .type = interface_list(),
          .help = "Ports that the frames come in on; all if not given"};
}

Parameter encapsulation_keyword() {
  return required("encapsulation",
                  choice({{"ethernet", USER_ENCAPSULATION_ETHERNET, "Ethernet II"},
                          {"llc", USER_ENCAPSULATION_LLC, "IEEE 802.2 LLC"},
                          {"snap", USER_ENCAPSULATION_SNAP, "IEEE 802.2 SNAP"}}),
                  "How the frame tells its protocol");
}

Parameter ethertype_keyword() {
  return required("ethertype", number(0, 0xFFFF), "The frame's protocol");
}

Node add_commands() {
  const Parameter vlan = vid_keyword("vlan", "VLAN that the frames get");
  return {.name = "add",
          .help = "Hand a rule to the adapter",
          .children = {
              {.name = "translation",
               .help = "Tagged frames of one VLAN get another",
               .positional = {index_place(USER_VLAN_TRANSLATE_RULES)},
               .keywords = {vid_keyword("from", "VLAN of the received tag"),
                            vid_keyword("to", "VLAN that the frames get"), ports_keyword()},
               .run = add_translation},
              {.name = "double-tag",
               .help = "Tagged frames of one VLAN get an outer tag",
               .positional = {index_place(USER_VLAN_DTAG_RULES)},
               .keywords = {vid_keyword("inner", "VLAN of the received tag"),
                            vid_keyword("outer", "VLAN of the outer tag"), priority_keyword(),
                            ports_keyword()},
               .run = add_double_tag},
              {.name = "mac",
               .help = "Untagged frames of a source MAC address",
               .positional = {index_place(USER_VLAN_MAC_RULES),
                              required("MAC", mac_address(), "Source address")},
               .keywords = {vlan, mask_keyword(), priority_keyword(), ports_keyword()},
               .run = add_mac_rule},
              {.name = "ip4",
               .help = "Untagged frames of a source IPv4 subnet",
               .positional = {index_place(USER_VLAN_IP4_RULES),
                              required("SUBNET", text(), "Source subnet, 192.0.2.0/24")},
               .keywords = {vlan, priority_keyword(), ports_keyword()},
               .run = add_ip4},
              {.name = "voice",
               .help = "Voice VLAN: frames of telephones by the OUI of their address",
               .positional = {index_place(USER_VLAN_VOICE_RULES),
                              required("MAC", mac_address(), "Source address")},
               .keywords = {vlan, mask_keyword(), priority_keyword(), ports_keyword()},
               .details = "Without a mask, the first three bytes must match.\n",
               .run = add_voice},
              {.name = "protocol",
               .help = "Untagged frames of a protocol",
               .positional = {index_place(USER_VLAN_PROTOCOL_RULES)},
               .keywords = {vlan, encapsulation_keyword(), ethertype_keyword(), priority_keyword(),
                            ports_keyword()},
               .run = add_protocol},
          }};
}

Node delete_command(const char *name, const char *help, int64_t count, Handler run) {
  return {.name = name, .help = help, .positional = {index_place(count)}, .run = run};
}

template <size_t... numbers>
std::vector<Node> delete_commands_of(std::index_sequence<numbers...>) {
  return {delete_command(kRuleKinds[numbers].word, kRuleKinds[numbers].help,
                         kRuleKinds[numbers].count, delete_rule<numbers>)...};
}

Node delete_commands() {
  return {.name = "del",
          .help = "Take a rule away",
          .children = delete_commands_of(std::make_index_sequence<kRuleKinds.size()>())};
}

}  // namespace

Node vlan_rule_commands() {
  return {.name = "rule",
          .help = "Rules that choose the VLAN of incoming frames",
          .children = {vlan_rule_show_command(), add_commands(), delete_commands()}};
}

Node vlan_translate_commands() {
  constexpr int64_t kAnyIndex = 0xFFFF;
  return {.name = "translate",
          .help = "Translation of VLAN IDs on the way out",
          .children = {vlan_translate_show_command(),
                       {.name = "add",
                        .help = "Egress translation: frames of one VLAN leave a port in another",
                        .positional = {index_place(kAnyIndex)},
                        .keywords = {required("port", interface_number(), "Port that they leave"),
                                     vid_keyword("from", "VLAN that the frames have"),
                                     vid_keyword("to", "VLAN that they leave with")},
                        .run = add_egress},
                       delete_command("del", "Clear an entry", kAnyIndex, delete_egress),
                       {.name = "init",
                        .help = "Program what the ingress conversion blocks are for",
                        .run = init_ingress}}};
}

}  // namespace swsh
