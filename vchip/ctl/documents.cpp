// SPDX-License-Identifier: MIT
#include "documents.h"

#include <swctl-vchip/image.h>

#include <bit>
#include <fstream>

#include "images.h"
#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

}  // namespace

bool is_document(const std::string &path) {
  std::ifstream stream(path);
  char first = 0;
  return stream >> first && first == '{';
}

Json read_document(const std::string &path) {
  std::ifstream stream(path);
  if (!stream) throw Refused("dump " + path + ": cannot be read");
  Json document = os::try_parse_json(stream);
  if (!document.is_object()) throw Refused("dump " + path + ": is no JSON object");
  return document;
}

Json document_of(const std::string &image, const vchip::DumpPart &part) {
  open_image(image);
  return os::parse_json(vchip::dump_json(-1, part));
}

Json whole_document_of(const std::string &image) {
  Json document = document_of(image);
  document["byte_order"] = std::endian::native == std::endian::little ? "little" : "big";
  Json words = Json::object();
  for (const auto &[name, value] : vchip::chip_words()) words[name] = value;
  document["words"] = std::move(words);
  return document;
}

}  // namespace vchipctl
