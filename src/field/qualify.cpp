// SPDX-License-Identifier: MIT
// Qualifiers that store the caller's value and mask as they are.
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include "field/write.h"

using swctl::write_field;
using swctl::write_number;

namespace {

// The SDK reads four bytes and gets four, not an area of the widest field.
int32_t write_word(uint32_t unit, int32_t rule, uint32_t field, uint32_t value, uint32_t mask) {
  return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, field,
                                      reinterpret_cast<const uint8_t *>(&value),
                                      reinterpret_cast<const uint8_t *>(&mask));
}

}  // namespace

int32_t user_field_qualify_OuterVlan(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                     uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_OUTER_VLAN, value, mask);
}

int32_t user_field_qualify_OuterVlanId(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                       uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_OUTER_VLAN_ID, value, mask);
}

// Half of a VLAN ID: programs rely on it.
int32_t user_field_qualify_InnerVlan(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                     uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_INNER_VLAN, static_cast<uint8_t>(value),
                      static_cast<uint8_t>(mask));
}

int32_t user_field_qualify_InnerVlanId(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                       uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_INNER_VLAN_ID, value, mask);
}

int32_t user_field_qualify_EtherType(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                     uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_ETHER_TYPE, value, mask);
}

int32_t user_field_qualify_L4SrcPort(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                     uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_L4_SRC_PORT, value, mask);
}

int32_t user_field_qualify_L4DstPort(uint32_t, uint32_t unit, int32_t rule, uint16_t value,
                                     uint16_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_L4_DST_PORT, value, mask);
}

int32_t user_field_qualify_OuterVlanPri(uint32_t, uint32_t unit, int32_t rule, uint8_t value,
                                        uint8_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_OUTER_PRIORITY, value, mask);
}

int32_t user_field_qualify_InnerVlanPri(uint32_t, uint32_t unit, int32_t rule, uint8_t value,
                                        uint8_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_INNER_PRIORITY, value, mask);
}

int32_t user_field_qualify_Ip6TrafficClass(uint32_t, uint32_t unit, int32_t rule, uint8_t value,
                                           uint8_t mask) {
  return write_number(unit, rule, CHIP_ACL_FIELD_TRAFFIC_CLASS, value, mask);
}

int32_t user_field_qualify_SrcMac(uint32_t, uint32_t unit, int32_t rule, const uint8_t *value,
                                  const uint8_t *mask) {
  return write_field(unit, rule, CHIP_ACL_FIELD_SRC_MAC, value, mask, SWCTL_MAC_BYTES);
}

int32_t user_field_qualify_DstMac(uint32_t, uint32_t unit, int32_t rule, const uint8_t *value,
                                  const uint8_t *mask) {
  return write_field(unit, rule, CHIP_ACL_FIELD_DST_MAC, value, mask, SWCTL_MAC_BYTES);
}

int32_t user_field_qualify_SrcIp(uint32_t, uint32_t unit, int32_t rule, uint32_t value,
                                 uint32_t mask) {
  return write_word(unit, rule, CHIP_ACL_FIELD_SRC_IP, value, mask);
}

int32_t user_field_qualify_DstIp(uint32_t, uint32_t unit, int32_t rule, uint32_t value,
                                 uint32_t mask) {
  return write_word(unit, rule, CHIP_ACL_FIELD_DST_IP, value, mask);
}

int32_t user_field_qualify_SrcIp6(uint32_t, uint32_t unit, int32_t rule, const uint8_t *value,
                                  const uint8_t *mask) {
  return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, CHIP_ACL_FIELD_SRC_IP6, value,
                                      mask);
}

int32_t user_field_qualify_DstIp6(uint32_t, uint32_t unit, int32_t rule, const uint8_t *value,
                                  const uint8_t *mask) {
  return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, CHIP_ACL_FIELD_DST_IP6, value,
                                      mask);
}
