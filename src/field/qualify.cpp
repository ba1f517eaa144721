// SPDX-License-Identifier: MIT
// Qualifiers that store the caller's value and mask as they are.
#include <swctl/field.h>
#include <swctl/platform/sdk.h>

#include "field/write.h"

using swctl::write_field;
using swctl::write_number;

#define QUALIFIER(name, caller_type, stored_type, field)                                      \
  int32_t user_field_qualify_##name(uint32_t, uint32_t unit, int32_t rule, caller_type value, \
                                    caller_type mask) {                                       \
    return write_number(unit, rule, field, static_cast<stored_type>(value),                   \
                        static_cast<stored_type>(mask));                                      \
  }
QUALIFIER(OuterVlan, uint16_t, uint16_t, CHIP_ACL_FIELD_OUTER_VLAN)
QUALIFIER(OuterVlanId, uint16_t, uint16_t, CHIP_ACL_FIELD_OUTER_VLAN_ID)
QUALIFIER(InnerVlan, uint16_t, uint8_t, CHIP_ACL_FIELD_INNER_VLAN)
QUALIFIER(InnerVlanId, uint16_t, uint16_t, CHIP_ACL_FIELD_INNER_VLAN_ID)
QUALIFIER(EtherType, uint16_t, uint16_t, CHIP_ACL_FIELD_ETHER_TYPE)
QUALIFIER(L4SrcPort, uint16_t, uint16_t, CHIP_ACL_FIELD_L4_SRC_PORT)
QUALIFIER(L4DstPort, uint16_t, uint16_t, CHIP_ACL_FIELD_L4_DST_PORT)
QUALIFIER(OuterVlanPri, uint8_t, uint8_t, CHIP_ACL_FIELD_OUTER_PRIORITY)
QUALIFIER(InnerVlanPri, uint8_t, uint8_t, CHIP_ACL_FIELD_INNER_PRIORITY)
QUALIFIER(Ip6TrafficClass, uint8_t, uint8_t, CHIP_ACL_FIELD_TRAFFIC_CLASS)

#define MAC_QUALIFIER(name, field)                                                               \
  int32_t user_field_qualify_##name(uint32_t, uint32_t unit, int32_t rule, const uint8_t *value, \
                                    const uint8_t *mask) {                                       \
    return write_field(unit, rule, field, value, mask, chip_acl_field_bytes(field));             \
  }
MAC_QUALIFIER(SrcMac, CHIP_ACL_FIELD_SRC_MAC)
MAC_QUALIFIER(DstMac, CHIP_ACL_FIELD_DST_MAC)

// The SDK reads four bytes and gets four.
#define IP_QUALIFIER(name, field)                                                          \
  int32_t user_field_qualify_##name(uint32_t, uint32_t unit, int32_t rule, uint32_t value, \
                                    uint32_t mask) {                                       \
    return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, field,                 \
                                        reinterpret_cast<const uint8_t *>(&value),         \
                                        reinterpret_cast<const uint8_t *>(&mask));         \
  }
IP_QUALIFIER(SrcIp, CHIP_ACL_FIELD_SRC_IP)
IP_QUALIFIER(DstIp, CHIP_ACL_FIELD_DST_IP)

#define IP6_QUALIFIER(name, field)                                                               \
  int32_t user_field_qualify_##name(uint32_t, uint32_t unit, int32_t rule, const uint8_t *value, \
                                    const uint8_t *mask) {                                       \
    return rtk_acl_ruleEntryField_write(unit, CHIP_ACL_TABLE, rule, field, value, mask);         \
  }
IP6_QUALIFIER(SrcIp6, CHIP_ACL_FIELD_SRC_IP6)
IP6_QUALIFIER(DstIp6, CHIP_ACL_FIELD_DST_IP6)
