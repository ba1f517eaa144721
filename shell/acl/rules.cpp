// SPDX-License-Identifier: MIT
#include "acl/rules.h"

#include <algorithm>
#include <dlfcn.h>
#include <memory>

#include "chip/ports.h"

namespace swsh {
namespace {

constexpr char kReader[] = "swctl_platform_acl_rule_next";
using Reader = decltype(&swctl_platform_acl_rule_next);

// Looked up when running: a platform may be without the function.
Reader reader() {
  return reinterpret_cast<Reader>(dlsym(RTLD_DEFAULT, kReader));
}

swctl_platform_acl_rule next_rule(Reader read, uint32_t unit, int32_t from) {
  swctl_platform_acl_rule rule = {};
  check_call(read(unit, from, &rule), kReader, "rule " + std::to_string(from));
  return rule;
}

}  // namespace

bool each_rule(uint32_t unit, const RuleVisit &visit) {
  const Reader read = reader();
  if (read == nullptr) return false;
  for (int32_t from = 0;;) {
    const swctl_platform_acl_rule rule = next_rule(read, unit, from);
    if (rule.rule < 0) return true;
    visit(rule);
    from = rule.rule + 1;
  }
}

bool is_in_use(uint32_t unit, int32_t rule) {
  const Reader read = reader();
  if (read == nullptr) return false;
  const swctl_platform_acl_rule found = next_rule(read, unit, rule);
  return found.rule == rule && is_in_use(found);
}

bool is_in_use(const swctl_platform_acl_rule &rule) {
  const auto is_set = [](uint32_t word) { return word != 0; };
  const bool matches = std::any_of(rule.written + CHIP_ACL_FIELD_TEMPLATE + 1,
                                   rule.written + CHIP_ACL_FIELD_IDS, is_set);
  const bool acts = std::any_of(rule.action.word, rule.action.word + CHIP_ACL_ACTION_WORDS, is_set);
  return rule.valid != 0 || matches || acts;
}

}  // namespace swsh
