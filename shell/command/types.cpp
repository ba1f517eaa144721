// SPDX-License-Identifier: MIT
#include <swctl/types.h>

#include <utility>

#include "command/table.h"

namespace swsh {

std::string word_for(const std::vector<Choice> &choices, int64_t value) {
  for (const Choice &each : choices)
    if (each.value == value) return each.word;
  return std::to_string(value);
}

Value word_value(const std::vector<Choice> &choices, int64_t value) {
  for (const Choice &each : choices)
    if (each.value == value) return each.word;
  return value;
}

Type number(int64_t low, int64_t high, std::string unit) {
  return {Kind::number, low, high, std::move(unit), {}};
}

Type numbers(int64_t low, int64_t high) {
  return {Kind::numbers, low, high, "", {}};
}

Type interface_number(int64_t lowest) {
  return {Kind::interface, lowest, USER_FRONT_INTERFACES, "", {}};
}

Type interface_list(int64_t lowest) {
  return {Kind::interfaces, lowest, USER_FRONT_INTERFACES, "", {}};
}

Type interface_list_or_none(int64_t lowest) {
  Type type = interface_list(lowest);
  type.none = true;
  return type;
}

Type choice(std::vector<Choice> choices) {
  return {Kind::choice, 0, 0, "", std::move(choices)};
}

Type choice_list(std::vector<Choice> choices) {
  return {Kind::choices, 0, 0, "", std::move(choices)};
}

Type bytes(int64_t most) {
  return {Kind::bytes, 0, most, "", {}};
}

Type bandwidth(int64_t low, int64_t high) {
  return {Kind::bandwidth, low, high, "kbit", {}};
}

Type stepped(Type type, int64_t step) {
  type.step = step;
  return type;
}

Type on_off() {
  return choice({{"on", 1, ""}, {"off", 0, ""}});
}

Type mac_address() {
  return {Kind::mac, 0, 0, "", {}};
}

Type text() {
  return {};
}

Type flag() {
  return {Kind::flag, 0, 0, "", {}};
}

Parameter required(std::string name, Type type, std::string help) {
  return {std::move(name), std::move(type), std::move(help), true};
}

Parameter ports_to_show() {
  return {"PORTS", interface_list(), "Ports to show"};
}

Parameter ports_to_change() {
  return required("PORTS", interface_list(), "Ports to change");
}

}  // namespace swsh
