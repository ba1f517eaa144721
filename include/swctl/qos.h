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

SWCTL_END_DECLS

#endif
