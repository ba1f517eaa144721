/* SPDX-License-Identifier: MIT */
/*
 * What a management program does to a board in small, with calls of every form:
 * words, records, bytes in the machine's order and in the network's. Prints
 * what it reads back. With the word "other" one VLAN is another.
 */
#include <swctl/swctl.h>

#include <stdio.h>
#include <string.h>

static const uint8_t kMac[6] = {0x02, 0, 0x5e, 0, 0, 1};
static const uint8_t kMask[6] = {0xff, 0xff, 0xff, 0xff, 0xff, 0xff};
static const uint8_t kIp6[16] = {0xff, 0x3e, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};

static void show(const char *what, int32_t result) {
  printf("%s %ld\n", what, (long)result);
}

static void set_vlans(uint32_t vid) {
  user_pbmp_t tagged = {{0x04000000u}}, untagged = {{0x1eu}}, member, without;
  show("create", user_vlan_create(0, 0, vid));
  show("add", user_vlan_port_addEx(0, 0, vid, vid, &tagged, &untagged));
  memset(&member, 0, sizeof member);
  memset(&without, 0, sizeof without);
  show("get", user_vlan_port_get(0, 0, vid, &member, &without));
  printf("member %08lx untagged %08lx\n", (unsigned long)member.word[0],
         (unsigned long)without.word[0]);
}

static void set_field_rule(void) {
  const uint32_t zero = 0;
  user_pbmp_t ports = {{0x6u}};
  show("ports", user_field_qualify_InPorts(0, 0, 7, ports));
  show("vlan", user_field_qualify_OuterVlanId(0, 0, 7, 10, 0xfff));
  show("ip", user_field_qualify_SrcIp(0, 0, 7, 0xc0000200u, 0xffffff00u));
  show("ip6", user_field_qualify_DstIp6(0, 0, 7, kIp6, kIp6));
  show("protocol", user_field_qualify_IpProtocol(0, 0, 7, 6, 0xff));
  show("mac", user_field_qualify_SrcMac(0, 0, 7, kMac, kMask));
  show("action", user_field_action_add(0, 0, 7, 1, &zero, &zero));
  show("install", user_field_entry_install(0, 0, 7));
}

static void set_vlan_rules(void) {
  user_pbmp_t ports = {{0x1eu}};
  show("translate", user_vlan_translate_add(0, 0, 0, 0, &ports, 10, 20));
  show("mac rule", user_vlan_mac_add(0, 0, 3, kMac, kMask, 20, 5, &ports));
  show("ip4 rule", user_vlan_ip4_add(0, 0, 0, 0xc0000200u, 0xffffff00u, 30, 0, &ports));
}

static void read_port(int32_t port) {
  uint32_t link = 7, speed = 7;
  user_counter_t count = {0, 0};
  show("link", user_port_link_status_get(0, 0, port, &link));
  show("speed", user_port_speed_get(0, 0, port, &speed));
  show("count", user_stat_port_get(0, 0, port, 0, &count));
  printf("link %lu speed %lu count %lu %lu\n", (unsigned long)link, (unsigned long)speed,
         (unsigned long)count.high, (unsigned long)count.low);
}

int main(int argc, char **argv) {
  int32_t port;
  set_vlans(argc > 1 && strcmp(argv[1], "other") == 0 ? 11 : 10);
  set_field_rule();
  set_vlan_rules();
  show("trunk", user_trunk_init(5, 0));
  for (port = 0; port < 3; ++port) read_port(port);
  return 0;
}
