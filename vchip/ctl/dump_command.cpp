// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char *kPlatform = "platform";

std::string block_names(const Json &unit) {
  std::string names = kPlatform;
  for (const auto &[name, block] : unit.items())
    if (name != "unit") names += ", " + name;
  return names;
}

void expect_block(const Json &unit, const std::string &block) {
  if (block != "unit" && unit.contains(block)) return;
  throw UsageError("no block '" + block + "': expected " + block_names(unit));
}

Json only_block(const Json &unit, const std::string &block) {
  return Json{{"unit", unit["unit"]}, {block, unit[block]}};
}

// The part of the document that the words ask for.
Json selected(const Json &document, const DumpWords &words) {
  const Json &units = document["units"];
  if (words.unit.empty() && words.block.empty()) return document;
  if (words.block.empty()) return units[parse_unit(words.unit)];
  if (words.block == kPlatform && words.unit.empty()) return document[kPlatform];
  if (words.block == kPlatform) throw UsageError("block 'platform' belongs to no unit");
  expect_block(units[0], words.block);
  if (!words.unit.empty()) return units[parse_unit(words.unit)][words.block];
  Json all = Json::array();
  for (const Json &unit : units) all.push_back(only_block(unit, words.block));
  return all;
}

}  // namespace

void dump(const DumpWords &words) {
  const Json document = Json::parse(vchip::dump_json(-1));
  const int indent = words.compact ? -1 : 2;
  printf("%s\n", selected(document, words).dump(indent).c_str());
}

}  // namespace vchipctl
