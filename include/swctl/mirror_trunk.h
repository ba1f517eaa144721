/* SPDX-License-Identifier: MIT */
/**
 * @file mirror_trunk.h
 * @brief Mirroring and trunk groups.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_MIRROR_TRUNK_H
#define SWCTL_MIRROR_TRUNK_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
