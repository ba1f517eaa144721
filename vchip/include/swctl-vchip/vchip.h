/* SPDX-License-Identifier: MIT */
/**
 * @file vchip.h
 * @brief What happens to a virtual chip from outside.
 *
 * libswctl-vchip answers the calls of the SDK, the adapter and the platform
 * log. These functions come on top of them: they plug in a cable, reset the
 * chip, say how it logs. A management program never needs them; tests and
 * vchipctl do.
 *
 * Every function that takes a unit and a port takes the chip's numbers and
 * answers 0 or one of the results below. All of them may be called from any
 * thread; each call is one locked step.
 */
#ifndef SWCTL_VCHIP_VCHIP_H
#define SWCTL_VCHIP_VCHIP_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** Switch units, numbered from 0. */
#define VCHIP_UNITS 2
/** Ports of a unit: front ports 0 to 27 and the CPU port. */
#define VCHIP_PORTS 29
/** The port that leads to the board's processor. */
#define VCHIP_CPU_PORT 28
/** Logical interface of the CPU port. */
#define VCHIP_CPU_INTERFACE 0
/** Access-control rules of a unit, numbered from 0. */
#define VCHIP_ACL_RULES 1536
/** Counters of packets and bytes for rules. */
#define VCHIP_ACL_COUNTERS 1536
/** Meters. */
#define VCHIP_METERS 256
/** What the adapter answers for a number that is on no interface or port. */
#define VCHIP_NO_INTERFACE (-1)

/**
 * @name Results
 * What the virtual chip answers besides 0. All but ::VCHIP_VLAN_EXISTS are
 * negative; each has a sentence, vchip_result_text().
 * @{
 */
#define VCHIP_E_UNIT (-1001)      /**< no such unit */
#define VCHIP_E_PORT (-1002)      /**< no such port on the unit */
#define VCHIP_E_NULL (-1003)      /**< a null address for an output or a record */
#define VCHIP_E_VALUE (-1004)     /**< a value outside its range */
#define VCHIP_E_INDEX (-1005)     /**< an index outside its table */
#define VCHIP_E_CPU_PORT (-1006)  /**< the CPU port has no such feature */
#define VCHIP_E_LINK (-1007)      /**< the port's link is down */
#define VCHIP_E_IMAGE (-1008)     /**< the image named by VCHIP_IMAGE cannot be used */
#define VCHIP_E_BUSY (-1009)      /**< another process has the image for longer than VCHIP_WAIT */
#define VCHIP_E_MEDIUM (-1021)    /**< the port's medium has no such test */
#define VCHIP_E_NO_TEST (-1022)   /**< no cable test has been run on the port */
#define VCHIP_E_L2_ENTRY (-1031)  /**< no such layer-2 entry, or none left in a scan */
#define VCHIP_E_L2_FULL (-1032)   /**< no place for the entry: its bucket, or the table, is full */
#define VCHIP_E_L2_EXISTS (-1033) /**< the multicast group exists already */
#define VCHIP_E_L2_LIMIT (-1034)  /**< the port's learning limit is reached */
#define VCHIP_E_VLAN (-1041)      /**< there is no such VLAN */
#define VCHIP_E_RULE_KIND (-1042) /**< no such kind of rule, qualifier or action */
#define VCHIP_E_DUPLICATE (-1043) /**< the rule has such a qualifier or action already */
#define VCHIP_E_RULE_EXISTS (-1044)     /**< there is such a rule already */
#define VCHIP_E_NO_RULE (-1045)         /**< there is no such rule */
#define VCHIP_E_FIELD (-1051)           /**< a rule has no such match field */
#define VCHIP_E_INSTANCE (-1061)        /**< there is no such spanning-tree instance */
#define VCHIP_E_INSTANCE_EXISTS (-1062) /**< the spanning-tree instance exists already */
#define VCHIP_E_IP_MCAST_ENTRY (-1071)  /**< there is no such IP multicast entry */
#define VCHIP_E_IP_MCAST_FULL (-1072)   /**< the IP multicast table is full */
#define VCHIP_E_IP_MCAST_EXISTS (-1073) /**< the IP multicast entry exists already */
#define VCHIP_E_TRUNK_MEMBER (-1081)    /**< a port belongs to another trunk */
/** @} */

