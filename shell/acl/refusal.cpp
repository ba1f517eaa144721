// SPDX-License-Identifier: MIT
#include "acl/refusal.h"

#include "chip/sentence.h"

namespace swsh {

Fault acl_refusal(int32_t result, const char *function, const std::string &subject) {
  const std::optional<std::string> sentence = result_sentence(result);
  const std::string code = "result " + std::to_string(result);
  Fault fault;
  fault.status = kRefused;
  fault.message = std::string(function) + " refused " + subject + ": ";
  fault.message += sentence ? *sentence + " (" + code + ")" : code;
  fault.culprit = subject;
  fault.refusal = Refusal{function, 0, result, sentence};
  return fault;
}

void check_acl(int32_t result, const char *function, const std::string &subject) {
  if (result < 0) throw CommandError(acl_refusal(result, function, subject));
}

}  // namespace swsh
