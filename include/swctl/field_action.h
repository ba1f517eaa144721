/* SPDX-License-Identifier: MIT */
/**
 * @file field_action.h
 * @brief Actions, meters and counters of the field processor.
 *
 * Include field.h, which includes this.
 */
#ifndef SWCTL_FIELD_ACTION_H
#define SWCTL_FIELD_ACTION_H

#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/** No meter, where a function takes a meter. */
#define USER_FIELD_NO_METER 0xFFFFFFFFu
/** No burst slot, where a function takes a meter's present slot. */
#define USER_FIELD_NO_BURST_SLOT (-1)

/** The kind of count that is packets; any other kind is bytes. */
#define USER_FIELD_COUNT_PACKETS 0u

/**
 * @brief Adds an action to a rule.
 *
 * Reads the rule's action record of 43 words into a record of zeroes with
 * rtk_acl_ruleAction_get(unit, 0, rule, ...), sets the words of the action and
 * writes the record back with rtk_acl_ruleAction_set(unit, 0, rule, ...).
 * Actions are merged: words that the action does not name stay as read, so an
 * earlier action holds until a later one sets the same words.
 *
 * | action | words set, p0 and p1 being the parameters                          |
 * |--------|--------------------------------------------------------------------|
 * | 1      | w23 = 1, w24 = p0                                                  |
 * | 2      | w35 = 1, w36 = p0                                                  |
 * | 11     | w29 = 1, w30 = 0, w31 = p0                                         |
 * | 21     | w29 = 1, w30 = 2, w31 = p0                                         |
 * | 24     | w0 = 1, w1 = 2, w2 = 28; w5 = 1 if p0 has bit 0                    |
 * | 30     | w0 = 1, w1 = 4, w2 = p0; w6 = 1 if p1 has bit 0, w4 = 1 if bit 1   |
 * | 33     | w0 = 1; unless p0 is 0xFFFFFFFF also w1 = 5, w2 = p0 and w6 = 1 if |
 * |        | p1 has bit 0                                                       |
 * | 40     | w25 = 1                                                            |
 * | 41     | w25 = 2                                                            |
 * | 43     | w10 = 1, w11 = 0, w12 = p0                                         |
 * | 53     | w13 = 1, w14 = p1                                                  |
 * | 117    | w7 = 1, w8 = 1 if p0 is not 0, else 0, w9 = p1                     |
 * | 118    | w13 = 1, w14 = p0                                                  |
 * | 123    | w15 = 1, w16 = 0, w17 = 0, w18 = p0                                |
 * | 124    | w29 = 1, w30 = 0, w31 = p0                                         |
 * | 130    | w19 = 1, w20 = 0, w21 = 0, w22 = p0                                |
 * | 134    | w29 = 1, w30 = 1, w31 = p0                                         |
 * | 324    | w0 = 1, w1 = 6, w2 = p0                                            |
 * | others | none; the record is written back as read                           |
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param rule   rule index
 * @param action one of the above
 * @param param0 first parameter; read whatever the action
 * @param param1 second parameter; read whatever the action
 * @return the result of the read if it is not 0, else that of the write
 */
SWCTL_API int32_t user_field_action_add(uint32_t lead, uint32_t unit, int32_t rule, uint32_t action,
                                        const uint32_t *param0, const uint32_t *param1);

/**
 * @name Meters
 * These functions have no leading argument. A meter's record is {enable, rate,
 * burst slot}.
 * @{
 */

/**
 * @brief Sets a meter's rate as it is given, with burst slot 0.
 *
 * Calls rtk_acl_meterMode_set(unit, meter, 1), result ignored, then
 * rtk_acl_meterEntry_set(unit, meter, {1, rate, 0}).
 *
 * @param unit  switch unit
 * @param rate  the chip's rate word
 * @param meter meter; ::USER_FIELD_NO_METER is refused
 * @return the result of rtk_acl_meterEntry_set(); -1 without a call for
 *         ::USER_FIELD_NO_METER
 */
SWCTL_API int32_t user_field_meter_entry_set(uint32_t unit, uint32_t rate, uint32_t meter);

