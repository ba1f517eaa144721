/* SPDX-License-Identifier: MIT */
/**
 * @file field_records.h
 * @brief Records and codes of the SDK's access-control calls.
 *
 * The names are this project's; the numbers are the SDK's.
 */
#ifndef SWCTL_PLATFORM_FIELD_RECORDS_H
#define SWCTL_PLATFORM_FIELD_RECORDS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** The one rule table that libswctl uses: second argument of the rule calls. */
#define CHIP_ACL_TABLE 0u

/** Field-type codes of a template. */
#define CHIP_ACL_TEMPLATE_FIELDS 12
/** Words of a rule's action record. */
#define CHIP_ACL_ACTION_WORDS 43
/** Burst sizes that the meters of a unit share. */
#define CHIP_ACL_BURST_SLOTS 2

/**
 * @name What becomes of frames that no rule matches
 * @{
 */
#define CHIP_ACL_MISS_FORWARD 0u
#define CHIP_ACL_MISS_DROP 1u
/** @} */

/** Match fields of a rule. */
enum chip_acl_field {
  CHIP_ACL_FIELD_TEMPLATE = 0,
  CHIP_ACL_FIELD_IP_TYPE = 2,
  CHIP_ACL_FIELD_IN_PORTS = 6,
  CHIP_ACL_FIELD_DST_MAC = 7,
  CHIP_ACL_FIELD_SRC_MAC = 8,
  CHIP_ACL_FIELD_INNER_VLAN = 11,
  CHIP_ACL_FIELD_OUTER_VLAN = 12,
  CHIP_ACL_FIELD_FRAME_TYPE = 13,
  CHIP_ACL_FIELD_ETHER_TYPE = 15,
  CHIP_ACL_FIELD_OUTER_PRIORITY = 17,
  CHIP_ACL_FIELD_OUTER_VLAN_ID = 19,
  CHIP_ACL_FIELD_INNER_PRIORITY = 20,
  CHIP_ACL_FIELD_INNER_VLAN_ID = 22,
  CHIP_ACL_FIELD_IP_PROTOCOL = 41,
  CHIP_ACL_FIELD_SRC_IP = 42,
  CHIP_ACL_FIELD_DST_IP = 43,
  CHIP_ACL_FIELD_SRC_IP6 = 44,
  CHIP_ACL_FIELD_DST_IP6 = 45,
  CHIP_ACL_FIELD_TRAFFIC_CLASS = 46,
  CHIP_ACL_FIELD_L4_SRC_PORT = 52,
  CHIP_ACL_FIELD_L4_DST_PORT = 53
};

/** Field ids are below this number. */
#define CHIP_ACL_FIELD_IDS 54
/** Bytes of the widest field. */
#define CHIP_ACL_FIELD_MAX_BYTES 16

/**
 * @brief Bytes of a field's data, and of its mask.
 * @param field field id
 * @return the width in bytes; 0 for an id that is not in ::chip_acl_field
 */
static inline uint32_t chip_acl_field_bytes(uint32_t field) {
  switch (field) {
    case CHIP_ACL_FIELD_TEMPLATE:
    case CHIP_ACL_FIELD_IP_TYPE:
    case CHIP_ACL_FIELD_INNER_VLAN:
    case CHIP_ACL_FIELD_FRAME_TYPE:
    case CHIP_ACL_FIELD_OUTER_PRIORITY:
    case CHIP_ACL_FIELD_INNER_PRIORITY:
    case CHIP_ACL_FIELD_TRAFFIC_CLASS: return 1;
    case CHIP_ACL_FIELD_OUTER_VLAN:
    case CHIP_ACL_FIELD_ETHER_TYPE:
    case CHIP_ACL_FIELD_OUTER_VLAN_ID:
    case CHIP_ACL_FIELD_INNER_VLAN_ID:
    case CHIP_ACL_FIELD_IP_PROTOCOL:
    case CHIP_ACL_FIELD_L4_SRC_PORT:
    case CHIP_ACL_FIELD_L4_DST_PORT: return 2;
    case CHIP_ACL_FIELD_IN_PORTS:
    case CHIP_ACL_FIELD_SRC_IP:
    case CHIP_ACL_FIELD_DST_IP: return 4;
    case CHIP_ACL_FIELD_DST_MAC:
    case CHIP_ACL_FIELD_SRC_MAC: return 6;
    case CHIP_ACL_FIELD_SRC_IP6:
    case CHIP_ACL_FIELD_DST_IP6: return 16;
    default: return 0;
  }
}

/** How a rule works together with the next one: (0, 1, 0) joins the two. */
struct chip_acl_operation {
  uint32_t word[3];
};
typedef struct chip_acl_operation chip_acl_operation;

/** Rules from first to last, both included. */
struct chip_acl_range {
  uint32_t first;
  uint32_t last;
};
typedef struct chip_acl_range chip_acl_range;

/** What a rule does with a frame that it matches. */
struct chip_acl_action {
  uint32_t word[CHIP_ACL_ACTION_WORDS];
};
typedef struct chip_acl_action chip_acl_action;

/** One meter. */
struct chip_acl_meter {
  uint32_t enable;
  uint32_t rate;
  uint32_t burst_slot;
};
typedef struct chip_acl_meter chip_acl_meter;

/** The burst sizes that meters choose from. */
struct chip_acl_burst {
  uint32_t size[CHIP_ACL_BURST_SLOTS];
};
typedef struct chip_acl_burst chip_acl_burst;

SWCTL_END_DECLS

#endif
