/* SPDX-License-Identifier: MIT */
/**
 * @file frame.h
 * @brief Frames into and out of the virtual chip, and its clock.
 *
 * A frame that arrives at a port goes through the chip and obeys every
 * setting; what leaves a port waits there until somebody takes it.
 * docs/virtual-chip.md says what each step does.
 *
 * - Ports are chip ports, 0 to 28; port 28 is the processor's.
 * - A frame is its bytes from the destination address on, without FCS. The
 *   chip counts the four bytes of the FCS in every length and rate.
 * - Tables and counters belong to the chip. Frames that wait belong to the
 *   process that sent them in, also when the chip is in an image: another
 *   process does not see them, and they end with the process, with
 *   vchip_reset() and with vchip_close().
 * - The clock runs only when it is advanced. Both units have one clock.
 * - The same calls give the same bytes: nothing depends on anything but the
 *   chip, its clock and the frames.
 *
 * All functions may be called from any thread. Each call is one locked step;
 * a killed process leaves the chip as after its last call, or repaired.
 */
#ifndef SWCTL_VCHIP_FRAME_H
#define SWCTL_VCHIP_FRAME_H

#include <swctl-vchip/vchip.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Lengths of a frame, in bytes without FCS
 * @{
 */
#define VCHIP_FRAME_MIN 14    /**< both addresses and a type */
#define VCHIP_FRAME_MAX 16379 /**< 16,383 with FCS, the largest frame length of a port */
/** @} */

/**
 * @name Why a frame is at the processor
 * @{
 */
#define VCHIP_TO_CPU_FORWARDED 0u    /**< simply forwarded, or a mirror's copy */
#define VCHIP_TO_CPU_BPDU 1u         /**< bridge protocol, by frame type 19 of the port */
#define VCHIP_TO_CPU_LLDP 2u         /**< LLDP, by frame type 21 of the port */
#define VCHIP_TO_CPU_EAPOL 3u        /**< EAPOL, by reserved-address group 2 */
#define VCHIP_TO_CPU_LACP 4u         /**< slow protocol subtypes 1 and 2, by group 1 */
#define VCHIP_TO_CPU_OAM 5u          /**< slow protocol subtype 3, by group 0 */
#define VCHIP_TO_CPU_RESERVED 6u     /**< another reserved address, by group 2 or 3 */
#define VCHIP_TO_CPU_IGMP 7u         /**< IGMP, by frame type 5 */
#define VCHIP_TO_CPU_MLD 8u          /**< MLD, by frame type 4 */
#define VCHIP_TO_CPU_OWN_ADDRESS 9u  /**< its destination is on port 28, by frame type 24 */
#define VCHIP_TO_CPU_NEW_ADDRESS 10u /**< its source is unknown, by the port's action */
#define VCHIP_TO_CPU_RULE 11u        /**< a rule of the access-control list */
#define VCHIP_TO_CPU_LOOKUP_MISS 12u /**< its IP multicast group is unknown, by the miss action */
/** @} */

/**
 * @brief A name for one of VCHIP_TO_CPU_*.
 * @param reason what vchip_frame_leave() said
 * @return a constant word such as "bpdu"; null for 0 and for another number
 */
SWCTL_API const char *vchip_to_cpu_name(uint32_t reason);

/**
 * @brief A frame that has left a port.
 */
struct vchip_frame_t {
  uint8_t *bytes;  /**< in: where to put the frame; the caller's */
  uint32_t room;   /**< in: bytes there */
  uint32_t length; /**< out: bytes of the frame, also when there was too little room */
  int32_t port_in; /**< out: chip port by which it came in */
  uint32_t reason; /**< out: on port 28, why it is there: VCHIP_TO_CPU_*; 0 elsewhere */
  uint64_t time;   /**< out: the chip's clock when it left, in nanoseconds */
};
typedef struct vchip_frame_t vchip_frame_t;

/**
 * @brief A frame arrives at a port.
 *
 * At port 28 it is the processor that sends, as a member of VLANs and with
 * address lookup. A frame below 60 bytes is padded, as its sender's MAC would.
 *
 * @param unit   switch unit
 * @param port   chip port
 * @param bytes  `length` bytes of the frame; read, not kept
 * @param length its bytes, ::VCHIP_FRAME_MIN to ::VCHIP_FRAME_MAX
 * @return 0 whatever became of the frame; ::VCHIP_E_UNIT, ::VCHIP_E_PORT,
 *         ::VCHIP_E_NULL, ::VCHIP_E_VALUE for another length, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_frame_arrive(uint32_t unit, int32_t port, const uint8_t *bytes,
                                     uint32_t length);

/**
 * @brief Takes a frame that has left a port.
 * @param unit  switch unit
 * @param port  chip port; 28 for what came up to the processor
 * @param frame where to put it; its `bytes` may be null if `room` is 0
 * @return 1: one, the oldest; 0: none, and nothing is written;
 *         ::VCHIP_E_VALUE: too little room, `length` is set and the frame
 *         stays; ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_NULL,
 *         ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_frame_leave(uint32_t unit, int32_t port, struct vchip_frame_t *frame);

/**
 * @brief The processor sends a frame out of one port as it is.
 *
 * Past every lookup: whatever VLAN, isolation and spanning tree say. The port
 * has to be enabled and have a link, or the frame is lost. It is padded to 60
 * bytes, goes through queue 7, and obeys the egress limit and pause.
 *
 * @param unit   switch unit
 * @param port   chip port, not 28
 * @param bytes  `length` bytes of the frame; read, not kept
 * @param length as for vchip_frame_arrive()
 * @return as vchip_frame_arrive(); ::VCHIP_E_CPU_PORT for port 28
 */
SWCTL_API int32_t vchip_frame_transmit(uint32_t unit, int32_t port, const uint8_t *bytes,
                                       uint32_t length);

/** One frame of vchip_frames_arrive(). */
struct vchip_arrival_t {
  const uint8_t *bytes; /**< the frame; read, not kept */
  uint32_t length;      /**< its bytes */
  int32_t port;         /**< chip port */
};
typedef struct vchip_arrival_t vchip_arrival_t;

/**
 * @brief Many frames arrive, one after the other, under one lock.
 *
 * The result is that of vchip_frame_arrive() for each in turn. A setting
 * counts for all of them or for none.
 *
 * @param unit   switch unit
 * @param frames the frames, in order; read, not kept
 * @param count  how many; 0 is allowed
 * @return 0, or as vchip_frame_arrive() for the first frame that is refused;
 *         then no frame has arrived
 */
SWCTL_API int32_t vchip_frames_arrive(uint32_t unit, const struct vchip_arrival_t *frames,
                                      uint32_t count);

/**
 * @brief The same, without a copy of a frame that leaves at once as it came.
 *
 * The bytes have to stay as they are until the frames have been taken, or until
 * vchip_frames_keep() is called.
 *
 * @param unit   switch unit
 * @param frames the frames, in order
 * @param count  how many; 0 is allowed
 * @return as vchip_frames_arrive()
 */
SWCTL_API int32_t vchip_frames_arrive_lent(uint32_t unit, const struct vchip_arrival_t *frames,
                                           uint32_t count);

/**
 * @brief Copies what vchip_frames_arrive_lent() has been lent and nobody has taken
 *        yet: the bytes are not needed any more.
 * @param unit switch unit
 */
SWCTL_API void vchip_frames_keep(uint32_t unit);

/**
 * @brief Takes several frames that have left a port, the oldest first, under
 *        one lock.
 * @param unit   switch unit
 * @param port   chip port
 * @param frames where to put them
 * @param count  how many there is room for
 * @return how many there were, 0 to `count`; it stops before a frame that has
 *         too little room, whose `length` is set; ::VCHIP_E_VALUE if that is
 *         the first; ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_NULL,
 *         ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_frames_leave(uint32_t unit, int32_t port, struct vchip_frame_t *frames,
                                     uint32_t count);

/**
 * @brief Which ports have frames to take.
 * @param unit switch unit
 * @return a bit for each chip port; 0 without a chip or for another unit
 */
SWCTL_API uint32_t vchip_frames_ready(uint32_t unit);

/**
 * @brief Advances the chip's clock, which never runs by itself.
 *
 * Addresses age, buckets fill, pauses end and queues drain, on both units and
 * in the order of time. It makes no difference into how many calls the time is
 * divided.
 *
 * @param nanoseconds how far; 0 is allowed
 * @return 0; ::VCHIP_E_VALUE if the clock would pass its end, after 584 years;
 *         ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_clock_advance(uint64_t nanoseconds);

/**
 * @brief The chip's clock, nanoseconds since power-on.
 * @return the time; 0 without a chip
 */
SWCTL_API uint64_t vchip_clock(void);

/**
 * @brief When something that waits will happen without further frames.
 *
 * For a program that drives the clock: until then an advance moves no frame.
 *
 * @return the chip's clock at which the next queued frame leaves; UINT64_MAX
 *         if none will
 */
SWCTL_API uint64_t vchip_clock_next(void);

/**
 * @brief What became of the frames that came in by a port.
 *
 * received = forwarded + taken + the steps from attack to egress, always.
 */
struct vchip_drops_t {
  uint64_t received;     /**< frames that the port received */
  uint64_t forwarded;    /**< left for at least one port */
  uint64_t taken;        /**< MAC control, or to the processor and nowhere else */
  uint64_t attack;       /**< dropped: attack prevention */
  uint64_t ingress_rate; /**< over the ingress limit */
  uint64_t vlan;         /**< VLAN ID 4095 */
  uint64_t filter;       /**< no such VLAN, or the port is no member */
  uint64_t trap;         /**< by the action of a trapped kind */
  uint64_t state;        /**< by the spanning-tree state */
  uint64_t learn;        /**< by the entry of its source, or the action for new ones */
  uint64_t rule;         /**< by a rule, a meter, or the action where no rule matches */
  uint64_t lookup;       /**< by the entry of its destination, or the miss action */
  uint64_t storm;        /**< by storm control */
  uint64_t egress;       /**< no port was left */
  uint64_t port;         /**< beside the sum: admin down, no link, or in loopback */
  uint64_t length;       /**< beside the sum: too long */
  uint64_t queue;        /**< at the port of exit: the queue was full */
  uint64_t loop;         /**< at the port of exit: it would have turned twice */
  uint64_t held;         /**< at the port of exit: lost with the link */
};
typedef struct vchip_drops_t vchip_drops_t;

/**
 * @brief Reads a port's counters of what became of frames.
 * @param unit  switch unit
 * @param port  chip port
 * @param drops where to put them
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_NULL, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_drops_get(uint32_t unit, int32_t port, struct vchip_drops_t *drops);

/**
 * @brief Sets them to 0, and what the port's queues have counted.
 *
 * Frames that wait stay where they are.
 *
 * @param unit switch unit
 * @param port chip port
 * @return 0, ::VCHIP_E_UNIT, ::VCHIP_E_PORT, ::VCHIP_E_IMAGE
 */
SWCTL_API int32_t vchip_drops_clear(uint32_t unit, int32_t port);

SWCTL_END_DECLS

#endif
