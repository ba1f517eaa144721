// SPDX-License-Identifier: MIT
// What the rule table looks like before rules are written: templates,
// selectors, and three blocks of double entries.
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include "field/pair.h"
#include "field/report.h"

namespace {

constexpr char kName[] = "user_field_init";

struct Template {
  uint32_t index;
  uint32_t codes[CHIP_ACL_TEMPLATE_FIELDS];
  int line;
};
constexpr Template kTemplates[] = {
    {5, {1, 2, 11, 14, 15, 16, 23, 24, 31, 33, 34, 0}, 283},
    {6, {1, 2, 14, 5, 6, 7, 15, 16, 11, 34, 0, 0}, 317},
};

struct Selector {
  uint32_t index;
  uint32_t word[3];
};
constexpr Selector kFirstSelectors[] = {{10, {0, 1, 0}}, {11, {0, 1, 0}}};
constexpr Selector kMiddleSelectors[] = {
    {7, {5, 0, 0}}, {6, {0, 0, 0}}, {5, {6, 0, 0}}, {8, {4, 3, 0}}, {9, {4, 3, 0}}};
constexpr Selector kLastSelectors[] = {
    {4, {5, 0, 0}}, {3, {5, 0, 0}}, {0, {4, 3, 0}}, {1, {4, 3, 0}}};

struct Block {
  int32_t first;
  int32_t end;
  int line;
};
constexpr Block kHighBlock = {1280, 1536, 368};
constexpr Block kMiddleBlock = {1024, 1280, 460};
constexpr Block kLowBlock = {0, 256, 534};

// Hands a result on, after the line that is printed for a failed one.
int32_t report(int line, int32_t result) {
  if (result < 0) swctl::report_failed_call(kName, line, result);
  return result;
}

int32_t set_templates(uint32_t unit) {
  for (const Template &each : kTemplates) {
    const int32_t result = report(each.line, rtk_acl_template_set(unit, each.index, each.codes));
    if (result < 0) return result;
  }
  return 0;
}

template <size_t Count>
void set_selectors(uint32_t unit, const Selector (&selectors)[Count]) {
  for (const Selector &each : selectors) {
    rtk_acl_templateSelector_set(unit, each.index, each.word[0], each.word[1], each.word[2]);
  }
}

int32_t join_block(uint32_t unit, const Block &block) {
  for (int32_t rule = block.first; rule < block.end; rule += 2) {
    const int32_t result =
        report(block.line, swctl::join_pair(unit, rule, swctl::PairMask::half_bits));
    if (result < 0) return result;
  }
  return 0;
}

}  // namespace

int32_t user_field_init(uint32_t, uint32_t unit) {
  int32_t result = set_templates(unit);
  if (result < 0) return result;
  set_selectors(unit, kFirstSelectors);
  result = join_block(unit, kHighBlock);
  if (result < 0) return result;
  set_selectors(unit, kMiddleSelectors);
  result = join_block(unit, kMiddleBlock);
  if (result < 0) return result;
  set_selectors(unit, kLastSelectors);
  return join_block(unit, kLowBlock);
}
