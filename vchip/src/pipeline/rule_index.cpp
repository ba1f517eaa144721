// SPDX-License-Identifier: MIT
#include "pipeline/rule_index.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "common/numbers.h"

namespace vchip {
namespace {

// So many that a frame seldom finds a rule that is not its own, and few enough
// to stay near the processor: they are read for every frame.
constexpr uint32_t kHeadsARule = 16;
constexpr uint32_t kMostHeads = 8192;
// Masks are kept side by side for as many tables as a chip in use has.
constexpr size_t kMostMasks = 128;
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

MatchWords words_of(const uint8_t *bytes) {
  MatchWords words;
  memcpy(words.data(), bytes, sizeof words);
  return words;
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

bool same_mask(const AclRule &one, const AclRule &other) {
  for (size_t word = 0; word < kMatchWords; ++word)
    if (((word_of(one.mask, word) ^ word_of(other.mask, word)) & kHashed[word]) != 0) return false;
  return true;
}

uint64_t mixed(uint64_t hash, uint64_t word) {
  return (hash ^ word) * kHashFactor;
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
  const uint32_t wanted = data & mask;
  // The bit of the port alone equals the data there: all 0 in it, or just that one.
  if (wanted == 0) return ~mask & kAllPorts;
  return std::has_single_bit(wanted) ? wanted & kAllPorts : 0;
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
  used_.clear();
  masks_.clear();
  asks_for_class_ = false;
  uint32_t rules = 0;
  for (uint32_t number = 0; number < VCHIP_ACL_RULES; ++number)
    if (block.rule(number).valid != 0) ++rules;
  if (rules == 0) return;
  rules_.reserve(rules);
  heads_.assign(std::min(std::bit_ceil(rules * kHeadsARule), kMostHeads), 0);
  used_.assign((heads_.size() + 63) / 64, 0);
  head_shift_ = 32 - static_cast<uint32_t>(std::countr_zero(heads_.size()));
  for (uint32_t number = 0; number < VCHIP_ACL_RULES; ++number) {
    if (block.rule(number).valid == 0) continue;
    asks_for_class_ = asks_for_class_ || is_by_class(block.rule(number));
    if (!is_second(block, number)) insert(block, number);
  }
  tables_.shrink_to_fit();
  masks_.shrink_to_fit();
}

// The fields as the mask of a table leaves them.
inline uint32_t RuleIndex::hash_of(const AclBlock &block, uint32_t place,
                                   const MatchWords &fields) const {
  const Table &table = tables_[place];
  uint64_t hash = place + 1;
  if (table.kept) {
    const Mask *mask = masks_.data() + table.masks;
    for (const Mask *end = mask + table.words; mask != end; ++mask)
      hash = mixed(hash, fields[mask->word] & mask->bits);
  } else {
    const AclRule &first = block.rule(table.first);
    for (size_t word = 0; word < kMatchWords; ++word) {
      const uint64_t bits = word_of(first.mask, word) & kHashed[word];
      if (bits != 0) hash = mixed(hash, fields[word] & bits);
    }
  }
  return static_cast<uint32_t>(hash >> 32);
}

uint32_t RuleIndex::table_for(const AclBlock &block, uint32_t number) {
  const AclRule &rule = block.rule(number);
  const uint32_t required = required_by(rule);
  for (uint32_t table = 0; table < tables_.size(); ++table)
    if (tables_[table].required == required && same_mask(block.rule(tables_[table].first), rule))
      return table;
  Table table = {required,
                 0,
                 static_cast<uint16_t>(number),
                 static_cast<uint16_t>(masks_.size()),
                 0,
                 masks_.size() + kMatchWords <= kMostMasks,
                 is_by_class(rule)};
  for (uint32_t word = 0; table.kept && word < kMatchWords; ++word) {
    const uint64_t bits = word_of(rule.mask, word) & kHashed[word];
    if (bits == 0) continue;
    masks_.push_back({bits, word});
    ++table.words;
  }
  tables_.push_back(table);
  return static_cast<uint32_t>(tables_.size() - 1);
}

// Rules come in by number, so appending keeps a chain in order.
void RuleIndex::insert(const AclBlock &block, uint32_t number) {
  const AclRule &rule = block.rule(number);
  const uint32_t table = table_for(block, number);
  tables_[table].ports |= ports_of(rule);
  const uint32_t hash = hash_of(block, table, words_of(rule.data));
  rules_.push_back({hash, static_cast<uint16_t>(number), 0});
  const auto place = static_cast<uint16_t>(rules_.size());
  const uint32_t head = head_of(hash);
  used_[head / 64] |= uint64_t{1} << head % 64;
  uint16_t *end = &heads_[head];
  while (*end != 0) end = &rules_[*end - 1u].next;
  *end = place;
}

int32_t RuleIndex::search(const AclBlock &block, uint32_t hash, const FrameFields &fields,
                          const MatchKey &key, int32_t best) const {
  for (uint16_t at = heads_[head_of(hash)]; at != 0; at = rules_[at - 1u].next) {
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
    const FrameFields &fields = fields_of(key, table.by_class);
    if ((table.required & ~fields.present) != 0 || (table.ports & key.in_port) == 0) continue;
    const uint32_t hash = hash_of(block, place, fields.words);
    if (is_used(head_of(hash))) best = search(block, hash, fields, key, best);
  }
  return best;
}

size_t RuleIndex::bytes() const {
  return tables_.capacity() * sizeof tables_[0] + rules_.capacity() * sizeof rules_[0] +
         heads_.capacity() * sizeof heads_[0] + used_.capacity() * sizeof used_[0] +
         masks_.capacity() * sizeof masks_[0];
}

}  // namespace vchip
