// SPDX-License-Identifier: MIT
#include "document/dump.h"

#include <utility>

#include "os/json.h"

namespace vchip {

using os::Json;

void Dump::null(const char *name) {
  object_[name] = nullptr;
}

void Dump::flag(const char *name, bool value) {
  object_[name] = value;
}

void Dump::number(const char *name, int64_t value) {
  object_[name] = value;
}

void Dump::count(const char *name, uint64_t value) {
  object_[name] = value;
}

void Dump::numbers(const char *name, const std::vector<uint32_t> &values) {
  object_[name] = values;
}

void Dump::ports(const char *name, uint32_t mask) {
  std::vector<uint32_t> numbers;
  for (uint32_t port = 0; port < 32; ++port)
    if ((mask >> port & 1) != 0) numbers.push_back(port);
  object_[name] = numbers;
}

void Dump::text(const char *name, const std::string &value) {
  object_[name] = value;
}

void Dump::texts(const char *name, const std::vector<std::string> &values) {
  object_[name] = values;
}

void Dump::object(const char *name, const std::function<void(Dump &)> &fill) {
  Json json = Json::object();
  Dump inner(json);
  fill(inner);
  object_[name] = std::move(json);
}

void Dump::objects(const char *name, size_t count,
                   const std::function<void(Dump &, size_t)> &fill) {
  Json array = Json::array();
  for (size_t index = 0; index < count; ++index) {
    Json json = Json::object();
    Dump inner(json);
    fill(inner, index);
    array.push_back(std::move(json));
  }
  object_[name] = std::move(array);
}

std::string json_text(int indent, const std::function<void(Dump &)> &fill) {
  Json json = Json::object();
  Dump document(json);
  fill(document);
  return os::json_text(json, indent);
}

}  // namespace vchip
