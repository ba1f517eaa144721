/* SPDX-License-Identifier: MIT */
/**
 * @file swctl.h
 * @brief All of libswctl: includes the header of every subsystem.
 */
#ifndef SWCTL_SWCTL_H
#define SWCTL_SWCTL_H

#define SWCTL_VERSION_MAJOR 0
#define SWCTL_VERSION_MINOR 1
#define SWCTL_VERSION_PATCH 0
/** Version of the headers; the installed library's is in its package files. */
#define SWCTL_VERSION "0.1.0"

#include <swctl/field.h>
#include <swctl/frame.h>
#include <swctl/kmsg.h>
#include <swctl/l2.h>
#include <swctl/mcast.h>
#include <swctl/mirror_trunk.h>
#include <swctl/port.h>
#include <swctl/qos.h>
#include <swctl/stp.h>
#include <swctl/types.h>
#include <swctl/vlan.h>

#endif
