// SPDX-License-Identifier: MIT
// What a block writes its picture into: one JSON object. Blocks do not see the
// JSON library, so that only one file compiles it.
#ifndef VCHIP_DOCUMENT_DUMP_H
#define VCHIP_DOCUMENT_DUMP_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace vchip {

class Dump {
 public:
  explicit Dump(nlohmann::ordered_json &object) : object_(object) {}

  void null(const char *name);
  void flag(const char *name, bool value);
  void number(const char *name, int64_t value);
  void count(const char *name, uint64_t value);
  void numbers(const char *name, const std::vector<uint32_t> &values);
  // The chip ports of a mask, as an array of numbers.
  void ports(const char *name, uint32_t mask);
  void text(const char *name, const std::string &value);
  void texts(const char *name, const std::vector<std::string> &values);
  void object(const char *name, const std::function<void(Dump &)> &fill);
  // An array of `count` objects; `fill` writes the one at the index it is given.
  void objects(const char *name, size_t count, const std::function<void(Dump &, size_t)> &fill);

 private:
  nlohmann::ordered_json &object_;
};

// A JSON document of what `fill` writes, indented by `indent` spaces (-1: one
// line). Text that is not UTF-8 gets replacement characters.
std::string json_text(int indent, const std::function<void(Dump &)> &fill);

}  // namespace vchip

#endif
