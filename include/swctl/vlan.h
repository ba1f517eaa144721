/* SPDX-License-Identifier: MIT */
/**
 * @file vlan.h
 * @brief VLANs: membership, port defaults and classification rules.
 *
 * The laws in frame.h hold throughout.
 */
#ifndef SWCTL_VLAN_H
#define SWCTL_VLAN_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

SWCTL_END_DECLS

#endif
