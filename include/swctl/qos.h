/* SPDX-License-Identifier: MIT */
/**
 * @file qos.h
 * @brief Quality of service: priority maps, remarking, trust and schedules.
 *
 * The rules in frame.h apply. But for the fixed results, the functions of this
 * family have no leading argument. All but user_qos_pri_remap_set() use unit
 * 0.
 */
#ifndef SWCTL_QOS_H
#define SWCTL_QOS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Sets the rate limit of a CPU queue. */
SWCTL_API int32_t user_rx_cos_rate_set(uint32_t lead, ...);
/** The rate limit of a CPU queue. */
SWCTL_API int32_t user_rx_cos_rate_get(uint32_t lead, ...);
/** What a port maps a DSCP (RFC 2474) to. */
SWCTL_API int32_t user_port_dscp_map_get(uint32_t lead, ...);
/** The number of CoS queues in use. */
SWCTL_API int32_t user_cosq_config_get(uint32_t lead, ...);
/** Sets the number of CoS queues in use. */
SWCTL_API int32_t user_cosq_config_set(uint32_t lead, ...);
/** How the queues of all ports are scheduled, with their weights. */
SWCTL_API int32_t user_cosq_sched_get(uint32_t lead, ...);
/** How the queues of a port are scheduled, with their weights. */
SWCTL_API int32_t user_cosq_port_sched_get(uint32_t lead, ...);
/** Schedules the queues of all ports. */
SWCTL_API int32_t user_cosq_sched_set(uint32_t lead, ...);
/** Schedules the queues of a port. */
SWCTL_API int32_t user_cosq_port_sched_set(uint32_t lead, ...);
/** The queue of a priority. */
SWCTL_API int32_t user_cosq_mapping_get(uint32_t lead, ...);
/** Maps a priority to a queue. */
SWCTL_API int32_t user_cosq_mapping_set(uint32_t lead, ...);
/** Maps a priority to a queue on one port. */
SWCTL_API int32_t user_cosq_port_mapping_set(uint32_t lead, ...);
/** The queue of a priority on one port. */
SWCTL_API int32_t user_cosq_port_mapping_get(uint32_t lead, ...);
/** Which frames of a port are mapped by DSCP. */
SWCTL_API int32_t user_port_dscp_map_mode_get(uint32_t lead, ...);
/** Sets which frames of a port are mapped by DSCP. */
SWCTL_API int32_t user_port_dscp_map_mode_set(uint32_t lead, ...);
/** Maps a DSCP (RFC 2474) of a port. */
SWCTL_API int32_t user_port_dscp_map_set(uint32_t lead, ...);
/** The priority of untagged frames. */
SWCTL_API int32_t user_port_untagged_priority_get(uint32_t lead, ...);
/** Sets the priority of untagged frames. */
SWCTL_API int32_t user_port_untagged_priority_set(uint32_t lead, ...);
/** Gives frames of a priority a drop precedence (color). */
SWCTL_API int32_t user_port_priority_color_set(uint32_t lead, ...);
/** @} */

/**
 * @brief Programs where the priority of an untagged frame comes from.
 *
 * Calls rtk_qos_1pDfltPriSrcSel_set(0, 0), on unit 0 whatever the argument is.
 *
 * @param unit ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_default_cos_src_init(uint32_t unit, ...);

/** Internal priorities, from 0, the lowest, as in IEEE 802.1Q. */
#define USER_QOS_PRIORITIES 8u
/** Egress queues of a port, from 0. */
#define USER_QOS_QUEUES 8u

/**
 * @name Schedules
 * How the egress queues of a port are scheduled.
 * @{
 */
/** Strict priority: every queue goes before all lower ones. */
#define USER_QOS_SCHEDULE_STRICT 1u
/** No queue is strict, all have weight 1. */
#define USER_QOS_SCHEDULE_EQUAL 2u
/** Weighted, with the SDK's scheduling algorithm 1; a queue of weight 0 is strict. */
#define USER_QOS_SCHEDULE_WEIGHTED 3u
/** The same with the SDK's scheduling algorithm 0. */
#define USER_QOS_SCHEDULE_WEIGHTED_0 4u
/** @} */

