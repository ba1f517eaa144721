// SPDX-License-Identifier: MIT
// The records that stand in the lists of calls, each described once; see
// Shape in shape.h.
#ifndef SWCTL_PROBE_SHAPES_H
#define SWCTL_PROBE_SHAPES_H

#include <swctl/platform/vlan_records.h>

#include "shape.h"

namespace swprobe {

template <>
struct Shape<chip_vlan_egress_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_vlan_egress_entry, valid, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, ignore_vid, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, vid, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, ignore_second_key, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, second_key, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, field6, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, field7, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, ignore_port, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, port, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, field10, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, field11, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, new_vid, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, field13, dec),
      SWPROBE_FIELD(chip_vlan_egress_entry, field14, dec),
  };
};

}  // namespace swprobe

#endif
