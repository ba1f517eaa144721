// SPDX-License-Identifier: MIT
// vchipctl diff: what differs between two images or dumps.
#include <cstdio>

#include "chip_difference.h"
#include "commands.h"
#include "documents.h"
#include "images.h"
#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

Json document_in(const std::string &path) {
  return is_document(path) ? read_document(path) : document_of(existing_image(path));
}

std::string text_of(const std::optional<Json> &value) {
  if (!value) return "nothing";
  return value->dump(-1, ' ', false, Json::error_handler_t::replace);
}

void print_lines(const std::vector<ChipDifference> &all) {
  for (const auto &[path, a, b] : all)
    printf("%s: %s -> %s\n", path.c_str(), text_of(a).c_str(), text_of(b).c_str());
}

void print_json(const std::vector<ChipDifference> &all) {
  Json list = Json::array();
  for (const auto &[path, a, b] : all) {
    Json entry = {{"path", path}};
    if (a) entry["a"] = *a;
    if (b) entry["b"] = *b;
    list.push_back(std::move(entry));
  }
  printf("%s\n", text_of(list).c_str());
}

}  // namespace

void diff(const DiffWords &words) {
  const std::vector<ChipDifference> all =
      chip_differences(document_in(words.a), document_in(words.b));
  if (words.json) {
    print_json(all);
  } else {
    print_lines(all);
  }
  if (!all.empty()) throw Differ();
}

}  // namespace vchipctl
