// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstdio>
#include <iterator>

#include "commands.h"
#include "documents.h"
#include "images.h"
#include "os/json.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

using os::Json;

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

Json only_block(const Json &unit, const std::string &block) {
  return Json{{"unit", unit["unit"]}, {block, unit[block]}};
}

[[noreturn]] void refuse_block(const std::string &image, const std::string &block) {
  const Json unit = document_of(image)["units"][0];
  throw UsageError("no block '" + block + "': expected " + block_names(unit));
}

// A block of each unit.
Json of_all_units(const Json &units, const std::string &block) {
  Json all = Json::array();
  for (const Json &unit : units) all.push_back(only_block(unit, block));
  return all;
}

Json block_of(const std::string &image, const std::string &block, const vchip::DumpPart &part) {
  const bool of_board = is_board_block(block);
  if (of_board && part.unit >= 0) throw UsageError("block '" + block + "' belongs to no unit");
  const Json document = document_of(image, part);
  if (of_board) return document[block];
  const Json &units = document["units"];
  const Json &first = units[part.unit < 0 ? 0 : static_cast<size_t>(part.unit)];
  if (block == "unit" || !first.contains(block)) refuse_block(image, block);
  return part.unit < 0 ? of_all_units(units, block) : first[block];
}

Json dump_of(const std::string &image, const DumpWords &words) {
  if (!words.unit && !words.block) return whole_document_of(image);
  vchip::DumpPart part;
  if (words.unit) part.unit = static_cast<int32_t>(parse_unit(*words.unit));
  if (!words.block) return document_of(image, part)["units"][static_cast<size_t>(part.unit)];
  part.block = *words.block;
  return block_of(image, *words.block, part);
}

// One of several: a part does not say of which image it is.
Json named_dump(const std::string &image, const DumpWords &words) {
  Json part = dump_of(image, words);
  if (!words.unit && !words.block) return part;
  return {{"image", image}, {"part", std::move(part)}};
}

void print(const Json &json, const DumpWords &words) {
  printf("%s\n", os::json_text(json, words.compact ? -1 : 2).c_str());
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
