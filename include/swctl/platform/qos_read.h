/* SPDX-License-Identifier: MIT */
/**
 * @file qos_read.h
 * @brief Reading which priority of a frame is used. Optional; read.h has the
 *        rules.
 */
#ifndef SWCTL_PLATFORM_QOS_READ_H
#define SWCTL_PLATFORM_QOS_READ_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Number of weights of a priority-source group. */
#define SWCTL_PLATFORM_QOS_WEIGHTS 5

/**
 * @brief Reads the priority-source group of a port.
 *
 * @param unit  switch unit
 * @param port  chip port
 * @param group receives the value last passed to rtk_qos_portPriSelGroup_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_qos_port_group_get(uint32_t unit, int32_t port, uint32_t *group);

/**
 * @brief Reads the weights of a priority-source group.
 *
 * @param unit    switch unit
 * @param group   the group
 * @param weights receives ::SWCTL_PLATFORM_QOS_WEIGHTS words, as
 *                rtk_qos_priSelGroup_set() takes them
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_qos_group_get(uint32_t unit, uint32_t group, uint32_t *weights);

/**
 * @brief Reads the internal priority of a priority in the inner tag.
 *
 * @param unit     switch unit
 * @param priority 0 to 7
 * @param internal receives the value last passed to rtk_qos_1pPriRemap_set()
 * @return 0, or a negative result of the platform's own
 */
SWCTL_API int32_t swctl_platform_qos_tag_get(uint32_t unit, uint32_t priority, uint32_t *internal);

SWCTL_END_DECLS

#endif
