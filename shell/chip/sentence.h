// SPDX-License-Identifier: MIT
#ifndef SWCTL_SHELL_CHIP_SENTENCE_H
#define SWCTL_SHELL_CHIP_SENTENCE_H

#include <cstdint>
#include <optional>
#include <string>

namespace swsh {

// The platform's sentence for a result, if the platform in use has one.
std::optional<std::string> result_sentence(int32_t result);

}  // namespace swsh

#endif
