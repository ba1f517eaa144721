// SPDX-License-Identifier: MIT
// The only file that sees the JSON library.
#include "os/json.h"

#include "output/writer.h"

namespace swsh {
namespace {

using os::Json;

constexpr int kOneLine = -1;
constexpr int kIndent = 2;

Json to_json(const Value &value);

Json to_json(const Record &record) {
  Json object = Json::object();
  for (const Field &field : record.fields) object[field.key] = to_json(field.value);
  return object;
}

Json to_json(const std::vector<Record> &records) {
  Json array = Json::array();
  for (const Record &record : records) array.push_back(to_json(record));
  return array;
}

Json to_json(const Value &value) {
  return std::visit(
      [](const auto &each) {
        using Each = std::decay_t<decltype(each)>;
        if constexpr (std::is_same_v<Each, Record> || std::is_same_v<Each, std::vector<Record>>) {
          return to_json(each);
        } else {
          return Json(each);
        }
      },
      value);
}

}  // namespace

std::string json_text(const Value &value, Format format) {
  // A word from the command line may hold any bytes; what is not UTF-8 becomes
  // the replacement character rather than an error about an error.
  return os::json_text(to_json(value), format == Format::pretty ? kIndent : kOneLine);
}

}  // namespace swsh
