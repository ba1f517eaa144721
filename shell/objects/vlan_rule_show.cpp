// SPDX-License-Identifier: MIT
// The adapter's rules and the chip's conversion of VLAN IDs as they were
// written, in the words of the commands that write them.
#include <swctl/platform/vlan_read.h>

#include <cstring>
#include <optional>

#include "acl/match_value.h"
#include "chip/optional_call.h"
#include "chip/platform.h"
#include "chip/vlan_rules.h"
#include "objects/vlan_rule.h"
#include "text.h"

namespace swsh {
namespace {

template <typename Word>
Word word_in(const uint8_t *bytes) {
  Word word;
  memcpy(&word, bytes, sizeof word);
  return word;
}

using Matched = swctl_platform_rule_qualifier;

// A number of Word's width; without a mask, every bit counts.
template <typename Word>
MatchValue number_of(const Matched &matched) {
  MatchValue value;
  value.number = word_in<Word>(matched.value);
  value.mask = matched.masked != 0 ? word_in<Word>(matched.mask) : static_cast<Word>(~Word{0});
  return value;
}

template <typename Word>
void add_number(Record &match, const char *name, Notation notation, const Matched &matched) {
  constexpr int kBits = 8 * sizeof(Word);
  const auto value = number_of<Word>(matched);
  match.add(name, match_field(notation, kBits, value), match_text(notation, kBits, value));
}

std::string mac_match_text(const Matched &matched) {
  MatchValue value;
  memcpy(value.address.data(), matched.value, SWCTL_MAC_BYTES);
  memcpy(value.address_mask.data(), matched.mask, SWCTL_MAC_BYTES);
  if (matched.masked == 0) memset(value.address_mask.data(), 0xff, SWCTL_MAC_BYTES);
  return match_text(Notation::mac, 0, value);
}

std::vector<int64_t> interfaces_of_bitmap(const uint8_t *bytes) {
  constexpr uint32_t kBits = 32;
  const auto map = word_in<user_pbmp_t>(bytes);
  std::vector<int64_t> interfaces;
  for (uint32_t bit = 0; bit < USER_PBMP_WORDS * kBits; ++bit)
    if ((map.word[bit / kBits] >> bit % kBits & 1) != 0) interfaces.push_back(bit);
  return interfaces;
}

Value tag_state_word(uint16_t state) {
  return word_value(
      {{"tagged", ADP_FP_TAG_STATE_TAGGED, ""}, {"untagged", ADP_FP_TAG_STATE_UNTAGGED, ""}},
      state);
}

Value encapsulation_word(uint32_t code) {
  return word_value({{"ethernet", ADP_FP_ENCAPSULATION_ETHERNET, ""},
                     {"llc", ADP_FP_ENCAPSULATION_LLC, ""},
                     {"snap", ADP_FP_ENCAPSULATION_SNAP, ""}},
                    code);
}

void add_match(Record &match, const RuleKind &kind, const Matched &matched) {
  switch (matched.kind) {
    case ADP_FP_QUALIFIER_SOURCE_MAC: match.add("mac", mac_match_text(matched)); return;
    case ADP_FP_QUALIFIER_SOURCE_IP4:
      add_number<uint32_t>(match, "subnet", Notation::ip, matched);
      return;
    case ADP_FP_QUALIFIER_INGRESS_PORTS:
      match.add("ports", interfaces_of_bitmap(matched.value));
      return;
    case ADP_FP_QUALIFIER_TAG_STATE:
      match.add("frames", tag_state_word(word_in<uint16_t>(matched.value)));
      return;
    case ADP_FP_QUALIFIER_RECEIVED_VLAN:
      add_number<uint16_t>(match, kind.received_vlan, Notation::decimal, matched);
      return;
    case ADP_FP_QUALIFIER_ETHERTYPE:
      add_number<uint16_t>(match, "ethertype", Notation::hexadecimal, matched);
      return;
    case ADP_FP_QUALIFIER_ENCAPSULATION:
      match.add("encapsulation", encapsulation_word(word_in<uint32_t>(matched.value)));
      return;
    default: match.add("qualifier-" + std::to_string(matched.kind), nullptr);
  }
}

void add_setting(Record &settings, const RuleKind &kind, const swctl_platform_rule_action &action) {
  const auto value = int64_t{action.value};
  switch (action.kind) {
    case ADP_FP_ACTION_VLAN: settings.add(kind.vlan, value); return;
    case ADP_FP_ACTION_OUTER_VLAN: settings.add("outer", value); return;
    case ADP_FP_ACTION_PRIORITY:
    case ADP_FP_ACTION_OUTER_PRIORITY: settings.add("priority", value); return;
    default: settings.add("action-" + std::to_string(action.kind), value);
  }
}

}  // namespace

Record vlan_rule_record(const RuleKind &kind, const swctl_platform_entity_rule &rule) {
  Record match;
  for (uint32_t place = 0; place < rule.qualifiers; ++place)
    add_match(match, kind, rule.qualifier[place]);
  Record settings;
  for (uint32_t place = 0; place < rule.actions; ++place)
    add_setting(settings, kind, rule.action[place]);
  Record record;
  record.add("kind", std::string(kind.word));
  record.add("index", int64_t{rule.index} - kind.first);
  record.add("match", match);
  record.add("sets", settings);
  return record;
}

namespace {

Answer show_rules(const Arguments &arguments, const Context &context) {
  expect_unit_zero(context);
  Answer answer = {Shape::table, {}, ""};
  for (const RuleKind &kind : kRuleKinds) {
    if (arguments.has("KIND") && arguments.word("KIND") != kind.word) continue;
    each_record(kNextRule, "rule", kind.entity, kind.first,
                [&](const swctl_platform_entity_rule &rule) {
                  answer.records.push_back(vlan_rule_record(kind, rule));
                });
  }
  return answer;
}

// A key that is ignored, or a port without an interface, is left empty.
void add_key(Record &record, const char *name, uint8_t ignored, std::optional<int64_t> value) {
  if (ignored == 0 && value) {
    record.add(name, *value);
  } else {
    record.add(name, nullptr);
  }
}

Record egress_record(const Interfaces &interfaces, const swctl_platform_vlan_egress &egress) {
  const chip_vlan_egress_entry &entry = egress.entry;
  Record record;
  record.add("index", int64_t{egress.index});
  add_key(record, "port", entry.ignore_port, interfaces.of(static_cast<int32_t>(entry.port)));
  add_key(record, "from", entry.ignore_vid, entry.vid);
  return record.add("to", int64_t{entry.new_vid});
}

Answer show_egress(const Arguments &, const Context &context) {
  const Interfaces interfaces;
  Answer answer = {Shape::table, {}, ""};
  each_record(kNextTranslation, "entry", context.unit, 0,
              [&](const swctl_platform_vlan_egress &egress) {
                answer.records.push_back(egress_record(interfaces, egress));
              });
  return answer;
}

}  // namespace

Node vlan_rule_show_command() {
  std::vector<Choice> kinds;
  for (const RuleKind &kind : kRuleKinds)
    kinds.push_back({kind.word, static_cast<int64_t>(kinds.size()), kind.help});
  return {.name = "show",
          .help = "Show the rules that the adapter keeps",
          .positional = {{.name = "KIND", .type = choice(kinds), .help = "Only rules of a kind"}},
          .run = show_rules};
}

Node vlan_translate_show_command() {
  return {.name = "show", .help = "Show the entries", .run = show_egress};
}

}  // namespace swsh
