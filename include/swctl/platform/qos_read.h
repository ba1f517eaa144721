/* SPDX-License-Identifier: MIT */
/**
 * @file qos_read.h
 * @brief Reading which priorities frames follow. Optional; the laws are in
 *        read.h.
 */
#ifndef SWCTL_PLATFORM_QOS_READ_H
#define SWCTL_PLATFORM_QOS_READ_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Weights of a priority-source group. */
#define SWCTL_PLATFORM_QOS_WEIGHTS 5

/**
 * @brief The priority-source group that a port follows.
 *
 * @param unit  switch unit
 * @param port  chip port
 * @param group receives what rtk_qos_portPriSelGroup_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_qos_port_group_get(uint32_t unit, int32_t port, uint32_t *group);

/**
 * @brief The weights of a priority-source group.
 *
 * @param unit    switch unit
 * @param group   the group
 * @param weights receives ::SWCTL_PLATFORM_QOS_WEIGHTS words, as
 *                rtk_qos_priSelGroup_set() takes them
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_qos_group_get(uint32_t unit, uint32_t group, uint32_t *weights);

/**
 * @brief The internal priority of a priority in the inner tag.
 *
 * @param unit     switch unit
 * @param priority 0 to 7
 * @param internal receives what rtk_qos_1pPriRemap_set() was given
 * @return 0, or a result of the platform's own
 */
SWCTL_API int32_t swctl_platform_qos_tag_get(uint32_t unit, uint32_t priority, uint32_t *internal);

SWCTL_END_DECLS

#endif
