/* SPDX-License-Identifier: MIT */
/**
 * @file field.h
 * @brief The field processor: access-control rules, meters and counters.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_FIELD_H
#define SWCTL_FIELD_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
