// SPDX-License-Identifier: MIT
// What commands hand to the writers.
#ifndef SWCTL_SHELL_OUTPUT_RECORD_H
#define SWCTL_SHELL_OUTPUT_RECORD_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace swsh {

struct Field;

// Keys and values in the order in which they are shown.
struct Record {
  std::vector<Field> fields;

  template <typename T>
  Record &add(std::string key, T value);
  // `shown` is what a person reads instead of the value.
  template <typename T>
  Record &add(std::string key, T value, std::string shown);
  // A field that the table leaves out; details and JSON have it.
  template <typename T>
  Record &add_detail(std::string key, T value, std::string shown = "");
};

// A list of numbers reads as 1-4,7 and is an array of numbers in JSON.
using Value =
    std::variant<std::nullptr_t, bool, int64_t, uint64_t, std::string, std::vector<int64_t>,
                 std::vector<std::string>, Record, std::vector<Record>>;

struct Field {
  std::string key;
  Value value;
  std::string shown;
  bool in_table = true;
};

template <typename T>
Record &Record::add(std::string key, T value) {
  fields.push_back({std::move(key), Value(std::move(value)), "", true});
  return *this;
}

template <typename T>
Record &Record::add(std::string key, T value, std::string shown) {
  fields.push_back({std::move(key), Value(std::move(value)), std::move(shown), true});
  return *this;
}

template <typename T>
Record &Record::add_detail(std::string key, T value, std::string shown) {
  fields.push_back({std::move(key), Value(std::move(value)), std::move(shown), false});
  return *this;
}

// How a command's answer is laid out for a person. In JSON every answer is the
// array of its records.
enum class Shape {
  nothing,  // the command has no answer
  table,    // a line per record
  detail,   // a line per field, an empty line between records
  text,     // `text`, which the records say in JSON
  shown,    // everything has been shown while the command ran
};

struct Answer {
  Shape shape = Shape::nothing;
  std::vector<Record> records;
  std::string text;
};

}  // namespace swsh

#endif
