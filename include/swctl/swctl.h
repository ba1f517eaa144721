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

#include <swctl/frame.h>
#include <swctl/port.h>
#include <swctl/types.h>

#endif
