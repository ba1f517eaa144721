/* SPDX-License-Identifier: MIT */
/**
 * @file kmsg.h
 * @brief The message channel to the kernel-side switch module.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_KMSG_H
#define SWCTL_KMSG_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
