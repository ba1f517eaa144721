// SPDX-License-Identifier: MIT
// vchipctl convert: an image of what another version or machine, or a dump, holds.
#include <swctl-vchip/image.h>

#include <cstdio>
#include <fstream>

#include "commands.h"
#include "documents.h"
#include "os/json.h"
#include "usage_error.h"

namespace vchipctl {
namespace {

using os::Json;

std::vector<std::string> load_dump(const std::string &from, const std::string &to) {
  const Json document = read_document(from);
  const auto words = document.find("words");
  if (words == document.end() || !words->is_object())
    throw Refused("dump " + from + ": has no 'words', which name what an image holds");
  const std::string order = document.value("byte_order", "");
  if (order != "little" && order != "big")
    throw Refused("dump " + from + ": 'byte_order' is neither little nor big");
  std::vector<vchip::WordValue> values;
  for (const auto &[name, value] : words->items()) {
    if (!value.is_number_unsigned())
      throw Refused("dump " + from + ": '" + name + "' has no number from 0 on");
    values.push_back({name, value.get<uint64_t>()});
  }
  return vchip::make_image_of(values, order == "little", to);
}

std::vector<std::string> convert_any(const ConvertWords &words) {
  try {
    return is_document(words.from) ? load_dump(words.from, words.to)
                                   : vchip::convert_image(words.from, words.to);
  } catch (const std::runtime_error &error) {
    throw Refused(error.what());
  } catch (const Json::exception &) {
    throw Refused("dump " + words.from + ": is no dump of a chip");
  }
}

}  // namespace

void convert(const ConvertWords &words) {
  const std::vector<std::string> left_out = convert_any(words);
  if (words.json) {
    const Json answer = {{"from", words.from}, {"to", words.to}, {"left_out", left_out}};
    printf("%s\n", os::json_text(answer).c_str());
    return;
  }
  for (const std::string &word : left_out) printf("left out: %s\n", word.c_str());
}

}  // namespace vchipctl
