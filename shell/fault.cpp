// SPDX-License-Identifier: MIT
#include "fault.h"

#include "slip.h"
#include "text.h"

namespace swsh {

Fault wrong_usage(std::string message, std::optional<std::string> culprit,
                  std::vector<std::string> expected) {
  Fault fault;
  fault.message = std::move(message);
  fault.culprit = std::move(culprit);
  fault.expected = std::move(expected);
  if (fault.culprit) fault.suggestions = one_slip_away(*fault.culprit, fault.expected);
  return fault;
}

std::string fault_line(const Fault &fault) {
  std::string line = printable(fault.context);
  if (!line.empty()) line += ": ";
  line += fault.message;
  if (!fault.suggestions.empty()) {
    std::vector<std::string> meant;
    for (const std::string &each : fault.suggestions) meant.push_back(in_quotes(each));
    line += " (did you mean " + join(meant, " or ") + "?)";
  }
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
