/* SPDX-License-Identifier: MIT */
/**
 * @file port_cable.h
 * @brief Ports: cable test.
 *
 * Part of port.h, whose laws hold here: leading argument ignored, then the
 * unit, then the chip's physical port, passed to the SDK unchanged.
 */
#ifndef SWCTL_PORT_CABLE_H
#define SWCTL_PORT_CABLE_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Wire pairs of a copper port, A to D. */
#define USER_CABLE_PAIRS 4

/**
 * @name Cable states
 * Of one pair, and of the whole cable. Code 3 does not occur.
 * @{
 */
#define USER_CABLE_OK 0u
#define USER_CABLE_OPEN 1u
#define USER_CABLE_SHORT 2u
#define USER_CABLE_MISMATCH 4u
/** Crosstalk, or more than one fault at once. */
#define USER_CABLE_FAULTY 5u
/** @} */

/** @brief What a cable test found. */
struct user_cable_diag_t {
  uint32_t state;                         /**< of the whole cable */
  uint32_t pairs;                         /**< ::USER_CABLE_PAIRS */
  uint32_t pair_state[USER_CABLE_PAIRS];  /**< of pairs A to D */
  uint32_t pair_length[USER_CABLE_PAIRS]; /**< a hundredth of the SDK's, at least 1 */
  uint32_t reserved;                      /**< 0 */
};
typedef struct user_cable_diag_t user_cable_diag_t;

/**
 * @brief Tests the cable of a copper port. Takes three seconds.
 *
 * Calls rtk_diag_rtctEnable_set(unit, ...) with a mask of this port alone
 * (empty for a port that is not 0 to 31). A result that is not 0 ends the
 * function. Otherwise it sleeps for 3 seconds and calls
 * rtk_diag_portRtctResult_get(unit, port, ...), whose result it returns and
 * does not look at: after a failure the record says what a zeroed result
 * says, namely no fault and lengths of 1.
 *
 * A pair with the SDK's fourth flag, or with more than one of the others, is
 * ::USER_CABLE_FAULTY; with one flag it is what the flag says; with none it is
 * ::USER_CABLE_OK. The whole cable is fine if all pairs are, and open if all
 * are open; otherwise it is short if any pair is, else mismatched if any pair
 * is, else faulty.
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param port   chip port
 * @param record receives the findings; untouched if the test did not start
 * @return the result of the first call if it is not 0, else of the second
 */
SWCTL_API int32_t User_port_cablediag(uint32_t lead, uint32_t unit, int32_t port,
                                      user_cable_diag_t *record);

SWCTL_END_DECLS

#endif
