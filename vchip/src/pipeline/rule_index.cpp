// SPDX-License-Identifier: MIT
#include "pipeline/rule_index.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace vchip {
namespace {

// So many that a frame seldom finds a rule that is not its own, and few enough
// to stay near the processor: they are read for every frame.
constexpr uint32_t kHeadsARule = 16;
constexpr uint32_t kMostHeads = 8192;
constexpr uint64_t kHashFactor = 0x9e3779b97f4a7c15;

constexpr size_t kTemplate = place_of_field(CHIP_ACL_FIELD_TEMPLATE);
constexpr size_t kInPorts = place_of_field(CHIP_ACL_FIELD_IN_PORTS);
constexpr size_t kProtocol = place_of_field(CHIP_ACL_FIELD_IP_PROTOCOL);

// A 1 in every bit of the fields that a table leaves out: the template is the
// form of a rule, and the ports differ from rule to rule.
using MatchBytes = std::array<uint8_t, kMatchBytes>;
constexpr MatchBytes without(size_t place, MatchBytes bytes) {
  for (size_t at = start_of_field(place); at < start_of_field(place + 1); ++at) bytes[at] = 0;
  return bytes;
}
constexpr MatchBytes all_bytes() {
  MatchBytes bytes = {};
  for (uint8_t &byte : bytes) byte = 0xff;
  return bytes;
}
constexpr MatchWords kCompared = std::bit_cast<MatchWords>(without(kTemplate, all_bytes()));
constexpr MatchWords kHashed =
    std::bit_cast<MatchWords>(without(kInPorts, without(kTemplate, all_bytes())));

uint64_t word_of(const uint8_t *bytes, size_t word) {
  uint64_t value = 0;
  memcpy(&value, bytes + word * sizeof value, sizeof value);
  return value;
}

// For each byte the bit of its field, where a frame has to have the field.
using FieldBits = std::array<uint32_t, kMatchBytes>;
constexpr FieldBits field_bits() {
  FieldBits bits = {};
  for (size_t place = 0; place < kAclFields.size(); ++place)
    for (size_t at = start_of_field(place); at < start_of_field(place + 1); ++at)
      bits[at] = place == kTemplate || place == kInPorts ? 0 : uint32_t{1} << place;
  return bits;
}
constexpr FieldBits kFieldBits = field_bits();

uint32_t required_by(const AclRule &rule) {
  uint32_t required = 0;
  for (size_t word = 0; word < kMatchWords; ++word) {
    if (word_of(rule.mask, word) == 0) continue;
    for (size_t at = word * sizeof(uint64_t); at < (word + 1) * sizeof(uint64_t); ++at)
      if (rule.mask[at] != 0) required |= kFieldBits[at];
  }
  return required;
}

// The first byte alone is looked at: it is a class.
bool is_by_class(const AclRule &rule) {
  const uint8_t *mask = rule.mask + start_of_field(kProtocol);
  return mask[0] == 0xff && mask[1] == 0;
}

uint32_t words_of(const AclRule &rule) {
  uint32_t words = 0;
  for (size_t word = 0; word < kMatchWords; ++word)
    if ((word_of(rule.mask, word) & kHashed[word]) != 0) words |= uint32_t{1} << word;
  return words;
}

bool same_mask(const AclRule &one, const AclRule &other) {
  for (size_t word = 0; word < kMatchWords; ++word)
    if (((word_of(one.mask, word) ^ word_of(other.mask, word)) & kHashed[word]) != 0) return false;
  return true;
}

// Over the words that a mask looks at.
template <typename Word>
uint32_t hash_of(const AclRule &masks, uint32_t words, uint32_t seed, Word field) {
  uint64_t hash = (seed + 1) * kHashFactor;
  for (uint32_t rest = words; rest != 0; rest &= rest - 1) {
    const auto word = static_cast<size_t>(std::countr_zero(rest));
    hash = (hash ^ (field(word) & word_of(masks.mask, word) & kHashed[word])) * kHashFactor;
    hash ^= hash >> 29;
  }
  return static_cast<uint32_t>(hash >> 32 ^ hash);
}

bool equals(const AclRule &rule, const MatchWords &fields) {
  for (size_t word = 0; word < kMatchWords; ++word) {
    const uint64_t mask = word_of(rule.mask, word) & kCompared[word];
    if (((fields[word] ^ word_of(rule.data, word)) & mask) != 0) return false;
  }
  return true;
}

const FrameFields &fields_of(const MatchKey &key, bool by_class) {
  return by_class ? key.by_class : key.by_number;
}

bool matches(const AclRule &rule, const MatchKey &key) {
  const FrameFields &fields = fields_of(key, is_by_class(rule));
  return (required_by(rule) & ~fields.present) == 0 && equals(rule, fields.words);
}

// The ports are the bits that are 0 in the mask.
uint32_t ports_of(const AclRule &rule) {
  uint32_t data = 0;
  uint32_t mask = 0;
  memcpy(&data, rule.data + start_of_field(kInPorts), sizeof data);
  memcpy(&mask, rule.mask + start_of_field(kInPorts), sizeof mask);
  uint32_t ports = 0;
  for (uint32_t port = 0; port < VCHIP_PORTS; ++port)
    if ((((uint32_t{1} << port) ^ data) & mask) == 0) ports |= uint32_t{1} << port;
  return ports;
}

bool is_second(const AclBlock &block, uint32_t number) {
  return number > 0 && block.rule(number - 1).joined != 0;
}

// The rules joined to it have to match as well.
bool chain_matches(const AclBlock &block, uint32_t number, const MatchKey &key) {
  for (; block.rule(number).joined != 0; ++number) {
    if (number + 1 >= VCHIP_ACL_RULES) return false;
    const AclRule &next = block.rule(number + 1);
    if (next.valid == 0 || !matches(next, key)) return false;
  }
  return true;
}

}  // namespace

