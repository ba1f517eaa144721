// SPDX-License-Identifier: MIT
#include "field/action_words.h"

#include <algorithm>
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
    {1, 23, value(1)},
    {1, 24, kParam0},
    {2, 35, value(1)},
    {2, 36, kParam0},
    {11, 29, value(1)},
    {11, 30, value(0)},
    {11, 31, kParam0},
    {21, 29, value(1)},
    {21, 30, value(2)},
    {21, 31, kParam0},
    {24, 0, value(1)},
    {24, 1, value(2)},
    {24, 2, value(kCpuPort)},
    {24, 5, value(1), When::param0_bit0},
    {30, 0, value(1)},
    {30, 1, value(4)},
    {30, 2, kParam0},
    {30, 6, value(1), When::param1_bit0},
    {30, 4, value(1), When::param1_bit1},
    {33, 0, value(1)},
    {33, 1, value(5), When::param0_given},
    {33, 2, kParam0, When::param0_given},
    {33, 6, value(1), When::param0_given_and_param1_bit0},
    {40, 25, value(1)},
    {41, 25, value(2)},
    {43, 10, value(1)},
    {43, 11, value(0)},
    {43, 12, kParam0},
    // 53 and 118 set the same words, each from its own parameter.
    {53, 13, value(1)},
    {53, 14, kParam1},
    {117, 7, value(1)},
    {117, 8, kParam0IsSet},
    {117, 9, kParam1},
    {118, 13, value(1)},
    {118, 14, kParam0},
    {123, 15, value(1)},
    {123, 16, value(0)},
    {123, 17, value(0)},
    {123, 18, kParam0},
    {124, 29, value(1)},
    {124, 30, value(0)},
    {124, 31, kParam0},
    {130, 19, value(1)},
    {130, 20, value(0)},
    {130, 21, value(0)},
    {130, 22, kParam0},
    {134, 29, value(1)},
    {134, 30, value(1)},
    {134, 31, kParam0},
    {324, 0, value(1)},
    {324, 1, value(6)},
    {324, 2, kParam0},
};

struct ByAction {
  constexpr bool operator()(const Assignment &one, const Assignment &other) const {
    return one.action < other.action;
  }
  constexpr bool operator()(const Assignment &one, uint32_t action) const {
    return one.action < action;
  }
};
static_assert(std::is_sorted(std::begin(kAssignments), std::end(kAssignments), ByAction()));

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

}  // namespace

void merge_action(chip_acl_action &record, uint32_t action, uint32_t param0, uint32_t param1) {
  const Assignment *each =
      std::lower_bound(std::begin(kAssignments), std::end(kAssignments), action, ByAction());
  for (; each != std::end(kAssignments) && each->action == action; ++each) {
    if (applies(each->when, param0, param1))
      record.word[each->word] = evaluate(each->source, param0, param1);
  }
}

}  // namespace swctl
