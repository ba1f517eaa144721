// SPDX-License-Identifier: MIT
#include "chip/call.h"

#include <optional>
#include <utility>

#include "chip/ports.h"
#include "chip/sentence.h"
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

void refuse(const char *function, const Subject &subject, int32_t result) {
  const std::optional<std::string> sentence = result_sentence(result);
  const std::string code = "result " + std::to_string(result);
  const std::string reason = sentence ? *sentence + " (" + code + ")" : code;
  throw CommandError({kRefused,
                      "",
                      std::string(function) + " refused " + subject.named + ": " + reason,
                      subject.culprit,
                      {},
                      Refusal{function, subject.interface, result, sentence}});
}

}  // namespace swsh
