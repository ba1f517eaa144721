// SPDX-License-Identifier: MIT
#include "chip/sentence.h"

#include <swctl/platform/log.h>

#include <dlfcn.h>

namespace swsh {

std::optional<std::string> result_sentence(int32_t result) {
  // Looked up when running: a platform may be without the function.
  const auto text = reinterpret_cast<decltype(&swctl_platform_result_text)>(
      dlsym(RTLD_DEFAULT, "swctl_platform_result_text"));
  const char *sentence = text == nullptr ? nullptr : text(result);
  if (sentence == nullptr) return std::nullopt;
  return sentence;
}

}  // namespace swsh
