// SPDX-License-Identifier: MIT
// Names of arguments and elements as people write them: "port", "ports[2]",
// "entry.vid", "table[1].mac[5]".
#ifndef SWCTL_PROBE_PLACE_H
#define SWCTL_PROBE_PLACE_H

#include <optional>
#include <string>

#include "site.h"

namespace swprobe {

struct Place {
  std::string name;  // of an Argument
  size_t index = 0;  // of the element

  bool operator==(const Place &) const = default;
};

// Throws std::invalid_argument for an index that is not a number.
Place place_of(const std::string &text);

// "table[12].vid" as "table[].vid".
std::string without_record_index(const std::string &name);

struct Known {
  const ArgumentInfo *info;
  const Field *field;
};

// What the name of an Argument of this call leads to.
std::optional<Known> find_argument(const Site &site, const std::string &name);

}  // namespace swprobe

#endif