/** What creating a VLAN that exists answers: positive, the VLAN stays as it is. */
#define VCHIP_VLAN_EXISTS 0x10004

/**
 * @brief The sentence for a result.
 * @param result what a call answered
 * @return a constant text without line end; null for a code it does not know
 */
SWCTL_API const char *vchip_result_text(int32_t result);

/**
 * @brief Opens the chip, if no call has done so yet.
 *
 * The first call of any kind opens the chip: private to the process, or the
 * image named by the environment variable VCHIP_IMAGE. A program that wants
 * to report a bad image itself calls this first.
 *
 * @return null, or why the image cannot be used: a text that names the file
 *         and stays valid until vchip_close()
 */
SWCTL_API const char *vchip_open(void);

/**
 * @brief Closes the chip: the next call of any kind opens it again.
 *
 * For a program that looks at one image after the other; it sets VCHIP_IMAGE
 * in between. A private chip is gone then. The text of a refusal is no longer
 * valid. Does nothing if no call has opened the chip.
 */
SWCTL_API void vchip_close(void);

/**
 * @brief Puts all units and the platform log into the state after power-on.
 *
 * What is outside is reset too: every cable is pulled and every combo port runs on
 * copper. The trace is on afterwards if this process has VCHIP_TRACE=1.
 *
 * @return 0 or ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_reset(void);

/**
 * @brief What hangs at the other end of a cable.
 */
struct vchip_partner_t {
  /** Non-zero: the partner negotiates. Zero: it is forced to one mode. */
  uint32_t autonegotiation;
  /** What it advertises, or the one mode it is forced to: an ability word
      with the bits of VCHIP_ABILITY_* (ability.h). */
  uint32_t ability;
};
typedef struct vchip_partner_t vchip_partner_t;

/**
 * @brief Plugs a cable into a front port.
 *
 * The chip then decides whether the link comes up: that depends on the
 * port's administrative state, autonegotiation and modes and on the partner.
 *
 * @param unit    switch unit
 * @param port    chip port, not the CPU port
 * @param partner what hangs at the other end; read, not kept
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_CPU_PORT,
 *         ::VCHIP_E_NULL, ::VCHIP_E_VALUE for an ability word without a
 *         mode (or, when forced, with more than one) or with a reserved bit,
 *         ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_cable_plug(uint32_t unit, int32_t port, const vchip_partner_t *partner);

/**
 * @brief Pulls the cable out of a front port.
 * @param unit switch unit
 * @param port chip port, not the CPU port
 * @return as vchip_cable_plug()
 */
SWCTL_API int32_t vchip_cable_pull(uint32_t unit, int32_t port);

/**
 * @brief Which side of a combo port has a signal.
 * @param unit   switch unit
 * @param port   chip port
 * @param medium 0 copper, 1 fibre
 * @return as vchip_cable_plug(); ::VCHIP_E_VALUE for another medium or for
 *         fibre on a port that is not a combo port
 */
SWCTL_API int32_t vchip_medium_set(uint32_t unit, int32_t port, uint32_t medium);

/**
 * @brief A station, by the source of a frame that it sends.
 */
struct vchip_station_t {
  uint32_t vid;                 /**< VLAN that the frame is in, 0 to 4095 */
  uint8_t mac[SWCTL_MAC_BYTES]; /**< its address, no group address */
  int32_t trunk;                /**< trunk group of the port, 0 to 31; 0 for none */
};
typedef struct vchip_station_t vchip_station_t;

