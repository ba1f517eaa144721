// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "documents.h"
#include "images.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using Json = nlohmann::ordered_json;

// Blocks that belong to the board rather than to a unit.
constexpr const char *kBoardBlocks[] = {"platform", "rules"};

bool is_board_block(const std::string &name) {
  return std::find(std::begin(kBoardBlocks), std::end(kBoardBlocks), name) !=
         std::end(kBoardBlocks);
}

std::string block_names(const Json &unit) {
  std::string names;
  for (const char *name : kBoardBlocks) names += (names.empty() ? "" : ", ") + std::string(name);
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
  if (!words.block) return words.unit ? units[parse_unit(*words.unit)] : document;
  const std::string &block = *words.block;
  const bool of_board = is_board_block(block);
  if (of_board && words.unit) throw UsageError("block '" + block + "' belongs to no unit");
  if (of_board) return document[block];
  expect_block(units[0], block);
  if (words.unit) return units[parse_unit(*words.unit)][block];
  Json all = Json::array();
  for (const Json &unit : units) all.push_back(only_block(unit, block));
  return all;
}

Json dump_of(const std::string &image, const DumpWords &words) {
  return selected(document_of(image), words);
}

// One of several: a part does not say of which image it is.
Json named_dump(const std::string &image, const DumpWords &words) {
  Json part = dump_of(image, words);
  if (!words.unit && !words.block) return part;
  return {{"image", image}, {"part", std::move(part)}};
}

void print(const Json &json, const DumpWords &words) {
  printf("%s\n", json.dump(words.compact ? -1 : 2).c_str());
}

}  // namespace

void dump(const DumpWords &words) {
  if (words.images.size() == 1) return print(dump_of(words.images.front(), words), words);
  Json all = Json::array();
  const auto add = [&](const std::string &image) { all.push_back(named_dump(image, words)); };
  try {
    for_each_image(words.images, add);
  } catch (const Refused &) {
    print(all, words);
    throw;
  }
  print(all, words);
}

}  // namespace vchipctl
