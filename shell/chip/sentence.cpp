// SPDX-License-Identifier: MIT
#include "chip/sentence.h"

#include <swctl/platform/log.h>

#include "chip/optional_call.h"

namespace swsh {

std::optional<std::string> result_sentence(int32_t result) {
  auto *const text = SWSH_OPTIONAL_CALL(swctl_platform_result_text).find();
  const char *sentence = text == nullptr ? nullptr : text(result);
  if (sentence == nullptr) return std::nullopt;
  return sentence;
}

}  // namespace swsh
