// SPDX-License-Identifier: MIT
#include "chip/call.h"

#include <optional>
#include <utility>

#include "chip/platform.h"
#include "chip/ports.h"
#include "fault.h"

namespace swsh {

Subject subject_of(const Port &port) {
  const std::string number = std::to_string(port.interface);
  return {"port " + number, number, port.interface};
}

Subject subject_of(const Context &context) {
  return subject_of("unit " + std::to_string(context.unit));
}

Subject subject_of(std::string text) {
  Subject subject;
  subject.culprit = text;
  subject.named = std::move(text);
  return subject;
}

CommandError refusal(const FailedCall &call, const Subject &subject) {
  const std::optional<std::string> sentence = result_sentence(call.result);
  const std::string code = "result " + std::to_string(call.result);
  const std::string reason = sentence ? *sentence + " (" + code + ")" : code;
  return CommandError({kRefused,
                       "",
                       std::string(call.name) + " refused " + subject.named + ": " + reason,
                       subject.culprit,
                       {},
                       {},
                       Refusal{call.name, subject.interface, call.result, sentence}});
}

void refuse(const FailedCall &call, const Subject &subject) {
  throw refusal(call, subject);
}

}  // namespace swsh
