/* SPDX-License-Identifier: MIT */
/**
 * @file stp.h
 * @brief Spanning tree and protocol frame trapping.
 *
 * The rules in frame.h apply.
 */
#ifndef SWCTL_STP_H
#define SWCTL_STP_H

/* For user_l2_voice_vlan_traverse(), which belongs to this family as well. */
#include <swctl/l2_walk.h>
#include <swctl/types.h>

SWCTL_BEGIN_DECLS

/**
 * @name Fixed result 0
 * Each ignores its arguments, calls nothing, writes nothing and returns 0. The
 * sentence says what the call is for on a device that offers it.
 * @{
 */
/** Destroys every spanning-tree group but the default one. */
SWCTL_API int32_t user_stg_clear(uint32_t lead, ...);
/** The group that new VLANs belong to. */
SWCTL_API int32_t user_stg_default_get(uint32_t lead, ...);
/** Sets the group that new VLANs belong to. */
SWCTL_API int32_t user_stg_default_set(uint32_t lead, ...);
/** Removes every VLAN from a group. */
SWCTL_API int32_t user_stg_vlan_remove_all(uint32_t lead, ...);
/** Makes a group and chooses its number. */
SWCTL_API int32_t user_stg_create(uint32_t lead, ...);
/** The number of groups that the chip can hold. */
SWCTL_API int32_t user_stg_max_support_count_get(uint32_t lead, ...);
/** The number of VLANs in a group. */
SWCTL_API int32_t user_stg_vlan_count_get(uint32_t lead, ...);
/** Lists some of the groups at a time. */
SWCTL_API int32_t user_stg_each_time_list(uint32_t lead, ...);
/** Frees a list of a group's VLANs. */
SWCTL_API int32_t user_stg_vlan_list_destroy(uint32_t lead, ...);
/** Frees a list of groups. */
SWCTL_API int32_t user_stg_list_destroy(uint32_t lead, ...);
/** The number of addresses of protocol frames. */
SWCTL_API int32_t user_l2_bpdu_count(uint32_t lead, ...);
/** Sets whether protocol frames pass a port. */
SWCTL_API int32_t user_l2_bpdu_through_set(uint32_t lead, ...);
/** Whether protocol frames pass a port. */
SWCTL_API int32_t user_l2_bpdu_through_get(uint32_t lead, ...);
/** @} */

/**
 * @name Port states
 * Of a port in a spanning-tree group (IEEE 802.1D-1998, 8.4). The chip has one
 * state for listening and learning; ::stateflag says which was set last.
 * @{
 */
#define USER_STP_DISABLED 0u
#define USER_STP_BLOCKING 1u
#define USER_STP_LISTENING 2u
#define USER_STP_LEARNING 3u
#define USER_STP_FORWARDING 4u
/** @} */

/** 16-bit words of the list of user_stg_vlan_each_time_list(). */
#define USER_STG_LIST_WORDS 1024

/**
 * @brief Makes a spanning-tree group: an instance of the chip.
 *
 * Passes through to rtk_stp_mstpInstance_create(unit, stg).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param stg  instance number; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_stg_create_id(uint32_t lead, uint32_t unit, uint32_t stg);

/**
 * @brief Destroys a spanning-tree group.
 *
 * Passes through to rtk_stp_mstpInstance_destroy(unit, stg).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param stg  instance number; not checked
 * @return the SDK's result
 */
SWCTL_API int32_t user_stg_destroy(uint32_t lead, uint32_t unit, uint32_t stg);

/**
 * @brief Moves a VLAN to a spanning-tree group.
 *
 * Calls rtk_vlan_stg_set(unit, vid, stg).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param stg  instance number; not checked
 * @param vid  VLAN ID; the low 16 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t user_stg_vlan_add(uint32_t lead, uint32_t unit, uint32_t stg, uint32_t vid);

/**
 * @brief Moves a VLAN back to group 0, whatever group it is in.
 *
 * Calls rtk_vlan_stg_set(unit, vid, 0).
 *
 * @param lead ignored
 * @param unit switch unit
 * @param stg  ignored
 * @param vid  VLAN ID; the low 16 bits count
 * @return the SDK's result
 */