/**
 * @brief Maps the priority of a tag to an internal priority.
 *
 * Calls rtk_qos_outer1pPriRemap_set(unit, priority, 0, internal), the same
 * with 1 in place of 0 (the DEI bit of the outer tag, IEEE 802.1Q), and
 * rtk_qos_1pPriRemap_set(unit, priority, internal). Stops at the first
 * negative result.
 *
 * @param unit     switch unit; it is the first argument
 * @param priority priority in the tag, 0 to 7; not checked
 * @param internal internal priority, 0 to 7; not checked
 * @return the result of the last call
 */
SWCTL_API int32_t user_qos_pri_remap_set(uint32_t unit, uint32_t priority, uint32_t internal);

/**
 * @brief Reads the queue of an internal priority.
 *
 * Calls rtk_qos_priMap_get(0, 8, map) on unit 0.
 *
 * @param priority internal priority; 8 or more is refused
 * @param queue    receives the queue; written even if the read failed, with
 *                 what the SDK left in the map, 0 if it wrote nothing.
 *                 Unchanged if the priority is refused.
 * @return the SDK's result; -1 without a call for a priority of 8 or more
 */
SWCTL_API int32_t user_qos_pri_queue_map_get(uint32_t priority, uint32_t *queue);

/**
 * @brief Sets the queues of all internal priorities.
 *
 * Calls rtk_qos_priMap_set(0, 8, map) on unit 0.
 *
 * @param queues eight bytes: byte p is the queue of priority p; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_pri_queue_map_set(const uint8_t *queues);

/**
 * @brief Reads the internal priority of a DSCP.
 *
 * Calls rtk_qos_dscpPriRemap_get(0, dscp, ...) on unit 0.
 *
 * @param dscp     DSCP (RFC 2474), 0 to 63; not checked
 * @param priority receives the internal priority; written whatever the result
 *                 is, and 0 if the SDK wrote nothing
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_dscp_map_get(uint32_t dscp, uint32_t *priority);

/**
 * @brief Maps a DSCP to an internal priority.
 *
 * Passes through to rtk_qos_dscpPriRemap_set(0, dscp, priority), on unit 0.
 *
 * @param dscp     DSCP (RFC 2474), 0 to 63; not checked
 * @param priority internal priority, 0 to 7; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_dscp_map_set(uint32_t dscp, uint32_t priority);

/**
 * @brief Reads the priority of a port's untagged frames.
 *
 * Passes through to rtk_qos_portOuterPri_get(0, port, priority), on unit 0.
 *
 * @param port     chip port
 * @param priority passed to the SDK; receives the priority, 0 to 7
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_port_cos_get(int32_t port, uint32_t *priority);

/**
 * @brief Sets the priority of a port's untagged frames.
 *
 * Calls rtk_qos_portOuterPri_set(0, port, priority) and
 * rtk_qos_portInnerPri_set(0, port, priority), on unit 0. Stops if the first
 * result is negative.
 *
 * @param port     chip port
 * @param priority 0 to 7; not checked
 * @return the result of the last call
 */
SWCTL_API int32_t user_qos_port_cos_set(int32_t port, uint32_t priority);

/**
 * @brief Sets the schedule of the egress queues of all front ports.
 *
 * On unit 0, for each logical interface from 1 to ::USER_FRONT_INTERFACES:
 * - calls rtk_qos_queueStrictEnable_set(0, port, queue, strict) for the queues
 *   0 to 7;
 * - calls rtk_qos_schedulingAlgorithm_set(0, port, algorithm), ignoring its
 *   result, with algorithm 0 for ::USER_QOS_SCHEDULE_WEIGHTED_0, else 1;
 * - calls rtk_qos_schedulingQueue_set(0, port, table), where each word is the
 *   weight of a queue, 0 for a strict one.
 *
 * The port comes from adp_intf_2_phy_id(), which is called for each of these
 * calls. A negative result of the first or the last ends the function.
 *
 * @param mode    one of USER_QOS_SCHEDULE_*
 * @param weights eight words, the weight of each queue; only read in the two
 *                weighted modes, so it may be null in the others
 * @return -1 without a call for any other mode; the negative result that ended
 *         the function; otherwise the result of the last
 *         rtk_qos_schedulingQueue_set()
 */
