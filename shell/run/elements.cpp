// SPDX-License-Identifier: MIT
#include "run/elements.h"

namespace swsh {
namespace {

std::string indented(const std::string &text) {
  std::string all = "  ";
  for (const char character : text) {
    all += character;
    if (character == '\n') all += "  ";
  }
  return all;
}

}  // namespace

Elements::Elements(Format format, bool in_array, DataOutput &output)
    : format_(format), output_(output) {
  if (!in_array) return;
  array_.emplace(output.descriptor());
  write("[");
}

void Elements::add(int64_t line, const std::string &command, const Outcome &outcome) {
  Record element;
  element.add("line", line);
  element.add("command", command);
  element.add("status", int64_t{outcome.status()});
  element.add("output", outcome_value(outcome));
  const std::string text = json_text(element, format_);
  write(array_ ? in_array_text(text) : text + '\n');
  any_ = true;
}

void Elements::end() {
  if (array_) write("]\n");
  array_.reset();
}

// With its line end at once.
std::string Elements::in_array_text(const std::string &element) const {
  if (format_ == Format::pretty) return (any_ ? "  ,\n" : "\n") + indented(element) + '\n';
  return (any_ ? "," : "") + element + '\n';
}

void Elements::write(const std::string &text) {
  const ArrayEnd::Hold hold;
  output_.write(text);
}

}  // namespace swsh
