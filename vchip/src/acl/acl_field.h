// SPDX-License-Identifier: MIT
// The match fields that a rule can have, and how their bytes read.
#ifndef VCHIP_ACL_ACL_FIELD_H
#define VCHIP_ACL_ACL_FIELD_H

#include <swctl/platform/field_records.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vchip {

enum class FieldStyle { decimal, hexadecimal, mac, ip, ip6, ports, protocol };

struct AclField {
  uint32_t id;
  const char *name;
  FieldStyle style;
  uint8_t limit;  // highest data byte of a one-byte field
};

inline constexpr std::array<AclField, 21> kAclFields = {{
    {CHIP_ACL_FIELD_TEMPLATE, "template", FieldStyle::decimal, 7},
    {CHIP_ACL_FIELD_IN_PORTS, "in ports", FieldStyle::ports, 0xFF},
    {CHIP_ACL_FIELD_DST_MAC, "destination mac", FieldStyle::mac, 0xFF},
    {CHIP_ACL_FIELD_SRC_MAC, "source mac", FieldStyle::mac, 0xFF},
    {CHIP_ACL_FIELD_FRAME_TYPE, "frame type", FieldStyle::decimal, 2},
    {CHIP_ACL_FIELD_ETHER_TYPE, "ethertype", FieldStyle::hexadecimal, 0xFF},
    {CHIP_ACL_FIELD_OUTER_VLAN, "outer vlan", FieldStyle::decimal, 0xFF},
    {CHIP_ACL_FIELD_OUTER_VLAN_ID, "outer vlan id", FieldStyle::decimal, 0xFF},
    {CHIP_ACL_FIELD_OUTER_PRIORITY, "outer priority", FieldStyle::decimal, 7},
    {CHIP_ACL_FIELD_INNER_VLAN, "inner vlan", FieldStyle::decimal, 0xFF},
    {CHIP_ACL_FIELD_INNER_VLAN_ID, "inner vlan id", FieldStyle::decimal, 0xFF},
    {CHIP_ACL_FIELD_INNER_PRIORITY, "inner priority", FieldStyle::decimal, 7},
    {CHIP_ACL_FIELD_IP_TYPE, "ip type", FieldStyle::decimal, 15},
    {CHIP_ACL_FIELD_IP_PROTOCOL, "ip protocol", FieldStyle::protocol, 0xFF},
    {CHIP_ACL_FIELD_SRC_IP, "source ip", FieldStyle::ip, 0xFF},
    {CHIP_ACL_FIELD_DST_IP, "destination ip", FieldStyle::ip, 0xFF},
    {CHIP_ACL_FIELD_SRC_IP6, "source ip6", FieldStyle::ip6, 0xFF},
    {CHIP_ACL_FIELD_DST_IP6, "destination ip6", FieldStyle::ip6, 0xFF},
    {CHIP_ACL_FIELD_TRAFFIC_CLASS, "traffic class", FieldStyle::hexadecimal, 0xFF},
    {CHIP_ACL_FIELD_L4_SRC_PORT, "source port", FieldStyle::decimal, 0xFF},
    {CHIP_ACL_FIELD_L4_DST_PORT, "destination port", FieldStyle::decimal, 0xFF},
}};

// The field's place in kAclFields; their count for an id that is not there.
constexpr size_t place_of_field(uint32_t id) {
  for (size_t place = 0; place < kAclFields.size(); ++place)
    if (kAclFields[place].id == id) return place;
  return kAclFields.size();
}

// Where the bytes of the field at a place of kAclFields begin, if those of all
// fields lie one after the other; for the count of places, where they end.
constexpr size_t start_of_field(size_t place) {
  size_t start = 0;
  for (size_t before = 0; before < place; ++before)
    start += chip_acl_field_bytes(kAclFields[before].id);
  return start;
}

// Data and mask of one field, in the byte order of the machine that wrote it.
struct FieldValue {
  const uint8_t *data;
  const uint8_t *mask;
};

// "outer vlan 10 mask 0xfff"; a mask of all ones is left out.
std::string field_text(const AclField &field, const FieldValue &value);

}  // namespace vchip

#endif
