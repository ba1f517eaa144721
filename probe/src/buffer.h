// SPDX-License-Identifier: MIT
#ifndef SWCTL_PROBE_BUFFER_H
#define SWCTL_PROBE_BUFFER_H

#include <fmt/format.h>
#include <iterator>
#include <utility>

namespace swprobe {

// A line on its way.
using Buffer = fmt::memory_buffer;

template <class... Values>
void add(Buffer &line, fmt::format_string<Values...> format, Values &&...values) {
  fmt::format_to(std::back_inserter(line), format, std::forward<Values>(values)...);
}

}  // namespace swprobe

#endif
