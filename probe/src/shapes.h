// SPDX-License-Identifier: MIT
// The records in the lists of calls, each described once; see
// Shape in shape.h.
#ifndef SWCTL_PROBE_SHAPES_H
#define SWCTL_PROBE_SHAPES_H

#include <swctl/platform/adapter_records.h>
#include <swctl/platform/l2_records.h>
#include <swctl/platform/mcast_records.h>
#include <swctl/platform/mirror_records.h>
#include <swctl/platform/port_records.h>
#include <swctl/platform/vlan_records.h>

#include "shape.h"
#include "shapes_field.h"

namespace swprobe {

// The adapter's own area is left out: what went into it is in the calls
// that put it there.
template <>
struct Shape<adp_fp_entity_rule_t> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(adp_fp_entity_rule_t, entity, dec),
      SWPROBE_FIELD(adp_fp_entity_rule_t, reserved1, dec),
      SWPROBE_FIELD(adp_fp_entity_rule_t, index, dec),
      SWPROBE_FIELD(adp_fp_entity_rule_t, unset, dec),
      SWPROBE_FIELD(adp_fp_entity_rule_t, reserved2, dec),
  };
};

template <>
struct Shape<chip_l2_ucast_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_l2_ucast_entry, vid, dec),
      SWPROBE_FIELD(chip_l2_ucast_entry, mac, hex),
      SWPROBE_FIELD(chip_l2_ucast_entry, port, dec),
      SWPROBE_FIELD(chip_l2_ucast_entry, trunk, dec),
      SWPROBE_FIELD(chip_l2_ucast_entry, flags, hex),
      SWPROBE_FIELD(chip_l2_ucast_entry, state, hex),
      SWPROBE_FIELD(chip_l2_ucast_entry, aux, hex),
      SWPROBE_FIELD(chip_l2_ucast_entry, rest, hex),
      SWPROBE_FIELD(chip_l2_ucast_entry, extra, hex),
  };
};

template <>
struct Shape<chip_l2_mcast_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_l2_mcast_entry, vid, dec),
      SWPROBE_FIELD(chip_l2_mcast_entry, mac, hex),
      SWPROBE_FIELD(chip_l2_mcast_entry, portmask, hex),
      SWPROBE_FIELD(chip_l2_mcast_entry, fwdIndex, dec),
      SWPROBE_FIELD(chip_l2_mcast_entry, rest, hex),
  };
};

template <>
struct Shape<chip_l2_flush_request> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_l2_flush_request, reserved, dec),
      SWPROBE_FIELD(chip_l2_flush_request, byVlan, dec),
      SWPROBE_FIELD(chip_l2_flush_request, vid, dec),
      SWPROBE_FIELD(chip_l2_flush_request, byInterface, dec),
      SWPROBE_FIELD(chip_l2_flush_request, interfaceIsPort, dec),
      SWPROBE_FIELD(chip_l2_flush_request, portOrTrunk, dec),
      SWPROBE_FIELD(chip_l2_flush_request, reserved2, dec),
      SWPROBE_FIELD(chip_l2_flush_request, includeStatic, dec),
  };
};

template <>
struct Shape<user_counter_t> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(user_counter_t, high, dec),
      SWPROBE_FIELD(user_counter_t, low, dec),
  };
};

template <>
struct Shape<chip_cable_test_t> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_cable_test_t, unused, dec),
      SWPROBE_FIELD(chip_cable_test_t, shorted, dec),
      SWPROBE_FIELD(chip_cable_test_t, open, dec),
      SWPROBE_FIELD(chip_cable_test_t, mismatch, dec),
      SWPROBE_FIELD(chip_cable_test_t, crosstalk, dec),
      SWPROBE_FIELD(chip_cable_test_t, length, dec),
  };
};

// Its counters as pairs of words, the most significant first.
template <>
struct Shape<chip_port_counters_t> {
  static constexpr Field fields[] = {{"value", offsetof(chip_port_counters_t, value),
                                      sizeof(uint32_t), 2 * CHIP_PORT_COUNTERS, true, false,
                                      Form::dec}};
};

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

template <>
struct Shape<chip_ip6_address> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_ip6_address, bytes, hex),
  };
};

template <>
struct Shape<chip_ip_mcast_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_ip_mcast_entry, vid, dec),
      SWPROBE_FIELD(chip_ip_mcast_entry, zero, dec),
      SWPROBE_FIELD(chip_ip_mcast_entry, address_b, hex),
      SWPROBE_FIELD(chip_ip_mcast_entry, address_a, hex),
      SWPROBE_FIELD(chip_ip_mcast_entry, ports, hex),
      SWPROBE_FIELD(chip_ip_mcast_entry, rest, dec),
  };
};

template <>
struct Shape<chip_ip6_mcast_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_ip6_mcast_entry, vid, dec),
      SWPROBE_FIELD(chip_ip6_mcast_entry, address_b.bytes, hex),
      SWPROBE_FIELD(chip_ip6_mcast_entry, address_a.bytes, hex),
      SWPROBE_FIELD(chip_ip6_mcast_entry, zero, dec),
      SWPROBE_FIELD(chip_ip6_mcast_entry, ports, hex),
      SWPROBE_FIELD(chip_ip6_mcast_entry, rest, dec),
  };
};

template <>
struct Shape<chip_mirror_entry> {
  static constexpr Field fields[] = {
      SWPROBE_FIELD(chip_mirror_entry, enable, dec),
      SWPROBE_FIELD(chip_mirror_entry, mirroring_port, dec),
      SWPROBE_FIELD(chip_mirror_entry, ingress, hex),
      SWPROBE_FIELD(chip_mirror_entry, egress, hex),
      SWPROBE_FIELD(chip_mirror_entry, field5, dec),
      SWPROBE_FIELD(chip_mirror_entry, field6, dec),
      SWPROBE_FIELD(chip_mirror_entry, field7, dec),
      SWPROBE_FIELD(chip_mirror_entry, field8, dec),
      SWPROBE_FIELD(chip_mirror_entry, field9, dec),
      SWPROBE_FIELD(chip_mirror_entry, field10, dec),
      SWPROBE_FIELD(chip_mirror_entry, field11, dec),
      SWPROBE_FIELD(chip_mirror_entry, field12, dec),
      SWPROBE_FIELD(chip_mirror_entry, field13, dec),
      SWPROBE_FIELD(chip_mirror_entry, field14, dec),
      SWPROBE_FIELD(chip_mirror_entry, field15, dec),
  };
};

}  // namespace swprobe

#endif
