// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "acl/acl_action.h"
#include "acl/acl_block.h"
#include "document/dump.h"

namespace vchip {
namespace {

std::string joined_text(const std::vector<std::string> &parts, const char *separator) {
  std::string text;
  for (const std::string &part : parts) {
    if (!text.empty()) text += separator;
    text += part;
  }
  return text;
}

std::vector<size_t> written_fields(const AclRule &rule) {
  std::vector<size_t> places;
  for (size_t place = 0; place < kAclFields.size(); ++place)
    if (rule.has_field(place)) places.push_back(place);
  return places;
}

// match outer vlan 10 mask 0xfff, in ports 0-3; drop; meter 3
std::string rule_text(const AclRule &rule, const std::vector<std::string> &actions) {
  std::vector<std::string> fields;
  for (const size_t place : written_fields(rule))
    fields.push_back(field_text(kAclFields[place], rule.field(place)));
  std::vector<std::string> parts = {"match " +
                                    (fields.empty() ? "all" : joined_text(fields, ", "))};
  parts.insert(parts.end(), actions.begin(), actions.end());
  return joined_text(parts, "; ");
}

void dump_field(Dump &entry, const AclField &field, const FieldValue &value) {
  const uint32_t bytes = chip_acl_field_bytes(field.id);
  entry.number("field", field.id);
  entry.text("text", field_text(field, value));
  entry.numbers("data", {value.data, value.data + bytes});
  entry.numbers("mask", {value.mask, value.mask + bytes});
}

void dump_word(Dump &entry, size_t word, uint32_t value) {
  entry.number("word", static_cast<int64_t>(word));
  entry.number("value", value);
}

std::vector<size_t> words_in_use(const chip_acl_action &action) {
  std::vector<size_t> words;
  for (size_t word = 0; word < CHIP_ACL_ACTION_WORDS; ++word)
    if (action.word[word] != 0) words.push_back(word);
  return words;
}

}  // namespace

void AclBlock::dump_rule(Dump &entry, uint32_t number) const {
  const AclRule &own = rule(number);
  const chip_acl_action &does = action(number);
  const std::vector<std::string> actions = action_texts(does);
  const std::vector<size_t> fields = written_fields(own);
  const std::vector<size_t> words = words_in_use(does);
  entry.number("rule", number);
  entry.flag("valid", own.valid != 0);
  entry.flag("joined", own.joined != 0);
  entry.text("text", rule_text(own, actions));
  entry.objects("match", fields.size(), [&](Dump &field, size_t index) {
    dump_field(field, kAclFields[fields[index]], own.field(fields[index]));
  });
  entry.texts("actions", actions);
  entry.objects("action_words", words.size(), [&](Dump &word, size_t index) {
    dump_word(word, words[index], does.word[words[index]]);
  });
}

void AclBlock::dump_form(Dump &block) const {
  block.objects("templates", kAclTemplates, [this](Dump &entry, size_t index) {
    entry.number("template", static_cast<int64_t>(index));
    entry.numbers("field_types", {templates_[index].begin(), templates_[index].end()});
  });
  block.objects("selectors", kAclSelectors, [this](Dump &entry, size_t index) {
    entry.number("selector", static_cast<int64_t>(index));
    entry.numbers("templates", {selectors_[index].begin(), selectors_[index].end()});
  });
  std::vector<uint32_t> dropping;
  for (uint32_t port = 0; port < VCHIP_PORTS; ++port)
    if (misses_[port] != 0) dropping.push_back(port);
  block.numbers("drops_what_no_rule_matches", dropping);
}

void AclBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> used;
  for (uint32_t number = 0; number < VCHIP_ACL_RULES; ++number)
    if (rules_[number].is_used()) used.push_back(number);
  unit.object(name, [&](Dump &block) {
    dump_form(block);
    block.objects("rules", used.size(),
                  [&](Dump &entry, size_t index) { dump_rule(entry, used[index]); });
  });
}

}  // namespace vchip
