/* SPDX-License-Identifier: MIT */
/**
 * @file mcast.h
 * @brief Multicast: layer-2 groups, IP entries and lookup-miss modes.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_MCAST_H
#define SWCTL_MCAST_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
