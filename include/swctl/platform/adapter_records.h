/* SPDX-License-Identifier: MIT */
/**
 * @file adapter_records.h
 * @brief Records of the platform adapter's calls.
 */
#ifndef SWCTL_PLATFORM_ADAPTER_RECORDS_H
#define SWCTL_PLATFORM_ADAPTER_RECORDS_H

#include <swctl/types.h>

/**
 * @name Kinds of rules (entities)
 * * The adapter's numbers have no names of their own; these are libswctl's.
 * @{
 */
#define ADP_FP_ENTITY_PROTOCOL_VLAN 12u
#define ADP_FP_ENTITY_IP4_VLAN 13u
#define ADP_FP_ENTITY_MAC_VLAN 21u
#define ADP_FP_ENTITY_VOICE_VLAN 24u
#define ADP_FP_ENTITY_DOUBLE_TAG 32u
#define ADP_FP_ENTITY_TRANSLATION 33u
/** @} */

/** The first index of voice VLAN rules that belongs to libswctl. */
#define ADP_FP_FIRST_VOICE_RULE 15

/**
 * @name Actions of a rule
 * @{
 */
#define ADP_FP_ACTION_VLAN 123u
#define ADP_FP_ACTION_PRIORITY 124u
#define ADP_FP_ACTION_OUTER_VLAN 130u
#define ADP_FP_ACTION_OUTER_PRIORITY 134u
/** @} */

/**
 * @name Qualifiers of a rule
 * @{
 */
#define ADP_FP_QUALIFIER_SOURCE_MAC 6u
#define ADP_FP_QUALIFIER_SOURCE_IP4 9u
#define ADP_FP_QUALIFIER_INGRESS_PORTS 13u /**< a ::user_pbmp_t of interfaces */
#define ADP_FP_QUALIFIER_TAG_STATE 21u     /**< one of ADP_FP_TAG_STATE_* */
#define ADP_FP_QUALIFIER_RECEIVED_VLAN 22u
#define ADP_FP_QUALIFIER_ETHERTYPE 29u
#define ADP_FP_QUALIFIER_ENCAPSULATION 89u /**< one of ADP_FP_ENCAPSULATION_* */
/** @} */

/**
 * @name Tag states
 * @{
 */
#define ADP_FP_TAG_STATE_TAGGED 0u
#define ADP_FP_TAG_STATE_UNTAGGED 1u
/** @} */

/**
 * @name Encapsulations
 * @{
 */
#define ADP_FP_ENCAPSULATION_ETHERNET 1u
#define ADP_FP_ENCAPSULATION_LLC 2u
#define ADP_FP_ENCAPSULATION_SNAP 3u
/** @} */

/** Bytes of ::adp_fp_entity_rule_t that only the adapter uses. */
#define ADP_FP_RULE_AREA 6248

/**
 * @brief A rule of the adapter while it is built.
 *
 * The caller clears the record and fills in entity and index. The adapter's
 * calls that add qualifiers and actions write the area; its layout is the
 * adapter's own.
 */
struct adp_fp_entity_rule_t {
  uint32_t entity; /**< kind of the rule */
  uint32_t reserved1;
  uint32_t index; /**< index among the rules of its kind */
  uint32_t unset;
  uint32_t reserved2;
  uint8_t area[ADP_FP_RULE_AREA];
};
typedef struct adp_fp_entity_rule_t adp_fp_entity_rule_t;

#endif
