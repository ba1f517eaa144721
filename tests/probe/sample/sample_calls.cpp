// SPDX-License-Identifier: MIT
// Interposers of the sample list, made as those of the real lists are.
#include "interpose.h"
#include "sample/sample.h"

namespace swprobe {

template <>
struct Shape<sample_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(sample_entry, vid, dec), SWPROBE_FIELD(sample_entry, mac, hex),
      SWPROBE_FIELD(sample_entry, port, dec), SWPROBE_FIELD(sample_entry, inner.flags, hex)};
};

template <>
struct Shape<sample_address> {
  static constexpr Field fields[] = {SWPROBE_FIELD(sample_address, byte, hex)};
};

template <>
struct Shape<sample_block> {
  static constexpr Field fields[] = {SWPROBE_FIELD(sample_block, index, dec),
                                     SWPROBE_FIELD(sample_block, data, hex),
                                     SWPROBE_FIELD(sample_block, last, dec)};
};

}  // namespace swprobe

// The order of these lines has a meaning.
// clang-format off
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWPROBE_INTERPOSE(name, __VA_ARGS__)
#include "sample/sample.def"
#include <swctl/platform/calls_end.h>

namespace swprobe {

std::span<Site *const> known_calls() {
  static constinit Site *const kSites[] = {
#include <swctl/platform/calls_begin.h>
#define SWCTL_CALL(name, ...) SWPROBE_SITE(name)
#include "sample/sample.def"
#include <swctl/platform/calls_end.h>
  };
  return kSites;
}
// clang-format on

std::span<Site *const> known_library_calls() {
  return {};
}

}  // namespace swprobe