/**
 * @brief Sets a meter's rate, in sixteenths, and its burst slot.
 *
 * Calls rtk_acl_meterEntry_set(unit, meter, {1, rate / 16, slot}).
 *
 * @param unit  switch unit
 * @param meter meter
 * @param rate  divided by 16, rounding toward zero
 * @param slot  burst slot, an answer of user_field_meter_burst_size_set_del();
 *              its low 16 bits count, as a signed number
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_meter_rate_burst_set(uint32_t unit, uint32_t meter, int32_t rate,
                                                  int32_t slot);

/**
 * @brief Switches a meter off and forgets its rate and slot.
 *
 * Calls rtk_acl_meterEntry_set(unit, meter, {0, 0, 0}).
 *
 * @param unit  switch unit
 * @param meter meter
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_meter_entry_del(uint32_t unit, uint32_t meter);

/**
 * @brief Switches a meter on or off; rate and slot stay.
 *
 * Calls rtk_acl_meterEntry_get(unit, meter, ...), then
 * rtk_acl_meterEntry_set() with the record that was read and the new state.
 *
 * @param unit   switch unit
 * @param meter  meter
 * @param enable not 0: on
 * @return the result of the read if it is negative, else that of the write
 */
SWCTL_API int32_t user_field_meter_entry_enable(uint32_t unit, uint32_t meter, uint32_t enable);

/**
 * @brief Takes, shares, changes or gives back one of the two burst slots.
 *
 * All meters share two burst sizes. The library counts, for the process and
 * all its units together, how many meters use each slot; the counts are zero
 * at load. They are written without a lock.
 *
 * With a burst of 0 the slot is given back: its count goes down, and at 0 or
 * below the slot is free. A free slot's size in the chip becomes its default,
 * 512 for slot 0 and 61440 for slot 1.
 *
 * With another burst: a slot that already holds it is kept. Otherwise the
 * present slot is given up; the last slot that holds the burst is shared, else
 * the first free one takes it and the chip is told burst / 128, rounding
 * toward zero. If giving up has freed the present slot and it was not taken
 * again, its size in the chip becomes the default after that.
 *
 * The chip has both sizes in one record: each change of a size calls
 * rtk_acl_meterBurstSize_get(unit, 0, ...), then rtk_acl_meterBurstSize_set()
 * with the one size replaced. The results of these calls are ignored.
 *
 * @param unit    switch unit
 * @param burst   burst size in bytes; 0 gives the slot back
 * @param current slot that the meter has, ::USER_FIELD_NO_BURST_SLOT for none;
 *                its low 16 bits count, as a signed number
 * @return the slot, 0 or 1; 0 after giving back, even of a slot that does not
 *         exist; -1 if current is neither a slot nor none, or if both slots
 *         hold other bursts: the slots are then as before
 */
SWCTL_API int32_t user_field_meter_burst_size_set_del(uint32_t unit, int32_t burst,
                                                      int32_t current);

/** @} */

/**
 * @brief Clears a counter of packets or bytes.
 *
 * Calls rtk_acl_statPktCnt_clear(unit, counter) or
 * rtk_acl_statByteCnt_clear(unit, counter).
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param counter counter
 * @param kind    ::USER_FIELD_COUNT_PACKETS, or anything else for bytes
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_clear_statistics(uint32_t lead, uint32_t unit, uint32_t counter,
                                              uint32_t kind);

/**
 * @brief Reads a counter of packets or bytes.
 *
 * Calls rtk_acl_statPktCnt_get(unit, counter, count) or
 * rtk_acl_statByteCnt_get(unit, counter, count).
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param counter counter
 * @param kind    ::USER_FIELD_COUNT_PACKETS, or anything else for bytes
 * @param count   handed to the SDK, whose type it has: as a rule 64 bits as
 *                two 32-bit words, the high word first
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_get_statistics(uint32_t lead, uint32_t unit, uint32_t counter,
                                            uint32_t kind, void *count);

SWCTL_END_DECLS

#endif