SWCTL_API int32_t user_qos_schedule_set(uint32_t mode, const uint32_t *weights);

/**
 * @brief Reads the schedule of the egress queues of the front ports.
 *
 * Reads the port of interface 1 only, on unit 0. Calls
 * rtk_qos_queueStrictEnable_get(0, port, queue, ...) for the queues from 0 up
 * to the first that is not strict. Unless all are strict, it then calls
 * rtk_qos_schedulingQueue_get(0, port, ...) and
 * rtk_qos_schedulingAlgorithm_get(0, port, ...). The results are ignored; what
 * a call does not write counts as 0.
 *
 * @param mode    receives ::USER_QOS_SCHEDULE_STRICT if all queues are strict;
 *                else ::USER_QOS_SCHEDULE_WEIGHTED_0 for algorithm 0,
 *                ::USER_QOS_SCHEDULE_WEIGHTED for algorithm 1 with a weight
 *                other than 1, ::USER_QOS_SCHEDULE_EQUAL for the rest
 * @param weights receives eight words, the weight of each queue; unchanged if
 *                all queues are strict
 * @return 0, always
 */
SWCTL_API int32_t user_qos_schedule_get(uint32_t *mode, uint32_t *weights);

/**
 * @brief Sets the weights of the CPU port's queues to 1 to 8.
 *
 * Calls rtk_qos_schedulingQueue_set(0, port, table) on unit 0, with the port
 * of logical interface 0.
 *
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_cpu_weight_init(void);

/**
 * @brief Makes every front port remark the priority of the inner tag.
 *
 * Calls rtk_qos_1pRemarkSrcSel_set(0, 0) and, for the ports of the logical
 * interfaces 1 to ::USER_FRONT_INTERFACES, rtk_qos_1pRemarkEnable_set(0, port,
 * 1), on unit 0. The results are ignored.
 *
 * @return 0, always
 */
SWCTL_API int32_t user_qos_remark_inner_tag_src_init(void);

/**
 * @name Trust groups
 * Which of a frame's priorities is used. The words of a group are the SDK's;
 * the names of the groups are this project's reading.
 * @{
 */
#define USER_QOS_TRUST_PORT 0 /**< 0 0 0 1 1 */
#define USER_QOS_TRUST_TAG 1  /**< 0 2 2 1 1 */
#define USER_QOS_TRUST_DSCP 2 /**< 3 2 2 1 1 */
/** @} */

/**
 * @brief Programs one of the priority-source groups.
 *
 * Calls rtk_qos_priSelGroup_set(0, group, words) on unit 0, with the five
 * words named at USER_QOS_TRUST_*.
 *
 * @param group one of USER_QOS_TRUST_*
 * @return the SDK's result; -1 without a call for any other group
 */
SWCTL_API int32_t user_qos_trust_sel_group_set(int32_t group);

/**
 * @brief Programs the priority-source groups 0, 1 and 2, in that order.
 *
 * Calls user_qos_trust_sel_group_set() for each, ignoring the results.
 *
 * @return 0, always
 */
SWCTL_API int32_t user_qos_trust_sel_group_init(void);

/**
 * @brief Sets the priority-source group of a port.
 *
 * Passes through to rtk_qos_portPriSelGroup_set(0, port, group), on unit 0.
 *
 * @param port  chip port
 * @param group one of USER_QOS_TRUST_*; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_port_trust_mode_set(int32_t port, uint32_t group);

SWCTL_END_DECLS

#endif