/**
 * @brief A station sends a frame into a port, and the chip learns its address.
 *
 * A new address becomes an entry without flags. One that was learned moves to
 * this port and is young again. A static one stays; if it belongs elsewhere,
 * bit 0 of its state word is set: a violation. An entry that drops what it sends
 * (flag 0x02) learns as any other; a frame through vchip_frame_arrive() leaves it as
 * it is.
 *
 * @param unit    switch unit
 * @param port    chip port, the CPU port included
 * @param station who sends; read, not kept
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_NULL, ::VCHIP_E_VALUE,
 *         ::VCHIP_E_L2_FULL, ::VCHIP_E_L2_LIMIT, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_station_learn(uint32_t unit, int32_t port, const vchip_station_t *station);

/**
 * @brief Sets the chip's own words of a unicast entry.
 * @param unit  switch unit
 * @param vid   VLAN of the entry
 * @param mac   its address, six bytes
 * @param state its state word from now on; bit 0 is a violation
 * @param aux   its aux word from now on
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_NULL, ::VCHIP_E_VALUE,
 *         ::VCHIP_E_L2_ENTRY, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_l2_mark(uint32_t unit, uint32_t vid, const uint8_t *mac, uint32_t state,
                                uint32_t aux);

/**
 * @brief Advances the chip's clock, which never runs by itself.
 *
 * Entries that are not static age; those that reach the aging time are
 * dropped, unless that is 0.
 *
 * @param unit    switch unit
 * @param seconds how much time
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_time_pass(uint32_t unit, uint32_t seconds);

/**
 * @brief Lets rules that count on a counter match packets.
 * @param unit    switch unit
 * @param counter counter, 0 to 1535
 * @param packets added to its packets
 * @param bytes   added to its bytes
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_INDEX for another counter,
 *         ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_acl_count(uint32_t unit, uint32_t counter, uint64_t packets,
                                  uint64_t bytes);

/**
 * @name Cable faults
 * What may be wrong with a pair of wires; several may be at once.
 * @{
 */
#define VCHIP_FAULT_OPEN 1u
#define VCHIP_FAULT_SHORT 2u
#define VCHIP_FAULT_MISMATCH 4u
#define VCHIP_FAULT_CROSSTALK 8u
#define VCHIP_FAULTS_ALL 15u
/** @} */

/** Pairs of wires of a copper port, A to D, numbered from 0. */
#define VCHIP_PAIRS 4

/**
 * @brief Says what is wrong with a pair of the wires on a front port.
 *
 * It shows in cable tests that start from then on. Faults stay when a cable
 * is pulled and plugged; the link does not mind them.
 *
 * @param unit   switch unit
 * @param port   chip port, not the CPU port
 * @param pair   0 to 3
 * @param faults VCHIP_FAULT_*, 0 for none
 * @param length to the fault or the far end, in centimetres
 * @return as vchip_cable_plug(); ::VCHIP_E_INDEX for another pair,
 *         ::VCHIP_E_VALUE for another fault
 */
SWCTL_API int32_t vchip_pair_set(uint32_t unit, int32_t port, uint32_t pair, uint32_t faults,
                                 uint32_t length);

/**
 * @brief Sets a counter of a port.
 * @param unit    switch unit
 * @param port    chip port
 * @param counter identifier
 * @param value   what it holds from now on
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_INDEX, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_counter_set(uint32_t unit, int32_t port, uint32_t counter, uint64_t value);

/**
 * @brief Counts on: adds to a counter of a port, which wraps around after
 *        2^64 - 1.
 * @param unit    switch unit
 * @param port    chip port
 * @param counter identifier
 * @param amount  what to add
 * @return as vchip_counter_set()
 */
SWCTL_API int32_t vchip_counter_add(uint32_t unit, int32_t port, uint32_t counter, uint64_t amount);

/**
 * @brief Lets a storm type exceed its rate on a front port, controlled or not.
 * @param unit switch unit
 * @param port chip port, not the CPU port
 * @param type storm type, 0 to 4
 * @return as vchip_cable_plug(); ::VCHIP_E_INDEX for another type
 */
SWCTL_API int32_t vchip_storm_exceed(uint32_t unit, int32_t port, uint32_t type);

/**
 * @brief Switches the platform's operation trace on or off.
 * @param enable what sys_trace_get() answers from now on
 * @return 0 or ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_trace_set(int32_t enable);

SWCTL_END_DECLS

#endif
