// SPDX-License-Identifier: MIT
#include "fault.h"

#include "text.h"

namespace swsh {

Fault wrong_usage(std::string message, std::optional<std::string> culprit,
                  std::vector<std::string> expected) {
  return {kWrongUsage,         "",          std::move(message), std::move(culprit),
          std::move(expected), std::nullopt};
}

std::string fault_line(const Fault &fault) {
  std::string line = printable(fault.context);
  if (!line.empty()) line += ": ";
  line += fault.message;
  if (fault.expected.empty()) return line;
  line += fault.expected.size() == 1 ? ", expected " : ", expected one of: ";
  return line + join(fault.expected, ", ");
}

CommandError with_note(const CommandError &error, const std::string &note) {
  Fault fault = error.fault();
  fault.message += "; " + note;
  return CommandError(fault);
}

}  // namespace swsh
