// SPDX-License-Identifier: MIT
// Text by libfmt, whose code is compiled once, in format.cpp.
#ifndef SWCTL_OS_FORMAT_H
#define SWCTL_OS_FORMAT_H

#include <fmt/core.h>
#include <string>

namespace os {

std::string format_arguments(fmt::string_view text, fmt::format_args values);

// As fmt::format(), for all that core.h can format.
template <typename... Values>
std::string format(fmt::format_string<Values...> text, Values &&...values) {
  return format_arguments(text, fmt::make_format_args(values...));
}

}  // namespace os

#endif
