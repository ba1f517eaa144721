/* SPDX-License-Identifier: MIT */
/**
 * @file port_cable.h
 * @brief Ports: cable test.
 *
 * Part of port.h. Its rules apply: the leading argument is ignored; the unit
 * and the chip's physical port go to the SDK unchanged.
 */
#ifndef SWCTL_PORT_CABLE_H
#define SWCTL_PORT_CABLE_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Wire pairs of a copper port, A to D. */
#define USER_CABLE_PAIRS 4

/**
 * @name Cable states
 * Of one pair and of the whole cable. Code 3 does not occur. The SDK gives its
 * flags no names; that they mean open, short, mismatch and crosstalk is this
 * project's reading.
 * @{
 */
#define USER_CABLE_OK 0u
#define USER_CABLE_OPEN 1u
#define USER_CABLE_SHORT 2u
#define USER_CABLE_MISMATCH 4u
/** Crosstalk, or more than one fault at once. */
#define USER_CABLE_FAULTY 5u
/** @} */

/** @brief Result of a cable test. */
struct user_cable_diag_t {
  uint32_t state;                         /**< of the whole cable */
  uint32_t pairs;                         /**< ::USER_CABLE_PAIRS */
  uint32_t pair_state[USER_CABLE_PAIRS];  /**< of pairs A to D */
  uint32_t pair_length[USER_CABLE_PAIRS]; /**< the SDK's divided by 100, at least 1 */
  uint32_t reserved;                      /**< 0 */
};
typedef struct user_cable_diag_t user_cable_diag_t;

/**
 * @brief Tests the cable of a copper port. Takes three seconds.
 *
 * Calls rtk_diag_rtctEnable_set(unit, ...) with a mask of this port alone (an
 * empty mask if the port is not 0 to 31). Any result but 0 ends the function.
 * Otherwise it sleeps for 3 seconds, calls rtk_diag_portRtctResult_get(unit,
 * port, ...) and returns that result. If the read fails, the record is filled
 * all the same, from a result of zeros: no fault, and lengths of 1.
 *
 * A pair with the SDK's fourth flag, or with more than one of the others, is
 * ::USER_CABLE_FAULTY. With one of the others alone, it has the state of that
 * flag; without any, it is ::USER_CABLE_OK. The whole cable is ::USER_CABLE_OK
 * if all pairs are, and ::USER_CABLE_OPEN if all pairs are. Otherwise it is
 * ::USER_CABLE_SHORT if any pair is; else ::USER_CABLE_MISMATCH if any pair
 * is; else ::USER_CABLE_FAULTY.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param record receives the result; unchanged if the test did not start
 * @return the result of the first call if it is not 0, else of the second
 */
SWCTL_API int32_t User_port_cablediag(uint32_t lead, uint32_t unit, int32_t port,
                                      user_cable_diag_t *record);

SWCTL_END_DECLS

#endif