SWCTL_API int32_t user_stg_vlan_remove(uint32_t lead, uint32_t unit, uint32_t stg, uint32_t vid);

/**
 * @brief Sets the state of a port in a spanning-tree group.
 *
 * Calls rtk_stp_mstpState_set(unit, stg, port, code) with code 0 for disabled,
 * 1 for blocking, 2 for listening and learning, 3 for forwarding. For
 * listening and learning, the state is stored in ::stateflag before the call,
 * and stays there if the call fails.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param stg   instance number; not checked
 * @param port  chip port
 * @param state one of USER_STP_*; any other value disables the port
 * @return the SDK's result
 */
SWCTL_API int32_t user_stg_stp_set(uint32_t lead, uint32_t unit, uint32_t stg, int32_t port,
                                   uint32_t state);

/**
 * @brief Reads the state of a port in a spanning-tree group.
 *
 * Calls rtk_stp_mstpState_get(unit, stg, port, ...). The chip's learning state
 * reads as ::stateflag, the one of the two states that was last set on any
 * port of any group, or as ::USER_STP_LISTENING while ::stateflag is 0.
 *
 * @param lead  ignored
 * @param unit  switch unit
 * @param stg   instance number; not checked
 * @param port  chip port
 * @param state receives one of USER_STP_*; written whatever the result is, and
 *              ::USER_STP_DISABLED if the SDK wrote nothing; unchanged if the
 *              SDK wrote a code that is none of the four
 * @return the SDK's result
 */
SWCTL_API int32_t user_stg_stp_get(uint32_t lead, uint32_t unit, uint32_t stg, int32_t port,
                                   uint32_t *state);

/**
 * @brief Reads whether a spanning-tree group exists.
 *
 * Passes through to rtk_stp_isMstpInstanceExist_get(unit, stg, exists).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param stg    instance number; not checked
 * @param exists passed to the SDK; receives non-zero if it exists
 * @return the SDK's result
 */
SWCTL_API int32_t user_stp_isMstpInstanceExist_get(uint32_t lead, uint32_t unit, uint32_t stg,
                                                   uint32_t *exists);

/**
 * @brief Counts the spanning-tree groups of unit 0.
 *
 * Calls rtk_stp_isMstpInstanceExist_get(0, instance, ...) for the instances 0
 * to 15, on unit 0. The results are ignored; a call that writes nothing counts
 * like the one before it, and the first one as "no".
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param count receives the number; unchanged if there is no group
 * @return 0; -1 if there is no group
 */
SWCTL_API int32_t user_stg_stg_count_get(uint32_t lead, uint32_t unit, uint32_t *count);

/**
 * @brief Copies a list that the process left in ::g_tmpBuffer.
 *
 * Copies the whole buffer to the start of the list and fills the rest with
 * zeros. Makes no SDK call.
 *
 * @param lead ignored
 * @param unit ignored
 * @param stg  ignored
 * @param list receives ::USER_STG_LIST_WORDS words
 * @return 0, always
 */
SWCTL_API int32_t user_stg_vlan_each_time_list(uint32_t lead, uint32_t unit, uint32_t stg,
                                               uint16_t *list);

/**
 * @brief Says that the VLANs of a group cannot be listed.
 *
 * Prints "user_stg_vlan_list 649: Can not get vlan list int STG in kenerl
 * mode" with a line end to standard error. Makes no SDK call.
 *
 * @param lead ignored, as is every further argument
 * @return 0, always
 */
SWCTL_API int32_t user_stg_vlan_list(uint32_t lead, ...);

/**
 * @brief Says that the groups cannot be listed.
 *
 * Prints "user_stg_list 677: Can not get STG list in kenerl mode" with a line
 * end to standard error. Makes no SDK call.
 *
 * @param lead ignored, as is every further argument
 * @return 0, always
 */
SWCTL_API int32_t user_stg_list(uint32_t lead, ...);

/**
 * @brief Traps IGMP frames (RFC 3376) to the CPU, or forwards them.
 *
 * Calls rtk_trap_mgmtFrameAction_set(unit, 5, action) with 2 (trap) or 0
 * (forward).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: trap to the CPU; 0: forward
 * @return the SDK's result
 */
