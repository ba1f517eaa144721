// SPDX-License-Identifier: MIT
// The interposers of every function of the library, and their table.
#include <swctl/swctl.h>

#include "library_interpose.h"

namespace swprobe {

// The list is made from the headers when the probe is built.
#define SWCTL_LIBRARY_RECORD(type, ...)                                    \
  template <>                                                              \
  struct Shape<type> {                                                     \
    static constexpr Field fields[] = {SWPROBE_FIELDS(type, __VA_ARGS__)}; \
  };
#include <library_calls.def>
#undef SWCTL_LIBRARY_RECORD

}  // namespace swprobe

#define SWCTL_LIBRARY_CALL(result, name, ...) SWPROBE_LIBRARY_INTERPOSE(result, name, __VA_ARGS__)
#include <library_calls.def>
#undef SWCTL_LIBRARY_CALL

namespace swprobe {

std::span<Site *const> known_library_calls() {
  static constinit Site *const kSites[] = {
#define SWCTL_LIBRARY_CALL(result, name, ...) SWPROBE_SITE(name)
#include <library_calls.def>
#undef SWCTL_LIBRARY_CALL
  };
  return kSites;
}

}  // namespace swprobe
