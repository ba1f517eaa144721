// SPDX-License-Identifier: MIT
#include "acl/acl_block.h"

#include <atomic>
#include <cstring>

#include "common/sound.h"

namespace vchip {
namespace {

constexpr uint32_t kTemplateBit = 1u << place_of_field(CHIP_ACL_FIELD_TEMPLATE);

// A mark that is set before what is written and after it, in the program and
// in what a killed process leaves.
void mark(uint32_t &word, uint32_t value) {
  std::atomic_ref<uint32_t>(word).exchange(value);
}

// The bytes of fields that are not written, and those after the last field.
void clear_unwritten(AclRule &rule) {
  for (size_t place = 0; place < kAclFields.size(); ++place) {
    if (rule.has_field(place)) continue;
    const size_t start = start_of_field(place);
    memset(rule.data + start, 0, start_of_field(place + 1) - start);
    memset(rule.mask + start, 0, start_of_field(place + 1) - start);
  }
  constexpr size_t kEnd = start_of_field(kAclFields.size());
  memset(rule.data + kEnd, 0, kMatchBytes - kEnd);
  memset(rule.mask + kEnd, 0, kMatchBytes - kEnd);
}

}  // namespace

bool AclBlock::sound() const {
  return are_at_most(misses_, CHIP_ACL_MISS_DROP);
}

// What was being written when a call was killed is not marked as written.
void AclBlock::repair() {
  for (uint32_t rule = 0; rule < VCHIP_ACL_RULES; ++rule) {
    clear_unwritten(rules_[rule]);
    if (rules_[rule].has_action == 0) actions_[rule] = {};
  }
}

void AclBlock::write_field(uint32_t rule, size_t place, const uint8_t *data, const uint8_t *mask) {
  AclRule &target = rules_[rule];
  const uint32_t bit = 1u << place;
  const uint32_t bytes = chip_acl_field_bytes(kAclFields[place].id);
  mark(target.written, target.written & ~bit);
  memcpy(target.data + start_of_field(place), data, bytes);
  memcpy(target.mask + start_of_field(place), mask, bytes);
  mark(target.written, target.written | bit);
}

void AclBlock::set_action(uint32_t rule, const chip_acl_action &action) {
  AclRule &target = rules_[rule];
  mark(target.has_action, 0);
  actions_[rule] = action;
  mark(target.has_action, 1);
}

void AclBlock::clear(uint32_t rule) {
  AclRule &target = rules_[rule];
  mark(target.valid, 0);
  mark(target.has_action, 0);
  mark(target.written, target.written & kTemplateBit);
  clear_unwritten(target);
  actions_[rule] = {};
}

}  // namespace vchip
