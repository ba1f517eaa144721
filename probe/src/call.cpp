// SPDX-License-Identifier: MIT
#include <stdexcept>

#include "line.h"
#include "place.h"

namespace swprobe {
namespace {

using Values = std::vector<int64_t> Argument::*;

int64_t value_of(const Call &call, const std::string &name, Values values) {
  const Place place = place_of(name);
  for (const Argument &argument : call.arguments) {
    if (argument.name != place.name) continue;
    if (place.index < (argument.*values).size()) return (argument.*values)[place.index];
    throw std::out_of_range("no value of '" + name + "' in " + call.line());
  }
  throw std::out_of_range("no argument '" + name + "' in " + call.line());
}

}  // namespace

int64_t Call::in(const std::string &argument) const {
  return value_of(*this, argument, &Argument::before);
}

int64_t Call::out(const std::string &argument) const {
  return value_of(*this, argument, &Argument::after);
}

std::string Call::line() const {
  return line_of(*this, nullptr);
}

}  // namespace swprobe
