// SPDX-License-Identifier: MIT
#define FMT_HEADER_ONLY
#include "os/format.h"

#include <fmt/format.h>

namespace os {

std::string format_arguments(fmt::string_view text, fmt::format_args values) {
  return fmt::vformat(text, values);
}

}  // namespace os
