/* SPDX-License-Identifier: MIT */
/**
 * @file frame.h
 * @brief The rules of the interface, and its exported variables.
 *
 * These rules apply to every function of libswctl. A function's own text only
 * says where it differs from them.
 *
 * **Arguments.** A function for one port takes, in this order: the leading
 * argument, the unit, the port, then a value (setter) or the address of a
 * variable (getter), then further values.
 * - The *leading argument* is a 32-bit word that is accepted and never
 *   interpreted: any value behaves like 0. It is passed on only where one
 *   exported function calls another.
 * - The *unit* is the switch unit, passed unchanged as the first argument of
 *   every SDK call. Where a call goes to unit 0, whatever unit the caller
 *   passed, the function says so.
 * - The *port* of a port-control function is the chip's physical port number
 *   (0 to 31) and goes to the SDK unchanged. Functions that act on all ports
 *   go through the logical interfaces 1 to ::USER_FRONT_INTERFACES and convert
 *   each with adp_intf_2_phy_id(); the adapter's answer is not checked.
 * - Some functions have no leading argument; see below.
 *
 * **No leading argument.** The arguments of these functions start at the first
 * position:
 * - quality of service: every function of qos.h but the fixed results;
 * - the meters of field_action.h;
 * - the multicast entries user_mac_mcast_add_with_portmask() and
 *   user_mac_mcast_get_fwd_index(), and the entries of mcast_ip.h;
 * - of the address table: the walks rtk_l2_traverse(), rtk_l2_mcast_traverse()
 *   and user_l2_voice_vlan_traverse(), every callback,
 *   user_is_mcast_addr_exist_vlan_is(), user_is_mcast_addr_exist_by_vlan(),
 *   user_l2_mactable_fread(), user_bcm_l2_addr_dumptest(), and the functions
 *   of l2_learn.h whose names end in _by_port;
 * - the kernel message channel;
 * - the initialisers that take only a unit: user_switch_action_init(),
 *   user_ulf_flood_index_init(), user_qos_default_cos_src_init(),
 *   user_field_meter_ifg_exclude_init() and
 *   user_vlan_ingress_convert_block_mode_init().
 *
 * **Results.** A result is a signed 32-bit number: 0 means success, a negative
 * number means failure. There are three kinds:
 * 1. *Pass-through*: the SDK's result, unchanged.
 * 2. *Fixed*: 0 (success) or -1 (not supported), without touching the chip.
 * 3. *Translated*: the function makes several SDK calls. It stops at the first
 *    that returns a negative number and returns that number; otherwise it
 *    returns the last SDK result.
 *
 * A positive SDK result counts as success and is returned as it is. The
 * library's only error code of its own is -1; the SDK defines the meaning of
 * every other result.
 *
 * **Failure.** Steps done before a failure stay done; there is no rollback.
 * The library checks no unit, port or value unless a function says so.
 * Pointers are not checked either: a null pointer is the caller's error.
 *
 * **Outputs.** A variable is written only on success unless a function says
 * otherwise. Where the function passes the caller's pointer to the SDK, the
 * SDK alone decides what a failed call leaves there.
 *
 * **Diagnostics.** Some functions print fixed lines, on standard output unless
 * they say standard error. Nothing else is printed.
 *
 * **Ownership.** The caller owns every variable, record and bitmap; the
 * library keeps no pointer after the call returns.
 *
 * **Narrow values.** Where only the low 8 or 16 bits of an argument count, the
 * bits above them may hold anything.
 *
 * **Threads.** A function runs to completion on its caller's thread and takes
 * no lock. Callers that configure the same object from several threads must
 * serialise their calls. Nothing needs initialising before use; an `_init`
 * function only programs fixed values into the chip.
 *
 * **Trace.** A change of a static address is traced with the location
 * "function():line" (l2.h). The line is one of this library's source and
 * differs between its versions; do not rely on it.
 *
 * **Fixed-result entry points** exist so that programs written for the whole
 * generic interface link and run. They read no argument, write nothing, make
 * no call and return a constant. They are declared with the leading argument
 * and an ellipsis, so that any argument list of their family compiles.
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
 * @brief Error code of the generic interface.
 *
 * Zero at load. No function of the library reads or writes it; programs may
 * use it.
 */
SWCTL_API extern int32_t ONU_ERR_CODE;

/**
 * @brief The spanning-tree state that was last set, if it was listening or
 *        learning.
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
