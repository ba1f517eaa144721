// SPDX-License-Identifier: MIT
// What the probe knows about each call, and where the call goes next.
#ifndef SWCTL_PROBE_SITE_H
#define SWCTL_PROBE_SITE_H

#include <atomic>
#include <span>
#include <string_view>

#include "shape.h"

namespace swprobe {

struct ArgumentInfo {
  std::string_view name;
  Direction direction;
  Form form;
  bool array;     // shown in brackets
  size_t stride;  // bytes of one element or record
  std::span<const Field> fields;

  bool is_record() const { return !fields.front().name.empty(); }
  bool is_output() const { return direction == Direction::out || direction == Direction::update; }
};

// What a call is part of.
enum class Layer { platform, library };

// One interposed call.
struct Site {
  const char *name;
  std::span<const ArgumentInfo> arguments;
  bool has_result;
  Layer layer = Layer::platform;
  Form result_form = Form::dec;  // hex for an address
  // The next function of this name in the search order; null until looked up.
  std::atomic<void *> next{nullptr};
  // The same, but null while anybody watches: one test decides between the
  // jump and the long way.
  std::atomic<void *> idle{nullptr};
  std::atomic<bool> missed{false};

  // Null if there is none; the first time that is so, a line to standard error
  // says it.
  void *find_next();
};

// Every call of the platform that the probe wraps.
std::span<Site *const> known_calls();
// Every function of the library, which makes those calls.
std::span<Site *const> known_library_calls();
// Null for a name that is in neither.
const Site *find_call(std::string_view name);

}  // namespace swprobe

#endif
