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

/** No meter. */
#define USER_FIELD_NO_METER 0xFFFFFFFFu
/** No burst slot, for a meter that has none. */
#define USER_FIELD_NO_BURST_SLOT (-1)

/** The kind that counts packets; any other kind counts bytes. */
#define USER_FIELD_COUNT_PACKETS 0u

/**
 * @brief Adds an action to a rule.
 *
 * Reads the rule's action record of 43 words into a record of zeros with
 * rtk_acl_ruleAction_get(unit, 0, rule, ...), sets the words of the action,
 * and writes the record back with rtk_acl_ruleAction_set(unit, 0, rule, ...).
 * Actions are merged: words that the action does not set stay as they were
 * read, so an earlier action stays until a later one sets the same words.
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
 * @param action action number, see above
 * @param param0 first parameter; read for every action
 * @param param1 second parameter; read for every action
 * @return the result of the read if it is not 0, else that of the write
 */
SWCTL_API int32_t user_field_action_add(uint32_t lead, uint32_t unit, int32_t rule, uint32_t action,
                                        const uint32_t *param0, const uint32_t *param1);

/**
 * @name Meters
 * These functions have no leading argument. The record of a meter is {enable,
 * rate, burst slot}, three unsigned words.
 * @{
 */

/**
 * @brief Sets a meter's rate in the chip's unit, with burst slot 0.
 *
 * Calls rtk_acl_meterMode_set(unit, meter, 1), ignoring its result, then
 * rtk_acl_meterEntry_set(unit, meter, {1, rate, 0}).
 *
 * @param unit  switch unit
 * @param rate  rate, passed on unchanged
 * @param meter meter; ::USER_FIELD_NO_METER is refused
 * @return the result of rtk_acl_meterEntry_set(); -1 without a call for
 *         ::USER_FIELD_NO_METER
 */
SWCTL_API int32_t user_field_meter_entry_set(uint32_t unit, uint32_t rate, uint32_t meter);

/**
 * @brief Sets a meter's rate, in sixteenths of the chip's unit, and its burst
 *        slot.
 *
 * Calls rtk_acl_meterEntry_set(unit, meter, {1, rate / 16, slot}).
 *
 * @param unit  switch unit
 * @param meter meter
 * @param rate  divided by 16, rounding toward 0. A negative rate is not
 *              refused: the chip gets the quotient as an unsigned word,
 *              0xFFFFFFFF for -20.
 * @param slot  burst slot, a result of user_field_meter_burst_size_set_del().
 *              Only the low 16 bits count, as a signed number; a negative one
 *              is not refused.
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_meter_rate_burst_set(uint32_t unit, uint32_t meter, int32_t rate,
                                                  int32_t slot);

/**
 * @brief Disables a meter and clears its rate and slot.
 *
 * Calls rtk_acl_meterEntry_set(unit, meter, {0, 0, 0}).
 *
 * @param unit  switch unit
 * @param meter meter
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_meter_entry_del(uint32_t unit, uint32_t meter);

/**
 * @brief Enables or disables a meter; rate and slot stay.
 *
 * Calls rtk_acl_meterEntry_get(unit, meter, ...), then
 * rtk_acl_meterEntry_set() with the record that was read and the new state.
 *
 * @param unit   switch unit
 * @param meter  meter
 * @param enable non-zero: enable
 * @return the result of the read if it is negative, else that of the write
 */
SWCTL_API int32_t user_field_meter_entry_enable(uint32_t unit, uint32_t meter, uint32_t enable);

/**
 * @brief Takes, shares, changes or releases one of the two burst slots.
 *
 * All meters share two burst sizes. The library counts how many meters use
 * each slot. There is one pair of counts for the process and all its units,
 * zero at load, and changed without a lock.
 *
 * A burst of 0 releases the slot: its count goes down by 1, and the slot is
 * free if the count is then 0 or less. The size of a free slot in the chip
 * becomes its default, 512 for slot 0 and 61440 for slot 1. These defaults are
 * in the chip's unit.
 *
 * Any other burst: if the present slot holds it already, nothing changes.
 * Otherwise the present slot is released. The last slot that holds the burst
 * is then shared; if there is none, the first free slot takes it, and the chip
 * gets burst / 128, rounding toward 0. If the present slot has become free and
 * was not taken again, its size in the chip then becomes its default.
 *
 * The chip has both sizes in one record. Each change of a size calls
 * rtk_acl_meterBurstSize_get(unit, 0, ...), then rtk_acl_meterBurstSize_set()
 * with the one size replaced, ignoring the results.
 *
 * @param unit    switch unit
 * @param burst   burst size in 128ths of the chip's unit; 0 releases the slot.
 *                That the unit is bytes is this project's reading. A negative
 *                burst is not refused: it takes a slot like any other, and the
 *                chip gets the quotient as an unsigned word, 0xFFFFFFFE for
 *                -256. Bursts from -127 to 127 give the chip 0.
 * @param current slot of the meter, or ::USER_FIELD_NO_BURST_SLOT; the low 16
 *                bits count, as a signed number
 * @return the slot, 0 or 1; 0 after a release, even of a slot that does not
 *         exist; -1 if `current` is neither a slot nor
 *         ::USER_FIELD_NO_BURST_SLOT, or if both slots hold other bursts, in
 *         which case the slots are as before
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
 * @param count   passed to the SDK, which defines its type: usually, and in the
 *                virtual chip, a ::user_counter_t, which receives the number
 * @return the SDK's result
 */
SWCTL_API int32_t user_field_get_statistics(uint32_t lead, uint32_t unit, uint32_t counter,
                                            uint32_t kind, void *count);

SWCTL_END_DECLS

#endif
