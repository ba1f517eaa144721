/* SPDX-License-Identifier: MIT */
/**
 * @file qos.h
 * @brief Quality of service: priority maps, remarking, trust and schedules.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_QOS_H
#define SWCTL_QOS_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0.
 * The sentence says what the call is for on a device that offers it.
 * @{
 */
/** Limits the rate of a queue towards the processor. */
SWCTL_API int32_t user_rx_cos_rate_set(uint32_t lead, ...);
/** The rate limit of a queue towards the processor. */
SWCTL_API int32_t user_rx_cos_rate_get(uint32_t lead, ...);
/** What a port maps a code point (DSCP, RFC 2474) to. */
SWCTL_API int32_t user_port_dscp_map_get(uint32_t lead, ...);
/** The number of class-of-service queues in use. */
SWCTL_API int32_t user_cosq_config_get(uint32_t lead, ...);
/** Sets the number of class-of-service queues in use. */
SWCTL_API int32_t user_cosq_config_set(uint32_t lead, ...);
/** How the queues of all ports are scheduled, with their weights. */
SWCTL_API int32_t user_cosq_sched_get(uint32_t lead, ...);
/** How the queues of a port are scheduled, with their weights. */
SWCTL_API int32_t user_cosq_port_sched_get(uint32_t lead, ...);
/** Schedules the queues of all ports. */
SWCTL_API int32_t user_cosq_sched_set(uint32_t lead, ...);
/** Schedules the queues of a port. */
SWCTL_API int32_t user_cosq_port_sched_set(uint32_t lead, ...);
/** The queue that a priority goes to. */
SWCTL_API int32_t user_cosq_mapping_get(uint32_t lead, ...);
/** Sends a priority to a queue. */
SWCTL_API int32_t user_cosq_mapping_set(uint32_t lead, ...);
/** Sends a priority to a queue, on one port. */
SWCTL_API int32_t user_cosq_port_mapping_set(uint32_t lead, ...);
/** The queue that a priority goes to, on one port. */
SWCTL_API int32_t user_cosq_port_mapping_get(uint32_t lead, ...);
/** Which frames of a port are mapped by their code point. */
SWCTL_API int32_t user_port_dscp_map_mode_get(uint32_t lead, ...);
/** Chooses which frames of a port are mapped by their code point. */
SWCTL_API int32_t user_port_dscp_map_mode_set(uint32_t lead, ...);
/** Maps a code point (DSCP, RFC 2474) of a port. */
SWCTL_API int32_t user_port_dscp_map_set(uint32_t lead, ...);
/** The priority of frames that come in without a tag. */
SWCTL_API int32_t user_port_untagged_priority_get(uint32_t lead, ...);
/** Sets the priority of frames that come in without a tag. */
SWCTL_API int32_t user_port_untagged_priority_set(uint32_t lead, ...);
/** Gives frames of a priority a drop precedence (color). */
SWCTL_API int32_t user_port_priority_color_set(uint32_t lead, ...);
/** @} */

/**
 * @brief Programs where the priority of an untagged frame comes from.
 *
 * Calls rtk_qos_1pDfltPriSrcSel_set(0, 0) on unit 0, whatever the argument.
 *
 * @param unit ignored
 * @return the SDK's result
 */
SWCTL_API int32_t user_qos_default_cos_src_init(uint32_t unit, ...);

SWCTL_END_DECLS

#endif
