// SPDX-License-Identifier: MIT
// The records of the access-control calls; see shapes.h.
#ifndef SWCTL_PROBE_SHAPES_FIELD_H
#define SWCTL_PROBE_SHAPES_FIELD_H

#include <swctl/platform/field_records.h>

#include "shape.h"

namespace swprobe {

template <>
struct Shape<chip_acl_operation> {
  static constexpr Field fields[] = {SWPROBE_FIELD(chip_acl_operation, word, dec)};
};

template <>
struct Shape<chip_acl_range> {
  static constexpr Field fields[] = {SWPROBE_FIELD(chip_acl_range, first, dec),
                                     SWPROBE_FIELD(chip_acl_range, last, dec)};
};

template <>
struct Shape<chip_acl_action> {
  static constexpr Field fields[] = {SWPROBE_FIELD(chip_acl_action, word, dec)};
};

template <>
struct Shape<chip_acl_meter> {
  static constexpr Field fields[] = {SWPROBE_FIELD(chip_acl_meter, enable, dec),
                                     SWPROBE_FIELD(chip_acl_meter, rate, dec),
                                     SWPROBE_FIELD(chip_acl_meter, burst_slot, dec)};
};

template <>
struct Shape<chip_acl_burst> {
  static constexpr Field fields[] = {SWPROBE_FIELD(chip_acl_burst, size, dec)};
};

}  // namespace swprobe

#endif
