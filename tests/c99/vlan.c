/* SPDX-License-Identifier: MIT */
#include "every_function.h"

enum { vid = 100, last_vid = 102 };

static const user_pbmp_t ports = {{0x2000002u, 0, 0, 0, 0, 0, 0, 0}};
static const user_pbmp_t none = {{0, 0, 0, 0, 0, 0, 0, 0}};
static const uint8_t mac[6] = {0x02, 0, 0, 0, 0, 1};
static const uint8_t mask[6] = {0xFF, 0xFF, 0xFF, 0, 0, 0};

static void membership(void) {
  user_pbmp_t member = none;
  user_pbmp_t untagged = none;
  CALL(user_vlan_create, (lead, unit, vid));
  CALL_FOR(USER_VLAN_EXISTS, user_vlan_create, (lead, unit, vid));
  CALL(user_vlan_createEx, (lead, unit, vid, last_vid));
  CALL(user_vlan_port_addEx, (lead, unit, vid, last_vid, &ports, &none));
  CALL(user_vlan_port_get, (lead, unit, vid, &member, &untagged));
  expect_true("interfaces 1 and 25 are on chip ports 0 and 24", member.word[0] == 0x1000001u);
  CALL(user_vlan_port_set, (lead, unit, vid, &member, &member));
  CALL(user_vlan_port_removeEx, (lead, unit, vid, last_vid, &ports));
  CALL_FOR(-1, user_vlan_port_add, (lead, unit, vid, &ports, 1));
  CALL_FOR(-1, user_vlan_port_remove, (lead, unit, vid, &ports));
}

static void defaults(void) {
  uint16_t default_vid = 0;
  /* The board has no interface 27; the virtual chip refuses its port. */
  CALL_FOR(-1002, user_vlan_default_set, (lead, unit, vid));
  CALL(user_vlan_default_get, (lead, unit, &default_vid));
  expect_true("the default VLAN is set", default_vid == vid);
}

static void rules(void) {
  CALL(user_vlan_translate_add, (lead, unit, 1, 0, &ports, vid, last_vid));
  CALL(user_vlan_translate_delete, (lead, unit, 1));
  CALL(user_vlan_dtag_add, (lead, unit, 1, 0, &ports, vid, last_vid, 3));
  CALL(user_vlan_dtag_delete, (lead, unit, 1));
  CALL(user_vlan_mac_add, (lead, unit, 1, mac, mask, vid, 3, &ports));
  CALL(user_vlan_mac_delete, (lead, unit, 1));
  CALL(user_vlan_ip4_add, (lead, unit, 1, 0xC0000200u, 0xFFFFFF00u, vid, 3, &ports));
  CALL(user_vlan_ip4_delete, (lead, unit, 1));
  CALL(user_vlan_voice_oui_mac_add, (lead, unit, 1, mac, mask, vid, 3, &ports));
  CALL(user_vlan_voice_oui_mac_delete, (lead, unit, 1));
  CALL(user_port_protocol_vlan_add,
       (lead, unit, 1, 0, &ports, USER_ENCAPSULATION_SNAP, 0x0806, vid, 3));
  CALL(user_port_protocol_vlan_delete, (lead, unit, 1));
}

static void conversion(void) {
  CALL(user_vlan_translate_egress_add, (lead, unit, 1, port, vid, last_vid));
  CALL(user_vlan_translate_egress_delete, (lead, unit, 1));
  CALL(user_vlan_ingress_convert_block_mode_init, (unit));
}

static void destruction(void) {
  CALL(user_vlan_destroy, (lead, unit, vid));
  CALL(user_vlan_destroyEx, (lead, unit, vid + 1, last_vid));
  CALL(user_vlan_destroy_all, (lead, unit));
}

void call_vlan(void) {
  membership();
  defaults();
  rules();
  conversion();
  destruction();
}
