/* SPDX-License-Identifier: MIT */
/**
 * @file field_qualify.h
 * @brief Qualifiers: what a rule of the field processor matches.
 *
 * A qualifier adds one condition to a rule. Each is one call of
 * rtk_acl_ruleEntryField_write(unit, 0, rule, field, data, mask). A later
 * write of the same field replaces the earlier one in the chip. A frame
 * matches if every bit that is 1 in the mask is equal in frame and value.
 *
 * Unless a function says otherwise, data and mask are areas of 28 bytes that
 * begin with the value and are otherwise zero. Numbers are in host byte order.
 * Only as many low bits of a number count as its type has, whatever is above
 * them in the caller's register. Port bitmaps hold chip ports.
 *
 * Include field.h, which includes this.
 */
#ifndef SWCTL_FIELD_QUALIFY_H
#define SWCTL_FIELD_QUALIFY_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Matches the outer VLAN tag.
 *
 * Writes field 12, 2 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value tag control information (TCI, IEEE 802.1Q)
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_OuterVlan(uint32_t lead, uint32_t unit, int32_t rule,
                                               uint16_t value, uint16_t mask);

/**
 * @brief Matches the VLAN of the outer tag.
 *
 * Writes field 19, 2 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value VLAN ID
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_OuterVlanId(uint32_t lead, uint32_t unit, int32_t rule,
                                                 uint16_t value, uint16_t mask);

/**
 * @brief Matches the inner VLAN tag.
 *
 * Writes field 11, 1 byte: only the low 8 bits of value and mask are stored.
 * user_field_qualify_InnerVlanId() takes whole VLAN IDs.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value the low 8 bits count
 * @param mask  the low 8 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_InnerVlan(uint32_t lead, uint32_t unit, int32_t rule,
                                               uint16_t value, uint16_t mask);

/**
 * @brief Matches the VLAN of the inner tag.
 *
 * Writes field 22, 2 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value VLAN ID
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_InnerVlanId(uint32_t lead, uint32_t unit, int32_t rule,
                                                 uint16_t value, uint16_t mask);

/**
 * @brief Matches the EtherType.
 *
 * Writes field 15, 2 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value EtherType (IEEE 802.3)
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_EtherType(uint32_t lead, uint32_t unit, int32_t rule,
                                               uint16_t value, uint16_t mask);

/**
 * @brief Matches the source port of TCP or UDP.
 *
 * Writes field 52, 2 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value port number
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_L4SrcPort(uint32_t lead, uint32_t unit, int32_t rule,
                                               uint16_t value, uint16_t mask);

/**
 * @brief Matches the destination port of TCP or UDP.
 *
 * Writes field 53, 2 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value port number
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_L4DstPort(uint32_t lead, uint32_t unit, int32_t rule,
                                               uint16_t value, uint16_t mask);

/**
 * @brief Matches the priority of the outer tag.
 *
 * Writes field 17, 1 byte.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value PCP (IEEE 802.1Q)
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_OuterVlanPri(uint32_t lead, uint32_t unit, int32_t rule,
                                                  uint8_t value, uint8_t mask);

/**
 * @brief Matches the priority of the inner tag.
 *
 * Writes field 20, 1 byte.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value PCP (IEEE 802.1Q)
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_InnerVlanPri(uint32_t lead, uint32_t unit, int32_t rule,
                                                  uint8_t value, uint8_t mask);

/**
 * @brief Matches the traffic class of IPv6.
 *
 * Writes field 46, 1 byte. user_field_qualify_DSCP() writes the same field;
 * the last write counts.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value traffic class (RFC 8200)
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_Ip6TrafficClass(uint32_t lead, uint32_t unit, int32_t rule,
                                                     uint8_t value, uint8_t mask);

/**
 * @brief Matches the DSCP.
 *
 * Writes field 46, 1 byte: value and mask, each shifted left by 2 and cut to 8
 * bits, since the DSCP is the upper six bits of the traffic class (RFC 2474).
 * user_field_qualify_Ip6TrafficClass() writes the same field.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value DSCP, 0 to 63
 * @param mask  the bits of the DSCP to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_DSCP(uint32_t lead, uint32_t unit, int32_t rule, uint8_t value,
                                          uint8_t mask);

/**
 * @brief Matches the source MAC address.
 *
 * Writes field 8, 6 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value 6 bytes, in the order of transmission
 * @param mask  6 bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_SrcMac(uint32_t lead, uint32_t unit, int32_t rule,
                                            const uint8_t *value, const uint8_t *mask);

/**
 * @brief Matches the destination MAC address.
 *
 * Writes field 7, 6 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value 6 bytes, in the order of transmission
 * @param mask  6 bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_DstMac(uint32_t lead, uint32_t unit, int32_t rule,
                                            const uint8_t *value, const uint8_t *mask);

/**
 * @brief Matches the source address of IPv4.
 *
 * Writes field 42. The SDK gets the two 32-bit words themselves, 4 bytes each,
 * not areas of 28 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value address as a number: 10.0.0.1 is 0x0A000001
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_SrcIp(uint32_t lead, uint32_t unit, int32_t rule,
                                           uint32_t value, uint32_t mask);

/**
 * @brief Matches the destination address of IPv4.
 *
 * Writes field 43. The SDK gets the two 32-bit words themselves, 4 bytes each,
 * not areas of 28 bytes.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value address as a number: 10.0.0.1 is 0x0A000001
 * @param mask  the bits of the value to compare
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_DstIp(uint32_t lead, uint32_t unit, int32_t rule,
                                           uint32_t value, uint32_t mask);

/**
 * @brief Matches the source address of IPv6.
 *
 * Writes field 44. The caller's two pointers are passed to the SDK.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value 16 bytes
 * @param mask  16 bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_SrcIp6(uint32_t lead, uint32_t unit, int32_t rule,
                                            const uint8_t *value, const uint8_t *mask);

/**
 * @brief Matches the destination address of IPv6.
 *
 * Writes field 45. The caller's two pointers are passed to the SDK.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param value 16 bytes
 * @param mask  16 bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_DstIp6(uint32_t lead, uint32_t unit, int32_t rule,
                                            const uint8_t *value, const uint8_t *mask);

/**
 * @brief Matches the ingress port.
 *
 * Writes field 6: the data are all zero; the mask begins with a 32-bit word
 * that has a 1 for every port below 32 that is not in the bitmap.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param rule  rule index
 * @param ports chip ports, by value; ports 32 to 255 are ignored
 * @param ...   a mask, as for other qualifiers; not read, may be left out
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_InPorts(uint32_t lead, uint32_t unit, int32_t rule,
                                             user_pbmp_t ports, ...);

/**
 * @brief Matches the protocol number of IP.
 *
 * Writes field 41. Protocols 17 (UDP), 6 (TCP), 1 (ICMP) and 2 (IGMP) have the
 * class codes 0, 1, 2 and 3: one data byte, followed in memory by the mask
 * byte 0xFF and a zero byte. Any other protocol, 0 included, is the 16-bit
 * number 0x1000 + protocol with mask 0xFFFF, both in host byte order. The
 * areas have no more bytes than these.
 *
 * @param lead     ignored
 * @param unit     switch unit
 * @param rule     rule index
 * @param protocol IP protocol number (IANA); the low 8 bits count
 * @param mask     ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_qualify_IpProtocol(uint32_t lead, uint32_t unit, int32_t rule,
                                                uint8_t protocol, uint8_t mask);

/**
 * @brief Matches the frame type.
 *
 * Writes field 13: data byte 0, 1 or 2 for type 1, 2 or 3; mask byte 0xFF.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param rule rule index
 * @param type 1, 2 or 3
 * @param mask ignored
 * @return the SDK's result; -1 without a call for any other type
 */
SWCTL_API int32_t user_field_qualify_FrameType(uint32_t lead, uint32_t unit, int32_t rule,
                                               uint32_t type, uint32_t mask);

/**
 * @brief Matches the IP type.
 *
 * Writes field 2: data byte 2, 3 or 0 for type 5, 10 or 12; mask byte 0x0F.
 * The mask byte follows the data byte in memory. Any other type prints
 * "%s:[%05d] unknow ip type [%d]\n" with "user_field_qualify_iptype", 1989 and
 * the type.
 *
 * @param lead ignored
 * @param unit switch unit
 * @param rule rule index
 * @param type 5, 10 or 12
 * @param mask ignored
 * @return the SDK's result; -1 without a call for any other type
 */
SWCTL_API int32_t user_field_qualify_iptype(uint32_t lead, uint32_t unit, int32_t rule,
                                            uint32_t type, uint32_t mask);

SWCTL_END_DECLS

#endif
