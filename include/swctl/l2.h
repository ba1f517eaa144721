/* SPDX-License-Identifier: MIT */
/**
 * @file l2.h
 * @brief The layer-2 address table.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_L2_H
#define SWCTL_L2_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
