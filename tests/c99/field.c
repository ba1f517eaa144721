/* SPDX-License-Identifier: MIT */
#include "every_function.h"

enum { rule = 300, meter = 3, counter = 5 };

static const uint8_t mac[6] = {1, 0x80, 0xc2, 0, 0, 0x0e};
static const uint8_t address[16] = {0x20, 1};

static void rules(void) {
  CALL(user_field_init, (lead, unit));
  CALL(user_field_set_select_tempate_idx, (lead, unit, rule, 5));
  CALL(user_field_set_double_entry, (lead, unit, rule));
  CALL(user_field_entry_install, (lead, unit, rule));
  CALL(user_field_entry_destroy, (lead, unit, rule));
  CALL(user_field_lookupMissAct_set, (lead, unit, port, USER_FIELD_MISS_ACTION));
}

static void layer2_qualifiers(void) {
  user_pbmp_t ports = {{0x1e}};
  CALL(user_field_qualify_OuterVlan, (lead, unit, rule, 10, 0xfff));
  CALL(user_field_qualify_OuterVlanId, (lead, unit, rule, 10, 0xfff));
  CALL(user_field_qualify_InnerVlan, (lead, unit, rule, 10, 0xff));
  CALL(user_field_qualify_InnerVlanId, (lead, unit, rule, 10, 0xfff));
  CALL(user_field_qualify_OuterVlanPri, (lead, unit, rule, 7, 7));
  CALL(user_field_qualify_InnerVlanPri, (lead, unit, rule, 7, 7));
  CALL(user_field_qualify_EtherType, (lead, unit, rule, 0x88cc, 0xffff));
  CALL(user_field_qualify_SrcMac, (lead, unit, rule, mac, mac));
  CALL(user_field_qualify_DstMac, (lead, unit, rule, mac, mac));
  CALL(user_field_qualify_InPorts, (lead, unit, rule, ports));
  CALL(user_field_qualify_FrameType, (lead, unit, rule, 1, 0));
}

static void ip_qualifiers(void) {
  CALL(user_field_qualify_iptype, (lead, unit, rule, 5, 0));
  CALL(user_field_qualify_IpProtocol, (lead, unit, rule, 6, 0));
  CALL(user_field_qualify_SrcIp, (lead, unit, rule, 0x0a000001u, 0xffffffffu));
  CALL(user_field_qualify_DstIp, (lead, unit, rule, 0x0a000001u, 0xffffffffu));
  CALL(user_field_qualify_SrcIp6, (lead, unit, rule, address, address));
  CALL(user_field_qualify_DstIp6, (lead, unit, rule, address, address));
  CALL(user_field_qualify_DSCP, (lead, unit, rule, 46, 63));
  CALL(user_field_qualify_Ip6TrafficClass, (lead, unit, rule, 184, 252));
  CALL(user_field_qualify_L4SrcPort, (lead, unit, rule, 67, 0xffff));
  CALL(user_field_qualify_L4DstPort, (lead, unit, rule, 68, 0xffff));
}

static void meters_and_counters(void) {
  uint32_t word = 0;
  uint32_t count[2] = {7, 7};
  CALL(user_field_action_add, (lead, unit, rule, 40, &word, &word));
  CALL(user_field_meter_entry_set, (unit, 1000, meter));
  CALL_FOR(-1, user_field_meter_entry_set, (unit, 1000, USER_FIELD_NO_METER));
  CALL(user_field_meter_rate_burst_set, (unit, meter, 1000, 0));
  CALL(user_field_meter_entry_enable, (unit, meter, 0));
  CALL(user_field_meter_entry_del, (unit, meter));
  CALL(user_field_meter_burst_size_set_del, (unit, 4096, USER_FIELD_NO_BURST_SLOT));
  CALL(user_field_clear_statistics, (lead, unit, counter, USER_FIELD_COUNT_PACKETS));
  CALL(user_field_get_statistics, (lead, unit, counter, USER_FIELD_COUNT_PACKETS, count));
  expect_true("a counter is two words", count[0] == 0 && count[1] == 0);
}

void call_field(void) {
  rules();
  layer2_qualifiers();
  ip_qualifiers();
  meters_and_counters();
}
