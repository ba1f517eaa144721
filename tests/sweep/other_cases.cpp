// SPDX-License-Identifier: MIT
#include <swctl/field.h>
#include <swctl/mirror_trunk.h>
#include <swctl/qos.h>
#include <swctl/stp.h>
#include <swctl/vlan.h>
#include <swctl/vlan_rules.h>

#include "cases.h"
#include "sweep.h"

namespace sweep {
namespace {

constexpr uint32_t kLead = 1;
constexpr uint32_t kUnit = 1;
constexpr int32_t kPort = 3;
constexpr uint32_t kVlan = 10;
constexpr int32_t kCpuPort = 28;

// Interfaces 0, 1 and 3; and 3 and 5.
constexpr user_pbmp_t kTagged = {{0xB}};
constexpr user_pbmp_t kUntagged = {{0x28}};

void vlans() {
  start_over();
  user_vlan_create(kLead, kUnit, kVlan + 1);
  SWEEP(user_vlan_createEx, "one exists", 0, kLead, kUnit, kVlan, kVlan + 2);
  SWEEP(user_vlan_createEx, "all exist", USER_VLAN_EXISTS, kLead, kUnit, kVlan, kVlan + 2);
  SWEEP(user_vlan_createEx, "from the default one", 0, kLead, kUnit, 1, 3);
  SWEEP(user_vlan_port_add, "interface 0", -1, kLead, kUnit, kVlan, &kTagged, 1);
  SWEEP(user_vlan_port_remove, "interface 0", -1, kLead, kUnit, kVlan, &kTagged);
  SWEEP(user_vlan_port_addEx, "both", 0, kLead, kUnit, kVlan, kVlan + 1, &kTagged, &kUntagged);
  SWEEP(user_vlan_port_removeEx, "three", 0, kLead, kUnit, kVlan, kVlan + 1, &kTagged);
  SWEEP(user_vlan_destroyEx, "three", 0, kLead, kUnit, kVlan, kVlan + 2);
}

void rules() {
  const uint8_t mac[6] = {2};
  start_over();
  SWEEP(user_vlan_dtag_add, "no priority", 0, kLead, kUnit, 2, 0, &kTagged, kVlan, kVlan, 0);
  SWEEP(user_vlan_mac_add, "no priority", 0, kLead, kUnit, 2, mac, mac, kVlan, 0, &kTagged);
  SWEEP(user_vlan_ip4_add, "no priority", 0, kLead, kUnit, 2, 1, 1, kVlan, 0, &kTagged);
  SWEEP(user_port_protocol_vlan_add, "all ports", 0, kLead, kUnit, 2, 0, &kTagged,
        USER_ENCAPSULATION_LLC, 0x0800, kVlan, 0);
  SWEEP(user_port_protocol_vlan_add, "unknown encapsulation", -1, kLead, kUnit, 3, 0, &kUntagged, 3,
        0x0800, kVlan, 1);
}

void bursts() {
  start_over();
  SWEEP(user_field_meter_burst_size_set_del, "new", 0, kUnit, 4096, USER_FIELD_NO_BURST_SLOT);
  SWEEP(user_field_meter_burst_size_set_del, "second", 1, kUnit, 8192, USER_FIELD_NO_BURST_SLOT);
  SWEEP(user_field_meter_burst_size_set_del, "release", 0, kUnit, 0, 0);
  SWEEP(user_field_meter_burst_size_set_del, "move", 0, kUnit, 2048, 1);
}

void counters_and_fields() {
  uint32_t count[2] = {};
  uint32_t no_parameter = UINT32_MAX;
  start_over();
  SWEEP(user_field_clear_statistics, "bytes", 0, kLead, kUnit, 5, 1);
  SWEEP(user_field_get_statistics, "bytes", 0, kLead, kUnit, 5, 1, count);
  SWEEP(user_field_action_add, "unknown", 0, kLead, kUnit, 7, 9999, &no_parameter, &no_parameter);
  SWEEP(user_field_qualify_IpProtocol, "other", 0, kLead, kUnit, 7, 47, 0);
  for (const uint32_t type : {2, 3})
    SWEEP(user_field_qualify_FrameType, "", 0, kLead, kUnit, 7, type, 0);
  for (const uint32_t type : {10, 12})
    SWEEP(user_field_qualify_iptype, "", 0, kLead, kUnit, 7, type, 0);
}

void schedules() {
  const uint32_t weights[USER_QOS_QUEUES] = {0, 1, 2, 3, 4, 5, 6, 7};
  uint32_t mode = 0;
  uint32_t read[USER_QOS_QUEUES] = {};
  for (const uint32_t set : {USER_QOS_SCHEDULE_STRICT, USER_QOS_SCHEDULE_EQUAL,
                             USER_QOS_SCHEDULE_WEIGHTED, USER_QOS_SCHEDULE_WEIGHTED_0}) {
    start_over();
    user_qos_schedule_set(set, weights);
    SWEEP(user_qos_schedule_get, "", 0, &mode, read);
  }
}

void spanning_tree() {
  uint32_t count = 0;
  start_over();
  user_stg_create_id(kLead, 0, 3);
  SWEEP(user_stg_stg_count_get, "0 and 3", 0, kLead, 0, &count);
  SWEEP(user_stg_set_bpdu_forward, "trap", 0, kLead, kUnit, 0);
  SWEEP(user_lldp_set_bpdu_forward, "one port", 0, kLead, kUnit, 1, kPort);
  SWEEP(user_lldp_set_bpdu_forward, "all ports", 0, kLead, kUnit, 1, 0);
}

void mirrors() {
  start_over();
  SWEEP(user_check_set_mirror_disable, "nothing mirrored", 0, kLead, kUnit, 1);
  SWEEP(user_mirror_port_set, "processor", 0, kLead, kUnit, kCpuPort, 1, 9, USER_MIRROR_INGRESS);
  SWEEP(user_mirror_port_set, "egress", 0, kLead, kUnit, kPort, 1, 9, USER_MIRROR_EGRESS);
  SWEEP(user_check_set_mirror_disable, "mirrored", 0, kLead, kUnit, 1);
  SWEEP(user_mirror_port_set, "none", 0, kLead, kUnit, kPort, 1, 9, 0);
  SWEEP(user_set_flow_mirror, "ports kept", 0, kLead, kUnit, 1, 9);
  SWEEP(user_set_mirror_disable, "ports kept", 0, kLead, kUnit, 1);
  SWEEP(user_trunk_trap_lacp, "off", 0, kLead, kUnit, 0);
}

}  // namespace

void other_cases() {
  vlans();
  rules();
  bursts();
  counters_and_fields();
  schedules();
  spanning_tree();
  mirrors();
}

}  // namespace sweep
