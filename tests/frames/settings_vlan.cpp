// SPDX-License-Identifier: MIT
// VLANs, tags, spanning tree.
#include "settings.h"

namespace frames::vlan_setting {
namespace {

constexpr uint32_t kMembers = mask({1, 2, 3});

void vlan() {
  make_vlan(kMembers);
}
// Without the VLAN it cannot be entered.
void enter_and_flood() {
  rtk_vlan_port_add(0, 20, 2, 0);
  flood_tagged();
}
void foreign_vlan() {
  make_vlan(mask({2, 3}));
}

constexpr chip_vlan_egress_entry to_vlan_30() {
  chip_vlan_egress_entry entry = {};
  entry.valid = 1;
  entry.vid = 20;
  entry.ignore_port = 1;
  entry.ignore_second_key = 1;
  entry.new_vid = 30;
  return entry;
}
constexpr chip_vlan_egress_entry kConversion = to_vlan_30();

void instance() {
  done(rtk_stp_mstpInstance_create(0, 1));
}
void vlan_of_instance() {
  instance();
  done(rtk_vlan_stg_set(0, 1, 1));
}
// Without the instance the VLAN stays in the common one.
void into_the_instance() {
  rtk_vlan_stg_set(0, 1, 1);
  flood();
}

void second_type() {
  vlan();
  done(rtk_vlan_innerTpidEntry_set(0, 1, 0x9100));
}
void second_outer_type() {
  done(rtk_vlan_outerTpidEntry_set(0, 1, 0x9200));
}

// Ports 1 (customer) and 2 (uplink) in double-tag mode, in the service VLAN 20.
void service() {
  make_vlan(mask({1, 2}));
  done(rtk_l2_vlanMode_set(0, 1, 1));
  done(rtk_l2_vlanMode_set(0, 2, 1));
  done(rtk_vlan_portOuterPvid_set(0, 1, 20));
  done(rtk_vlan_portEgrOuterTagSts_set(0, 2, 1));
}
void service_with_types() {
  service();
  second_outer_type();
}
void service_of_vlan_1() {
  service();
  done(rtk_vlan_portOuterPvid_set(0, 1, 1));
}
void service_without_outer() {
  service();
  done(rtk_vlan_portEgrOuterTagSts_set(0, 2, 0));
}
void uplink_frame() {
  send(2, Maker(kBroadcast, station(2)).tag(20, 0, 0x88a8).tag(7).type(0x88b5).bytes());
}
void uplink_frame_back() {
  send(2, Maker(kBroadcast, station(2)).tag(20, 5, 0x88a8).type(0x88b5).bytes());
}
// Both ports are uplinks, and the tag that comes decides.
void transit() {
  service();
  done(rtk_vlan_portIgrTagKeepEnable_set(0, 2, 1, 1));
  done(rtk_vlan_portEgrOuterTagSts_set(0, 1, 0));
}

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_vlan_create, (0, 20), nullptr, enter_and_flood),
      SWCTL_SETTING(rtk_vlan_destroy, (0, 20), vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_destroyAll, (0, 0), nullptr, flood),
      SWCTL_SETTING(rtk_vlan_port_add, (0, 20, 4, 0), vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_port_del, (0, 20, 3), vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_port_set, (0, 20, &kMembers, &kMembers), vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_portPvid_set, (0, 1, 20), vlan, flood),
      SWCTL_SETTING(rtk_vlan_portIgrFilter_set, (0, 1, 1), foreign_vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_egrVlanCnvtEntry_set, (0, 0, &kConversion), vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_stg_set, (0, 1, 1), instance, flood),
      SWCTL_SETTING(rtk_stp_mstpInstance_create, (0, 1), nullptr, into_the_instance),
      SWCTL_SETTING(rtk_stp_mstpInstance_destroy, (0, 1), vlan_of_instance, flood),
      SWCTL_SETTING(rtk_stp_mstpState_set, (0, 0, 2, 1), nullptr, flood),
      SWCTL_SETTING(rtk_vlan_innerTpidEntry_set, (0, 0, 0x9100), vlan, flood_tagged),
      SWCTL_SETTING(rtk_vlan_portIgrInnerTpid_set, (0, 1, 2), second_type, flood_tagged),
      SWCTL_SETTING(rtk_vlan_portEgrInnerTpid_set, (0, 2, 1), second_type, flood_tagged),
      SWCTL_SETTING(rtk_l2_vlanMode_set, (0, 1, 1), nullptr, flood_tagged),
      SWCTL_SETTING(rtk_vlan_portOuterPvid_set, (0, 1, 20), service_of_vlan_1, flood_tagged),
      SWCTL_SETTING(rtk_vlan_outerTpidEntry_set, (0, 0, 0x9200), service, flood_tagged),
      SWCTL_SETTING(rtk_vlan_portEgrOuterTpid_set, (0, 2, 1), service_with_types, flood_tagged),
      SWCTL_SETTING(rtk_vlan_portEgrOuterTagSts_set, (0, 2, 1), service_without_outer,
                    flood_tagged),
      SWCTL_SETTING(rtk_vlan_portIgrTagKeepEnable_set, (0, 2, 0, 1), service, uplink_frame),
      SWCTL_SETTING(rtk_vlan_portEgrTagKeepEnable_set, (0, 1, 0, 1), transit, uplink_frame_back),
  };
}

}  // namespace frames::vlan_setting
