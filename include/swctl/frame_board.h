/* SPDX-License-Identifier: MIT */
/**
 * @file frame_board.h
 * @brief Switch units, the board around them, and their start.
 *
 * Part of frame.h, whose rules apply.
 */
#ifndef SWCTL_FRAME_BOARD_H
#define SWCTL_FRAME_BOARD_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @brief Stops learning of the all-zero source address.
 *
 * Passes through to rtk_l2_zeroSALearningEnable_set(unit, 0).
 *
 * @param unit switch unit; there is no leading argument
 * @return the SDK's result
 */
SWCTL_API int32_t user_switch_action_init(uint32_t unit);

/**
 * @brief Chooses the port mask to which unknown unicast frames are flooded.
 *
 * Passes through to rtk_l2_lookupMissFloodPortMaskIdx_set(unit, 2, 5): lookup
 * misses of type 2 use the flood port mask of index 5.
 *
 * @param unit switch unit; there is no leading argument
 * @return the SDK's result
 */
SWCTL_API int32_t user_ulf_flood_index_init(uint32_t unit);

/** Command of user_i2c_ioctl() that reads. */
#define USER_I2C_READ 1u

/**
 * @brief Copies from the scratch buffer.
 *
 * With the command ::USER_I2C_READ, copies `length` bytes from the start of
 * ::g_tmpBuffer to `destination`; with any other command, does nothing.
 * Nothing in the library fills the buffer for it. Makes no SDK call.
 *
 * @param lead        ignored
 * @param device      ignored
 * @param address     ignored
 * @param command     what to do
 * @param destination receives the bytes; other commands leave it alone
 * @param length      bytes to copy, at most ::SWCTL_TMP_BUFFER_SIZE. This is
 *                    not checked: a greater length reads beyond the buffer.
 * @return 0, always
 */
SWCTL_API int32_t user_i2c_ioctl(uint32_t lead, uint32_t device, uint32_t address, uint32_t command,
                                 void *destination, uint32_t length);

/**
 * @name Functions that print a line
 * Each makes no call, writes nothing, prints one line on standard output and
 * returns 0. The line begins with the function's name and a fixed number, and
 * ends with "ret = 0".
 * @{
 */
/** Whether a unit is attached. Prints "user_attach_check 1460 ret = 0\n". */
SWCTL_API int32_t user_attach_check(uint32_t lead, ...);
/**
 * @brief The number of units that can be attached.
 *
 * Prints "user_attach_max 1498 max_units=%d ret = 0\n".
 *
 * @param lead      ignored
 * @param max_units the number to print; read and not written
 * @return 0, always
 */
SWCTL_API int32_t user_attach_max(uint32_t lead, const uint32_t *max_units);
/** Attaches a unit. Prints "user_device_attach 1542 ret = 0\n". */
SWCTL_API int32_t user_device_attach(uint32_t lead, ...);
/** Detaches a unit. Prints "user_device_detach 1560 ret = 0\n". */
SWCTL_API int32_t user_device_detach(uint32_t lead, ...);
/** Prepares port authentication. Prints "user_auth_init 61 ret = 0\n". */
SWCTL_API int32_t user_auth_init(uint32_t lead, ...);
/** Chooses how a port authenticates. Prints "user_auth_mode_set 112 ret = 0\n". */
SWCTL_API int32_t user_auth_mode_set(uint32_t lead, ...);
/**
 * @brief How a port authenticates.
 *
 * Prints "user_auth_mode_get 132 mode = %d ret = 0\n".
 *
 * @param lead ignored
 * @param unit ignored
 * @param port ignored
 * @param mode the number to print; read and not written
 * @return 0, always
 */
SWCTL_API int32_t user_auth_mode_get(uint32_t lead, uint32_t unit, int32_t port,
                                     const uint32_t *mode);
/** @} */

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Sets a switch-wide control. */
SWCTL_API int32_t user_switch_control_set(uint32_t lead, ...);
/** Reads a switch-wide control. */
SWCTL_API int32_t user_switch_control_get(uint32_t lead, ...);
/** Sets a switch control of one port. */
SWCTL_API int32_t user_switch_control_port_set(uint32_t lead, ...);
/** Reads a switch control of one port. */
SWCTL_API int32_t user_switch_control_port_get(uint32_t lead, ...);
/** Switches the LEDs for power over Ethernet on or off. */
SWCTL_API int32_t user_API_poe_led_set_en(uint32_t lead, ...);
/** Sets an LED for power over Ethernet. */
SWCTL_API int32_t user_API_poe_led_set(uint32_t lead, ...);
/** Attaches a switch unit. */
SWCTL_API int32_t user_attach(uint32_t lead, ...);
/** Reads what chip a unit is. */
SWCTL_API int32_t user_bcm_info_get(uint32_t lead, ...);
/** Tests the interface. */
SWCTL_API int32_t user_API_test(uint32_t lead, ...);
/** Controls the LEDs. */
SWCTL_API int32_t user_led_ctrl(uint32_t lead, ...);
/** Opens the board's I2C bus. */
SWCTL_API int32_t user_i2c_open(uint32_t lead, ...);
/** Reads a register of a chip on the PCI bus. */
SWCTL_API int32_t user_pci_read(uint32_t lead, ...);
/** Writes a register of a chip on the PCI bus. */
SWCTL_API int32_t user_pci_write(uint32_t lead, ...);
/** @} */

/**
 * @name Fixed result -1
 * Not supported: each ignores its arguments, calls nothing, writes nothing and
 * returns -1. The sentence says what the call is for on a device that offers
 * it.
 * @{
 */
/** Starts the whole system; here, the `_init` functions of the families do that. */
SWCTL_API int32_t user_system_init(uint32_t lead, ...);
/** @} */

SWCTL_END_DECLS

#endif
