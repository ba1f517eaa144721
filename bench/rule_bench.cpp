// SPDX-License-Identifier: MIT
// Rules of the platform adapter, through the library and by the same calls made
// by hand: a record of 6,268 bytes is cleared, filled and handed over by value.
// The chip lies in an image, where handing over takes a microsecond, as it may on
// a bus. On a chip of its own the bodies take a quarter of that, and one process
// differs from the next by 5 % either way, more than the library adds.
#include <swctl/platform/adapter.h>
#include <swctl/vlan_rules.h>

#include <cstdio>
#include <cstdlib>

#include "pairs.h"

namespace {

constexpr double kLimit = 1.05;
constexpr user_pbmp_t kPorts = {{0x1E}};
constexpr uint32_t kAll = UINT32_MAX;
constexpr user_pbmp_t kEveryPort = {{kAll, kAll, kAll, kAll, kAll, kAll, kAll, kAll}};
constexpr uint8_t kMac[6] = {2, 0, 0, 0, 0, 1};
constexpr uint8_t kMacMask[6] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
constexpr uint32_t kAddress = 0xC0000200;
constexpr uint32_t kNetmask = 0xFFFFFF00;
constexpr uint16_t kWhole = 0xFFFF;

const uint8_t *bytes(const void *place) {
  return static_cast<const uint8_t *>(place);
}

void action(adp_fp_entity_rule_t &rule, uint32_t kind, uint32_t value) {
  adp_fp_add_entity_action(&rule, kind, &value, sizeof value, nullptr, 0);
}

void half(adp_fp_entity_rule_t &rule, uint32_t kind, uint16_t value) {
  adp_fp_add_entity_qualify(&rule, kind, bytes(&value), sizeof value, bytes(&kWhole),
                            sizeof kWhole);
}

void ports(adp_fp_entity_rule_t &rule) {
  adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_INGRESS_PORTS, bytes(&kPorts), sizeof kPorts,
                            bytes(&kEveryPort), sizeof kEveryPort);
}

void station(adp_fp_entity_rule_t &rule) {
  adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_SOURCE_MAC, kMac, sizeof kMac, kMacMask,
                            sizeof kMacMask);
}

void translate_library() {
  user_vlan_translate_add(0, 0, 1, 0, &kPorts, 10, 20);
}
void translate_direct() {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_TRANSLATION;
  rule.index = 1;
  action(rule, ADP_FP_ACTION_VLAN, 20);
  ports(rule);
  half(rule, ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_TAGGED);
  half(rule, ADP_FP_QUALIFIER_RECEIVED_VLAN, 10);
  adp_fp_add_entity_rule(rule);
}

void double_tag_library() {
  user_vlan_dtag_add(0, 0, 1, 0, &kPorts, 10, 20, 3);
}
void double_tag_direct() {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_DOUBLE_TAG;
  rule.index = 1;
  action(rule, ADP_FP_ACTION_OUTER_VLAN, 20);
  action(rule, ADP_FP_ACTION_OUTER_PRIORITY, 3);
  ports(rule);
  half(rule, ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_TAGGED);
  half(rule, ADP_FP_QUALIFIER_RECEIVED_VLAN, 10);
  adp_fp_add_entity_rule(rule);
}

void mac_library() {
  user_vlan_mac_add(0, 0, 1, kMac, kMacMask, 10, 3, &kPorts);
}
void mac_direct() {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_MAC_VLAN;
  rule.index = 1;
  action(rule, ADP_FP_ACTION_VLAN, 10);
  action(rule, ADP_FP_ACTION_PRIORITY, 3);
  ports(rule);
  station(rule);
  half(rule, ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_UNTAGGED);
  adp_fp_add_entity_rule(rule);
}

void ip4_library() {
  user_vlan_ip4_add(0, 0, 1, kAddress, kNetmask, 10, 3, &kPorts);
}
void ip4_direct() {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_IP4_VLAN;
  rule.index = 1;
  action(rule, ADP_FP_ACTION_VLAN, 10);
  action(rule, ADP_FP_ACTION_PRIORITY, 3);
  ports(rule);
  adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_SOURCE_IP4, bytes(&kAddress), sizeof kAddress,
                            bytes(&kNetmask), sizeof kNetmask);
  half(rule, ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_UNTAGGED);
  adp_fp_add_entity_rule(rule);
}

void voice_library() {
  user_vlan_voice_oui_mac_add(0, 0, 1, kMac, kMacMask, 10, 3, &kPorts);
}
void voice_direct() {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_VOICE_VLAN;
  rule.index = 1 + ADP_FP_FIRST_VOICE_RULE;
  action(rule, ADP_FP_ACTION_VLAN, 10);
  action(rule, ADP_FP_ACTION_PRIORITY, 3);
  ports(rule);
  station(rule);
  adp_fp_add_entity_rule(rule);
}

void protocol_library() {
  user_port_protocol_vlan_add(0, 0, 1, 0, &kPorts, USER_ENCAPSULATION_ETHERNET, 0x0800, 10, 3);
}
void protocol_direct() {
  constexpr uint32_t kEncapsulation = ADP_FP_ENCAPSULATION_ETHERNET;
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_PROTOCOL_VLAN;
  rule.index = 1;
  action(rule, ADP_FP_ACTION_VLAN, 10);
  action(rule, ADP_FP_ACTION_PRIORITY, 3);
  ports(rule);
  adp_fp_add_entity_qualify(&rule, ADP_FP_QUALIFIER_ENCAPSULATION, bytes(&kEncapsulation),
                            sizeof kEncapsulation, nullptr, 0);
  half(rule, ADP_FP_QUALIFIER_ETHERTYPE, 0x0800);
  half(rule, ADP_FP_QUALIFIER_TAG_STATE, ADP_FP_TAG_STATE_UNTAGGED);
  adp_fp_add_entity_rule(rule);
}

template <void (*Body)()>
void loop(benchmark::State &state) {
  for (auto _ : state) Body();
}

#define PAIR(name, body) \
  { #name, loop < body##_library>, loop < body##_direct>, kLimit }
const Pair kPairs[] = {
    PAIR(user_vlan_translate_add, translate),
    PAIR(user_vlan_dtag_add, double_tag),
    PAIR(user_vlan_mac_add, mac),
    PAIR(user_vlan_ip4_add, ip4),
    PAIR(user_vlan_voice_oui_mac_add, voice),
    PAIR(user_port_protocol_vlan_add, protocol),
};

}  // namespace

int main(int argc, char **argv) {
  if (getenv("VCHIP_IMAGE") == nullptr) {
    fprintf(stderr, "%s: VCHIP_IMAGE does not name the chip's image\n", argv[0]);
    return 1;
  }
  return run_pairs(argc, argv, kPairs);
}
