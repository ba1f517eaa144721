/* SPDX-License-Identifier: MIT */
/**
 * @file stp.h
 * @brief Spanning tree and protocol frame trapping.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_STP_H
#define SWCTL_STP_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
