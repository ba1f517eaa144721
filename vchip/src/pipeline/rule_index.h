// SPDX-License-Identifier: MIT
// Finds the first enabled rule that a frame matches, however many there are.
//
// Rules whose masks are the same share a table: the frame's fields under that
// mask lead to the rules that could match. So the search costs a step a mask,
// not a step a rule.
#ifndef VCHIP_PIPELINE_RULE_INDEX_H
#define VCHIP_PIPELINE_RULE_INDEX_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "acl/acl_block.h"

namespace vchip {

inline constexpr size_t kMatchWords = kMatchBytes / sizeof(uint64_t);
using MatchWords = std::array<uint64_t, kMatchWords>;

// The fields of a frame, laid out as those of a rule.
struct FrameFields {
  MatchWords words;
  uint32_t present;  // a bit for each place of kAclFields that the frame has
};

// A rule asks for a protocol by its number or by its class: the same fields,
// with the one or the other.
struct MatchKey {
  FrameFields by_number;
  FrameFields by_class;
  uint32_t in_port;  // a bit
};

class RuleIndex {
 public:
  void compile(const AclBlock &block);
  bool empty() const { return tables_.empty(); }
  // Whether a key needs the fields by class.
  bool asks_for_class() const { return asks_for_class_; }
  // Its number; -1 if none matches.
  int32_t find(const AclBlock &block, const MatchKey &key) const;
  size_t bytes() const;

 private:
  // Rules with one mask.
  struct Table {
    uint32_t required;  // fields that the frame must have
    uint32_t ports;     // that any of its rules is for
    uint16_t first;     // the lowest number of its rules, whose mask is theirs all
    uint16_t masks;     // place in masks_ of its first word
    uint8_t words;      // how many words of the mask are not all 0
    bool kept;          // its words are in masks_
    bool by_class;
  };
  // A word of a mask.
  struct Mask {
    uint64_t bits;
    uint32_t word;
  };
  struct Rule {
    uint32_t hash;
    uint16_t number;
    uint16_t next;  // place + 1 in rules_, in the order of numbers
  };

  uint32_t hash_of(const AclBlock &block, uint32_t place, const MatchWords &fields) const;
  uint32_t head_of(uint32_t hash) const { return hash >> head_shift_; }
  bool is_used(uint32_t head) const { return (used_[head / 64] >> head % 64 & 1) != 0; }
  uint32_t table_for(const AclBlock &block, uint32_t number);
  void insert(const AclBlock &block, uint32_t number);
  int32_t search(const AclBlock &block, uint32_t hash, const FrameFields &fields,
                 const MatchKey &key, int32_t best) const;

  std::vector<Table> tables_;  // by `first`
  std::vector<Rule> rules_;
  std::vector<uint16_t> heads_;  // place + 1 in rules_; 0: none; a power of two of them
  std::vector<uint64_t> used_;   // a bit a head: whether it is not 0
  std::vector<Mask> masks_;      // of the first tables
  uint32_t head_shift_ = 0;      // leaves the upper bits of a hash, which depend on all others
  bool asks_for_class_ = false;
};

}  // namespace vchip

#endif