void RuleIndex::compile(const AclBlock &block) {
  tables_.clear();
  rules_.clear();
  heads_.clear();
  asks_for_class_ = false;
  uint32_t rules = 0;
  for (uint32_t number = 0; number < VCHIP_ACL_RULES; ++number)
    if (block.rule(number).valid != 0) ++rules;
  if (rules == 0) return;
  heads_.assign(std::min(std::bit_ceil(rules * kHeadsARule), kMostHeads), 0);
  for (uint32_t number = 0; number < VCHIP_ACL_RULES; ++number) {
    if (block.rule(number).valid == 0) continue;
    asks_for_class_ = asks_for_class_ || is_by_class(block.rule(number));
    if (!is_second(block, number)) insert(block, number);
  }
}

uint32_t RuleIndex::table_for(const AclBlock &block, uint32_t number) {
  const AclRule &rule = block.rule(number);
  const uint32_t required = required_by(rule);
  for (uint32_t table = 0; table < tables_.size(); ++table)
    if (tables_[table].required == required && same_mask(block.rule(tables_[table].first), rule))
      return table;
  tables_.push_back(
      {words_of(rule), required, 0, static_cast<uint16_t>(number), is_by_class(rule)});
  return static_cast<uint32_t>(tables_.size() - 1);
}

// Rules come in by number, so appending keeps a chain in order.
void RuleIndex::insert(const AclBlock &block, uint32_t number) {
  const AclRule &rule = block.rule(number);
  const uint32_t table = table_for(block, number);
  tables_[table].ports |= ports_of(rule);
  const uint32_t hash = hash_of(rule, tables_[table].words, table,
                                [&](size_t word) { return word_of(rule.data, word); });
  rules_.push_back({hash, static_cast<uint16_t>(number), 0});
  const auto place = static_cast<uint16_t>(rules_.size());
  uint16_t *end = &heads_[hash & (heads_.size() - 1)];
  while (*end != 0) end = &rules_[*end - 1u].next;
  *end = place;
}

int32_t RuleIndex::search(const AclBlock &block, const Table &table, uint32_t place,
                          const MatchKey &key, int32_t best) const {
  const FrameFields &fields = fields_of(key, table.by_class);
  const uint32_t hash = hash_of(block.rule(table.first), table.words, place,
                                [&](size_t word) { return fields.words[word]; });
  for (uint16_t at = heads_[hash & (heads_.size() - 1)]; at != 0; at = rules_[at - 1u].next) {
    const Rule &rule = rules_[at - 1u];
    if (best >= 0 && rule.number > best) break;
    if (rule.hash != hash || !equals(block.rule(rule.number), fields.words)) continue;
    if (chain_matches(block, rule.number, key)) return rule.number;
  }
  return best;
}

// Tables come by their lowest rule: once that is above the best there is no
// better one.
int32_t RuleIndex::find(const AclBlock &block, const MatchKey &key) const {
  int32_t best = -1;
  for (uint32_t place = 0; place < tables_.size(); ++place) {
    const Table &table = tables_[place];
    if (best >= 0 && table.first > best) break;
    const uint32_t present = fields_of(key, table.by_class).present;
    if ((table.required & ~present) == 0 && (table.ports & key.in_port) != 0)
      best = search(block, table, place, key, best);
  }
  return best;
}

size_t RuleIndex::bytes() const {
  return tables_.size() * sizeof tables_[0] + rules_.size() * sizeof rules_[0] +
         heads_.size() * sizeof heads_[0];
}

}  // namespace vchip
