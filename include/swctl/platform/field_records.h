/* SPDX-License-Identifier: MIT */
/**
 * @file field_records.h
 * @brief Records and codes of the SDK's access-control calls.
 *
 * The numbers are the SDK's, which gives them no names. The names and what
 * they mean are this project's reading.
 */
#ifndef SWCTL_PLATFORM_FIELD_RECORDS_H
#define SWCTL_PLATFORM_FIELD_RECORDS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** The only rule table that libswctl uses: second argument of the rule calls. */
#define CHIP_ACL_TABLE 0u

/** Field-type codes of a template. */
#define CHIP_ACL_TEMPLATE_FIELDS 12
/** Words of a rule's action record. */
#define CHIP_ACL_ACTION_WORDS 43
/** Burst sizes that the meters of a unit share. */
#define CHIP_ACL_BURST_SLOTS 2

/**
 * @name What becomes of frames that match no rule
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

/** Field IDs are below this number. */
#define CHIP_ACL_FIELD_IDS 54
/** Bytes of the widest field. */
#define CHIP_ACL_FIELD_MAX_BYTES 16

#if defined(__cplusplus) && __cplusplus >= 201402L
#define CHIP_CONSTEXPR constexpr
#else
#define CHIP_CONSTEXPR
#endif

/**
 * @brief Bytes of a field's data, and of its mask.
 * @param field field ID
 * @return the width in bytes; 0 for an ID that is not in ::chip_acl_field
 */
static inline CHIP_CONSTEXPR uint32_t chip_acl_field_bytes(uint32_t field) {
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

#undef CHIP_CONSTEXPR

/** How a rule and the next one are combined: (0, 1, 0) joins the two. */
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

/**
 * Actions of user_field_action_add(). Two numbers set the same words from
 * different parameters, and two remark the same thing.
 */
enum chip_acl_action_number {
  CHIP_ACL_ACTION_PRIORITY = 1,
  CHIP_ACL_ACTION_QUEUE = 2,
  CHIP_ACL_ACTION_REMARK_INNER = 11,
  CHIP_ACL_ACTION_REMARK_DSCP = 21,
  CHIP_ACL_ACTION_TRAP = 24,
  CHIP_ACL_ACTION_REDIRECT_PORT = 30,
  CHIP_ACL_ACTION_REDIRECT_MASK = 33,
  CHIP_ACL_ACTION_DROP = 40,
  CHIP_ACL_ACTION_PERMIT = 41,
  CHIP_ACL_ACTION_COUNT = 43,
  CHIP_ACL_ACTION_METER_OF_PARAM1 = 53,
  CHIP_ACL_ACTION_MIRROR = 117,
  CHIP_ACL_ACTION_METER = 118,
  CHIP_ACL_ACTION_OUTER_VLAN = 123,
  CHIP_ACL_ACTION_REMARK_INNER_AGAIN = 124,
  CHIP_ACL_ACTION_INNER_VLAN = 130,
  CHIP_ACL_ACTION_REMARK_OUTER = 134,
  CHIP_ACL_ACTION_REDIRECT_GROUP = 324
};

/**
 * Words of an action record, by index. The first word of a group says whether
 * the group is used. Words that are named by their number have no name; words
 * that are not listed are never written.
 */
enum chip_acl_action_word {
  CHIP_ACL_WORD_FORWARD = 0,
  CHIP_ACL_WORD_FORWARD_KIND = 1, /**< a ::chip_acl_forward */
  CHIP_ACL_WORD_FORWARD_TO = 2,   /**< number of a port, a mask or a group */
  CHIP_ACL_WORD_FORWARD_W4 = 4,
  CHIP_ACL_WORD_FORWARD_W5 = 5,
  CHIP_ACL_WORD_FORWARD_W6 = 6,
  CHIP_ACL_WORD_MIRROR = 7,
  CHIP_ACL_WORD_MIRROR_W8 = 8,
  CHIP_ACL_WORD_MIRROR_SESSION = 9,
  CHIP_ACL_WORD_COUNT = 10,
  CHIP_ACL_WORD_COUNT_W11 = 11,
  CHIP_ACL_WORD_COUNT_COUNTER = 12,
  CHIP_ACL_WORD_METER = 13,
  CHIP_ACL_WORD_METER_NUMBER = 14,
  CHIP_ACL_WORD_OUTER_VLAN = 15,
  CHIP_ACL_WORD_OUTER_VLAN_W16 = 16,
  CHIP_ACL_WORD_OUTER_VLAN_W17 = 17,
  CHIP_ACL_WORD_OUTER_VLAN_ID = 18,
  CHIP_ACL_WORD_INNER_VLAN = 19,
  CHIP_ACL_WORD_INNER_VLAN_W20 = 20,
  CHIP_ACL_WORD_INNER_VLAN_W21 = 21,
  CHIP_ACL_WORD_INNER_VLAN_ID = 22,
  CHIP_ACL_WORD_PRIORITY = 23,
  CHIP_ACL_WORD_PRIORITY_VALUE = 24,
  CHIP_ACL_WORD_VERDICT = 25, /**< a ::chip_acl_verdict */
  CHIP_ACL_WORD_REMARK = 29,
  CHIP_ACL_WORD_REMARK_KIND = 30, /**< a ::chip_acl_remark */
  CHIP_ACL_WORD_REMARK_VALUE = 31,
  CHIP_ACL_WORD_QUEUE = 35,
  CHIP_ACL_WORD_QUEUE_NUMBER = 36
};

/** Where a rule sends a frame. */
enum chip_acl_forward {
  CHIP_ACL_FORWARD_NOWHERE = 0,
  CHIP_ACL_FORWARD_TRAP = 2,
  CHIP_ACL_FORWARD_PORT = 4,
  CHIP_ACL_FORWARD_MASK = 5,
  CHIP_ACL_FORWARD_GROUP = 6
};

/** Whether a rule drops or permits a frame. */
enum chip_acl_verdict { CHIP_ACL_VERDICT_DROP = 1, CHIP_ACL_VERDICT_PERMIT = 2 };

/** What a rule remarks: the priority of a tag, or the DSCP. */
enum chip_acl_remark {
  CHIP_ACL_REMARK_INNER = 0,
  CHIP_ACL_REMARK_OUTER = 1,
  CHIP_ACL_REMARK_DSCP = 2
};

/** Actions of a rule; see ::chip_acl_action_word. */
struct chip_acl_action {
  uint32_t word[CHIP_ACL_ACTION_WORDS];
};
typedef struct chip_acl_action chip_acl_action;

/** A meter. */
struct chip_acl_meter {
  uint32_t enable;
  uint32_t rate;
  uint32_t burst_slot;
};
typedef struct chip_acl_meter chip_acl_meter;

/** The burst sizes of the slots. */
struct chip_acl_burst {
  uint32_t size[CHIP_ACL_BURST_SLOTS];
};
typedef struct chip_acl_burst chip_acl_burst;

SWCTL_END_DECLS

#endif
