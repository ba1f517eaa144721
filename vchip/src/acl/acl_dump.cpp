// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

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

// match outer vlan 10 mask 0xfff, in ports 0-3; drop; meter 3
std::string rule_text(const AclRuleView &rule) {
  std::vector<std::string> fields;
  for (const AclFieldView &field : rule.match) fields.push_back(field.text);
  std::vector<std::string> parts = {"match " +
                                    (fields.empty() ? "all" : joined_text(fields, ", "))};
  parts.insert(parts.end(), rule.actions.begin(), rule.actions.end());
  return joined_text(parts, "; ");
}

void dump_field(Dump &entry, const AclFieldView &field) {
  entry.number("field", field.field);
  entry.text("text", field.text);
  entry.numbers("data", {field.data.begin(), field.data.end()});
  entry.numbers("mask", {field.mask.begin(), field.mask.end()});
}

void dump_word(Dump &entry, size_t word, uint32_t value) {
  entry.number("word", static_cast<int64_t>(word));
  entry.number("value", value);
}

std::vector<size_t> words_in_use(const AclRuleView &rule) {
  std::vector<size_t> words;
  for (size_t word = 0; word < rule.action.size(); ++word)
    if (rule.action[word] != 0) words.push_back(word);
  return words;
}

}  // namespace

void AclBlock::dump_rule(Dump &entry, uint32_t number) const {
  const AclRuleView rule = view(number);
  const std::vector<size_t> words = words_in_use(rule);
  entry.number("rule", number);
  entry.flag("valid", rule.valid);
  entry.flag("joined", rule.joined);
  entry.text("text", rule_text(rule));
  entry.objects("match", rule.match.size(),
                [&](Dump &field, size_t index) { dump_field(field, rule.match[index]); });
  entry.texts("actions", rule.actions);
  entry.objects("action_words", words.size(), [&](Dump &word, size_t index) {
    dump_word(word, words[index], rule.action[words[index]]);
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
    if (is_used(rules_[number])) used.push_back(number);
  unit.object(name, [&](Dump &block) {
    dump_form(block);
    block.objects("rules", used.size(),
                  [&](Dump &entry, size_t index) { dump_rule(entry, used[index]); });
  });
}

}  // namespace vchip
