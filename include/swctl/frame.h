/* SPDX-License-Identifier: MIT */
/**
 * @file frame.h
 * @brief The laws of the interface, and its exported words.
 *
 * These laws hold for every function of libswctl. A function's own text says
 * only where it departs from them.
 *
 * **Arguments.** An exported per-port function takes, in this order: the
 * leading argument, the unit, the port, then a value (setter) or the address
 * of a variable (getter), then further values.
 * - The *leading argument* is a 32-bit word that is accepted and never
 *   interpreted: any value behaves like 0. It travels on only where one
 *   exported function calls another.
 * - The *unit* is the switch unit, passed unchanged as the first argument of
 *   every SDK call. Where a call goes to unit 0 whatever the caller gave, the
 *   function says so.
 * - The *port* of a port-control function is the chip's physical port number
 *   (0 to 31) and goes to the SDK unchanged. Functions that act on all ports
 *   walk the logical interfaces 1 to ::USER_FRONT_INTERFACES and convert each
 *   with adp_intf_2_phy_id(); the adapter's answer is used without a check.
 * - Families without a leading argument are the quality-of-service maps,
 *   remarking, trust and schedules, the field meters, the multicast entries
 *   with a port mask, the table walks and their callbacks, and the kernel
 *   message channel: their arguments start at the first position. An
 *   initialiser that takes only a unit takes it as its first argument.
 *
 * **Results.** A signed 32-bit word: 0 is success, a negative value failure.
 * Three kinds occur:
 * 1. *Pass-through*: the SDK's result, unchanged.
 * 2. *Fixed*: 0 (success) or -1 (not supported), without touching the chip.
 * 3. *Translated*: the function makes several SDK calls, stops at the first
 *    that answers a negative value and returns that value; otherwise it
 *    returns the last SDK result.
 *
 * A positive SDK result counts as success and is returned as it is. The
 * library has no error code of its own but -1. The meaning of every other
 * result belongs to the SDK.
 *
 * **Failure.** Steps done before a failure stay done; there is no rollback.
 * The library checks no unit, port or value unless a function says so.
 * Addresses are not checked either: a null pointer is the caller's error.
 *
 * **Outputs.** A variable is written only on success unless a function says
 * otherwise. Where the function hands the caller's address on to the SDK, the
 * SDK alone decides what a failed call leaves there.
 *
 * **Diagnostics.** Fixed lines on standard output, on standard error where a
 * function says so. Nothing else is printed.
 *
 * **Ownership.** The caller owns every variable, record and bitmap; no
 * address is kept after the call returns.
 *
 * **Threads.** A function runs to completion on its caller's thread and takes
 * no lock. Callers that configure the same object from several threads
 * serialise themselves. Nothing needs initialising before use; an `_init`
 * function only programs fixed values into the chip.
 *
 * **Fixed-result entry points** exist so that programs written for the whole
 * generic interface link and run. They read no argument, write nothing, make
 * no call and return a constant. They are declared with the leading argument
 * and an ellipsis, so any argument list of their family compiles.
 */
#ifndef SWCTL_FRAME_H
#define SWCTL_FRAME_H

#include <swctl/frame_board.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Bytes of ::g_tmpBuffer. */
#define SWCTL_TMP_BUFFER_SIZE 512
/** Bytes of ::sntp_cfg. */
#define SWCTL_SNTP_CFG_SIZE 128

/**
 * @brief Error-code word of the generic interface.
 *
 * Zero at load. No function of the library reads or writes it; programs use
 * it among themselves.
 */
SWCTL_API extern int32_t ONU_ERR_CODE;

/**
 * @brief The spanning-tree port state last asked for.
 *
 * Zero at load. Shared by all threads without a lock.
 */
SWCTL_API extern uint32_t stateflag;

/**
 * @brief Scratch buffer shared by all threads without a lock.
 *
 * Zero at load.
 */
SWCTL_API extern uint8_t g_tmpBuffer[SWCTL_TMP_BUFFER_SIZE];

/**
 * @brief Configuration block of the device's time client.
 *
 * Zero at load. No function of the library touches it.
 */
SWCTL_API extern uint8_t sntp_cfg[SWCTL_SNTP_CFG_SIZE];

SWCTL_END_DECLS

#endif