SWCTL_API int32_t user_igmp_trap_to_cpu(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Traps MLD frames (RFC 3810) to the CPU, or forwards them.
 *
 * Calls rtk_trap_mgmtFrameAction_set(unit, 4, action) with 2 (trap) or 0
 * (forward).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: trap to the CPU; 0: forward
 * @return the SDK's result
 */
SWCTL_API int32_t user_mld_trap_to_cpu(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Traps frames to the switch's own MAC address to the CPU, or forwards
 *        them.
 *
 * Calls rtk_trap_mgmtFrameAction_set(unit, 24, action) with 2 (trap) or 0
 * (forward).
 *
 * @param lead   ignored
 * @param unit   switch unit
 * @param enable non-zero: trap to the CPU; 0: forward
 * @return the SDK's result
 */
SWCTL_API int32_t user_selfmac_trap_to_cpu(uint32_t lead, uint32_t unit, uint32_t enable);

/**
 * @brief Makes every front port forward BPDUs.
 *
 * Calls rtk_trap_portMgmtFrameAction_set(unit, port, 19, 0) for the ports of
 * the logical interfaces 1 to ::USER_FRONT_INTERFACES, ignoring the results.
 *
 * @param lead ignored
 * @param unit switch unit
 * @return 0, always
 */
SWCTL_API int32_t user_stg_init(uint32_t lead, uint32_t unit);

/**
 * @brief Makes every front port forward BPDUs, or trap them to the CPU.
 *
 * Calls rtk_trap_portMgmtFrameAction_set(unit, port, 19, action) with 0
 * (forward) or 2 (trap) for the ports of the logical interfaces 1 to
 * ::USER_FRONT_INTERFACES. A port that fails does not stop it. Unlike in the
 * functions above, 0 means trap here.
 *
 * @param lead    ignored
 * @param unit    switch unit
 * @param forward non-zero: forward; 0: trap to the CPU
 * @return the SDK's result for the last port
 */
SWCTL_API int32_t user_stg_set_bpdu_forward(uint32_t lead, uint32_t unit, uint32_t forward);

/**
 * @brief Makes every front port forward LLDP frames (IEEE 802.1AB).
 *
 * Calls rtk_trap_portMgmtFrameAction_set(unit, port, 21, 0) for the ports of
 * the logical interfaces 1 to ::USER_FRONT_INTERFACES. A port that fails does
 * not stop it.
 *
 * @param lead ignored
 * @param unit switch unit
 * @return the SDK's result for the last port
 */
SWCTL_API int32_t user_lldp_init(uint32_t lead, uint32_t unit);

/**
 * @brief Makes one or every front port forward LLDP frames (IEEE 802.1AB), or
 *        trap them to the CPU.
 *
 * Calls rtk_trap_portMgmtFrameAction_set(unit, port, 21, action) with 0
 * (forward) or 2 (trap): once for the port of an interface, or, for interface
 * 0, for the ports of the logical interfaces 1 to ::USER_FRONT_INTERFACES. A
 * port that fails does not stop it.
 *
 * @param lead      ignored
 * @param unit      switch unit
 * @param forward   non-zero: forward; 0: trap to the CPU
 * @param interface logical interface; 0 for every front port
 * @return the SDK's result, for the last port if there are several
 */
SWCTL_API int32_t user_lldp_set_bpdu_forward(uint32_t lead, uint32_t unit, uint32_t forward,
                                             int32_t interface);

/**
 * @brief Accepts an address of protocol frames, and does nothing with it.
 *
 * Reads the six bytes. Makes no SDK call.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index ignored
 * @param mac   six bytes
 * @return 0, always
 */
SWCTL_API int32_t user_l2_bpdu_set(uint32_t lead, uint32_t unit, uint32_t index,
                                   const uint8_t *mac);

/**
 * @brief Copies an address that the process left in ::g_tmpBuffer.
 *
 * Copies the first six bytes of the buffer. Makes no SDK call.
 *
 * @param lead  ignored
 * @param unit  ignored
 * @param index ignored
 * @param mac   receives six bytes
 * @return 0, always
 */
SWCTL_API int32_t user_l2_bpdu_get(uint32_t lead, uint32_t unit, uint32_t index, uint8_t *mac);

SWCTL_END_DECLS

#endif
