/* SPDX-License-Identifier: MIT */
/**
 * @file vlan_read.h
 * @brief Reading the adapter's rules, the conversion of VLAN IDs and the
 *        spanning-tree instances of VLANs. Optional; read.h has the rules.
 */
#ifndef SWCTL_PLATFORM_VLAN_READ_H
#define SWCTL_PLATFORM_VLAN_READ_H

#include <swctl/platform/adapter_records.h>
#include <swctl/platform/vlan_records.h>

SWCTL_BEGIN_DECLS

/**
 * @name Limits of a ::swctl_platform_entity_rule
 * @{
 */
#define SWCTL_PLATFORM_RULE_ACTIONS 8
#define SWCTL_PLATFORM_RULE_QUALIFIERS 16
#define SWCTL_PLATFORM_RULE_BYTES 32
/** @} */

/** An action, as passed to adp_fp_add_entity_action(). */
struct swctl_platform_rule_action {
  uint32_t kind; /**< one of ADP_FP_ACTION_* */
  uint32_t value;
};
typedef struct swctl_platform_rule_action swctl_platform_rule_action;

/** A qualifier, as passed to adp_fp_add_entity_qualify(). */
struct swctl_platform_rule_qualifier {
  uint32_t kind;   /**< one of ADP_FP_QUALIFIER_* */
  uint32_t length; /**< bytes of the value */
  uint32_t masked; /**< 1: it has a mask, as long as the value */
  uint8_t value[SWCTL_PLATFORM_RULE_BYTES];
  uint8_t mask[SWCTL_PLATFORM_RULE_BYTES];
};
typedef struct swctl_platform_rule_qualifier swctl_platform_rule_qualifier;

/** A rule of the adapter. */
struct swctl_platform_entity_rule {
  int32_t index;       /**< index; -1 if there is no such rule */
  uint32_t actions;    /**< number of actions */
  uint32_t qualifiers; /**< number of qualifiers */
  swctl_platform_rule_action action[SWCTL_PLATFORM_RULE_ACTIONS];
  swctl_platform_rule_qualifier qualifier[SWCTL_PLATFORM_RULE_QUALIFIERS];
};
typedef struct swctl_platform_entity_rule swctl_platform_entity_rule;

/**
 * @brief Finds the first rule of an entity from an index on.
 *
 * The rules belong to the board, so there is no unit.
 *
 * @param entity one of ADP_FP_ENTITY_*
 * @param from   index to begin at
 * @param rule   receives the rule
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_entity_rule_next(uint32_t entity, int32_t from,
                                                  swctl_platform_entity_rule *rule);

/** An entry of the egress conversion table. */
struct swctl_platform_vlan_egress {
  int32_t index; /**< index; -1 if there is no such entry */
  chip_vlan_egress_entry entry;
};
typedef struct swctl_platform_vlan_egress swctl_platform_vlan_egress;

/**
 * @brief Finds the first valid entry of the egress conversion table from an
 *        index on.
 *
 * @param unit   switch unit
 * @param from   index to begin at
 * @param egress receives the entry, as rtk_vlan_egrVlanCnvtEntry_set() takes
 *               it
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_vlan_egress_next(uint32_t unit, int32_t from,
                                                  swctl_platform_vlan_egress *egress);

/** A VLAN. */
struct swctl_platform_vlan {
  int32_t index;     /**< VLAN ID; -1 if there is no such VLAN */
  uint32_t instance; /**< the spanning-tree instance that it belongs to */
};
typedef struct swctl_platform_vlan swctl_platform_vlan;

/**
 * @brief Finds the first VLAN from an ID on.
 *
 * @param unit switch unit
 * @param from index to begin at
 * @param vlan receives the VLAN, its instance as rtk_vlan_stg_set() takes it
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_vlan_next(uint32_t unit, int32_t from, swctl_platform_vlan *vlan);

SWCTL_END_DECLS

#endif
