// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/platform/field_records.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace swctl {
namespace {

// What goes into a word.
struct Source {
  enum Kind : uint8_t { constant, param0, param1, param0_is_set } kind;
  uint8_t number;
};
constexpr Source value(uint8_t number) {
  return {Source::constant, number};
}
constexpr Source kParam0 = {Source::param0, 0};
constexpr Source kParam1 = {Source::param1, 0};
constexpr Source kParam0IsSet = {Source::param0_is_set, 0};

// When it goes there. A first parameter of all ones is no parameter.
enum class When : uint8_t {
  always,
  param0_bit0,
  param1_bit0,
  param1_bit1,
  param0_given,
  param0_given_and_param1_bit0,
};

struct Assignment {
  uint16_t action;
  uint8_t word;
  Source source;
  When when = When::always;
};

constexpr uint32_t kNoParameter = 0xFFFFFFFF;
constexpr uint8_t kCpuPort = 28;

constexpr Assignment kAssignments[] = {
    {CHIP_ACL_ACTION_PRIORITY, CHIP_ACL_WORD_PRIORITY, value(1)},
    {CHIP_ACL_ACTION_PRIORITY, CHIP_ACL_WORD_PRIORITY_VALUE, kParam0},
    {CHIP_ACL_ACTION_QUEUE, CHIP_ACL_WORD_QUEUE, value(1)},
    {CHIP_ACL_ACTION_QUEUE, CHIP_ACL_WORD_QUEUE_NUMBER, kParam0},
    {CHIP_ACL_ACTION_REMARK_INNER, CHIP_ACL_WORD_REMARK, value(1)},
    {CHIP_ACL_ACTION_REMARK_INNER, CHIP_ACL_WORD_REMARK_KIND, value(CHIP_ACL_REMARK_INNER)},
    {CHIP_ACL_ACTION_REMARK_INNER, CHIP_ACL_WORD_REMARK_VALUE, kParam0},
    {CHIP_ACL_ACTION_REMARK_DSCP, CHIP_ACL_WORD_REMARK, value(1)},
    {CHIP_ACL_ACTION_REMARK_DSCP, CHIP_ACL_WORD_REMARK_KIND, value(CHIP_ACL_REMARK_DSCP)},
    {CHIP_ACL_ACTION_REMARK_DSCP, CHIP_ACL_WORD_REMARK_VALUE, kParam0},
    {CHIP_ACL_ACTION_TRAP, CHIP_ACL_WORD_FORWARD, value(1)},
    {CHIP_ACL_ACTION_TRAP, CHIP_ACL_WORD_FORWARD_KIND, value(CHIP_ACL_FORWARD_TRAP)},
    {CHIP_ACL_ACTION_TRAP, CHIP_ACL_WORD_FORWARD_TO, value(kCpuPort)},
    {CHIP_ACL_ACTION_TRAP, CHIP_ACL_WORD_FORWARD_W5, value(1), When::param0_bit0},
    {CHIP_ACL_ACTION_REDIRECT_PORT, CHIP_ACL_WORD_FORWARD, value(1)},
    {CHIP_ACL_ACTION_REDIRECT_PORT, CHIP_ACL_WORD_FORWARD_KIND, value(CHIP_ACL_FORWARD_PORT)},
    {CHIP_ACL_ACTION_REDIRECT_PORT, CHIP_ACL_WORD_FORWARD_TO, kParam0},
    {CHIP_ACL_ACTION_REDIRECT_PORT, CHIP_ACL_WORD_FORWARD_W6, value(1), When::param1_bit0},
    {CHIP_ACL_ACTION_REDIRECT_PORT, CHIP_ACL_WORD_FORWARD_W4, value(1), When::param1_bit1},
    {CHIP_ACL_ACTION_REDIRECT_MASK, CHIP_ACL_WORD_FORWARD, value(1)},
    {CHIP_ACL_ACTION_REDIRECT_MASK, CHIP_ACL_WORD_FORWARD_KIND, value(CHIP_ACL_FORWARD_MASK),
     When::param0_given},
    {CHIP_ACL_ACTION_REDIRECT_MASK, CHIP_ACL_WORD_FORWARD_TO, kParam0, When::param0_given},
    {CHIP_ACL_ACTION_REDIRECT_MASK, CHIP_ACL_WORD_FORWARD_W6, value(1),
     When::param0_given_and_param1_bit0},
    {CHIP_ACL_ACTION_DROP, CHIP_ACL_WORD_VERDICT, value(CHIP_ACL_VERDICT_DROP)},
    {CHIP_ACL_ACTION_PERMIT, CHIP_ACL_WORD_VERDICT, value(CHIP_ACL_VERDICT_PERMIT)},
    {CHIP_ACL_ACTION_COUNT, CHIP_ACL_WORD_COUNT, value(1)},
    {CHIP_ACL_ACTION_COUNT, CHIP_ACL_WORD_COUNT_W11, value(0)},
    {CHIP_ACL_ACTION_COUNT, CHIP_ACL_WORD_COUNT_COUNTER, kParam0},
    {CHIP_ACL_ACTION_METER_OF_PARAM1, CHIP_ACL_WORD_METER, value(1)},
    {CHIP_ACL_ACTION_METER_OF_PARAM1, CHIP_ACL_WORD_METER_NUMBER, kParam1},
    {CHIP_ACL_ACTION_MIRROR, CHIP_ACL_WORD_MIRROR, value(1)},
    {CHIP_ACL_ACTION_MIRROR, CHIP_ACL_WORD_MIRROR_W8, kParam0IsSet},
    {CHIP_ACL_ACTION_MIRROR, CHIP_ACL_WORD_MIRROR_SESSION, kParam1},
    {CHIP_ACL_ACTION_METER, CHIP_ACL_WORD_METER, value(1)},
    {CHIP_ACL_ACTION_METER, CHIP_ACL_WORD_METER_NUMBER, kParam0},
    {CHIP_ACL_ACTION_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN, value(1)},
    {CHIP_ACL_ACTION_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN_W16, value(0)},
    {CHIP_ACL_ACTION_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN_W17, value(0)},
    {CHIP_ACL_ACTION_OUTER_VLAN, CHIP_ACL_WORD_OUTER_VLAN_ID, kParam0},
    {CHIP_ACL_ACTION_REMARK_INNER_AGAIN, CHIP_ACL_WORD_REMARK, value(1)},
    {CHIP_ACL_ACTION_REMARK_INNER_AGAIN, CHIP_ACL_WORD_REMARK_KIND, value(CHIP_ACL_REMARK_INNER)},
    {CHIP_ACL_ACTION_REMARK_INNER_AGAIN, CHIP_ACL_WORD_REMARK_VALUE, kParam0},
    {CHIP_ACL_ACTION_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN, value(1)},
    {CHIP_ACL_ACTION_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN_W20, value(0)},
    {CHIP_ACL_ACTION_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN_W21, value(0)},
    {CHIP_ACL_ACTION_INNER_VLAN, CHIP_ACL_WORD_INNER_VLAN_ID, kParam0},
    {CHIP_ACL_ACTION_REMARK_OUTER, CHIP_ACL_WORD_REMARK, value(1)},
    {CHIP_ACL_ACTION_REMARK_OUTER, CHIP_ACL_WORD_REMARK_KIND, value(CHIP_ACL_REMARK_OUTER)},
    {CHIP_ACL_ACTION_REMARK_OUTER, CHIP_ACL_WORD_REMARK_VALUE, kParam0},
    {CHIP_ACL_ACTION_REDIRECT_GROUP, CHIP_ACL_WORD_FORWARD, value(1)},
    {CHIP_ACL_ACTION_REDIRECT_GROUP, CHIP_ACL_WORD_FORWARD_KIND, value(CHIP_ACL_FORWARD_GROUP)},
    {CHIP_ACL_ACTION_REDIRECT_GROUP, CHIP_ACL_WORD_FORWARD_TO, kParam0},
};

static_assert(std::is_sorted(std::begin(kAssignments), std::end(kAssignments),
                             [](const Assignment &one, const Assignment &other) {
                               return one.action < other.action;
                             }));

constexpr size_t kActions = CHIP_ACL_ACTION_REDIRECT_GROUP + 1;

// Where the assignments of each action begin; where the next one's do, they end.
// A search would take as long as all else that the library adds to its two calls.
struct Beginnings {
  uint8_t of[kActions + 1] = {};
};
constexpr Beginnings beginnings() {
  Beginnings all;
  for (size_t action = 0, at = 0; action <= kActions; ++action) {
    while (at < std::size(kAssignments) && kAssignments[at].action < action) ++at;
    all.of[action] = static_cast<uint8_t>(at);
  }
  return all;
}
constexpr Beginnings kBeginnings = beginnings();
static_assert(kBeginnings.of[kActions] == std::size(kAssignments));

constexpr bool applies(When when, uint32_t param0, uint32_t param1) {
  switch (when) {
    case When::always: return true;
    case When::param0_bit0: return (param0 & 1) != 0;
    case When::param1_bit0: return (param1 & 1) != 0;
    case When::param1_bit1: return (param1 & 2) != 0;
    case When::param0_given: return param0 != kNoParameter;
    case When::param0_given_and_param1_bit0: return param0 != kNoParameter && (param1 & 1) != 0;
  }
  return false;
}

constexpr uint32_t evaluate(Source source, uint32_t param0, uint32_t param1) {
  switch (source.kind) {
    case Source::constant: return source.number;
    case Source::param0: return param0;
    case Source::param1: return param1;
    case Source::param0_is_set: return param0 != 0 ? 1 : 0;
  }
  return 0;
}

// Merges one generic action into a rule's action record. An action that is not
// known changes nothing.
void merge_action(chip_acl_action &record, uint32_t action, uint32_t param0, uint32_t param1) {
  if (action >= kActions) return;
  for (size_t at = kBeginnings.of[action]; at < kBeginnings.of[action + 1]; ++at) {
    const Assignment &each = kAssignments[at];
    if (applies(each.when, param0, param1))
      record.word[each.word] = evaluate(each.source, param0, param1);
  }
}

}  // namespace
}  // namespace swctl

int32_t user_field_action_add(uint32_t, uint32_t unit, int32_t rule, uint32_t action,
                              const uint32_t *param0, const uint32_t *param1) {
  const uint32_t first = *param0;
  const uint32_t second = *param1;
  chip_acl_action record = {};
  const int32_t result = rtk_acl_ruleAction_get(unit, CHIP_ACL_TABLE, rule, &record);
  if (result != 0) return result;
  swctl::merge_action(record, action, first, second);
  return rtk_acl_ruleAction_set(unit, CHIP_ACL_TABLE, rule, &record);
}
