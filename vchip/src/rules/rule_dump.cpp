// SPDX-License-Identifier: MIT
#include <swctl/types.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "common/address_text.h"
#include "document/dump.h"
#include "rules/rule_block.h"

namespace vchip {
namespace {

template <typename Word>
Word word_at(const uint8_t *bytes) {
  Word word;
  memcpy(&word, bytes, sizeof word);
  return word;
}

std::string ethertype_text(uint32_t number) {
  char text[sizeof "0xffff"];
  snprintf(text, sizeof text, "0x%04x", number & 0xffff);
  return text;
}

std::vector<uint32_t> ports_at(const uint8_t *bytes) {
  const auto bitmap = word_at<user_pbmp_t>(bytes);
  std::vector<uint32_t> ports;
  for (uint32_t port = 0; port < USER_PBMP_WORDS * 32; ++port)
    if ((bitmap.word[port / 32] >> port % 32 & 1) != 0) ports.push_back(port);
  return ports;
}

void dump_bytes(Dump &entry, const char *name, Reading reading, const uint8_t *bytes) {
  switch (reading) {
    case Reading::mac: return entry.text(name, mac_text(bytes));
    case Reading::ip4: return entry.text(name, ip4_text(word_at<uint32_t>(bytes)));
    case Reading::ports: return entry.numbers(name, ports_at(bytes));
    case Reading::half: return entry.number(name, word_at<uint16_t>(bytes));
    case Reading::ethertype: return entry.text(name, ethertype_text(word_at<uint16_t>(bytes)));
    case Reading::word: return entry.number(name, word_at<uint32_t>(bytes));
  }
}

// A port mask is all ports in every rule; it would only hide the rest.
bool shows_mask(const RuleQualifier &qualifier, Reading reading) {
  return qualifier.masked != 0 && (reading == Reading::mac || reading == Reading::ip4);
}

void dump_qualifier(Dump &entry, const RuleQualifier &qualifier) {
  const QualifierKind &kind = *qualifier_kind(qualifier.kind);
  entry.number("number", kind.number);
  entry.text("name", kind.name);
  dump_bytes(entry, "value", kind.reading, qualifier.value);
  if (shows_mask(qualifier, kind.reading)) dump_bytes(entry, "mask", kind.reading, qualifier.mask);
}

void dump_action(Dump &entry, const RuleAction &action) {
  entry.number("number", action.kind);
  entry.text("name", action_kind(action.kind)->name);
  entry.number("value", action.value);
}

struct Found {
  const EntityKind *kind;
  uint32_t index;
  const RuleArea *area;
};

void dump_rule(Dump &entry, const Found &rule) {
  const RuleArea &area = *rule.area;
  entry.number("entity", rule.kind->entity);
  entry.text("name", rule.kind->name);
  entry.number("index", rule.index);
  entry.objects("actions", area.actions,
                [&](Dump &inner, size_t place) { dump_action(inner, area.action[place]); });
  entry.objects("qualifiers", area.qualifiers,
                [&](Dump &inner, size_t place) { dump_qualifier(inner, area.qualifier[place]); });
}

}  // namespace

void RuleBlock::dump(const char *name, Dump &board) const {
  std::vector<Found> found;
  each_rule([&](const EntityKind &kind, uint32_t index, const RuleArea &area) {
    found.push_back({&kind, index, &area});
  });
  board.objects(name, found.size(),
                [&](Dump &entry, size_t place) { dump_rule(entry, found[place]); });
}

}  // namespace vchip
