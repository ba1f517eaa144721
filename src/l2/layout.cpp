// SPDX-License-Identifier: MIT
// The records lie in memory as callers, the SDK and dump files have them.
#include <swctl/l2.h>
#include <swctl/mcast_l2.h>

#define AT(record, member, offset) static_assert(offsetof(record, member) == (offset))

static_assert(sizeof(chip_l2_ucast_entry) == 52);
AT(chip_l2_ucast_entry, vid, 0);
AT(chip_l2_ucast_entry, mac, 4);
AT(chip_l2_ucast_entry, padding, 10);
AT(chip_l2_ucast_entry, port, 12);
AT(chip_l2_ucast_entry, trunk, 16);
AT(chip_l2_ucast_entry, flags, 20);
AT(chip_l2_ucast_entry, state, 24);
AT(chip_l2_ucast_entry, aux, 28);
AT(chip_l2_ucast_entry, rest, 32);
AT(chip_l2_ucast_entry, extra, 48);

static_assert(sizeof(chip_l2_mcast_entry) == 28);
AT(chip_l2_mcast_entry, vid, 0);
AT(chip_l2_mcast_entry, mac, 2);
AT(chip_l2_mcast_entry, portmask, 8);
AT(chip_l2_mcast_entry, fwdIndex, 12);
AT(chip_l2_mcast_entry, rest, 16);

static_assert(sizeof(chip_l2_flush_request) == 32);
AT(chip_l2_flush_request, reserved, 0);
AT(chip_l2_flush_request, byVlan, 4);
AT(chip_l2_flush_request, vid, 8);
AT(chip_l2_flush_request, byInterface, 12);
AT(chip_l2_flush_request, interfaceIsPort, 16);
AT(chip_l2_flush_request, portOrTrunk, 20);
AT(chip_l2_flush_request, reserved2, 24);
AT(chip_l2_flush_request, includeStatic, 28);

static_assert(sizeof(user_l2_addr_t) == 88);
AT(user_l2_addr_t, flags, 0);
AT(user_l2_addr_t, mac, 4);
AT(user_l2_addr_t, vid, 10);
AT(user_l2_addr_t, port, 12);
AT(user_l2_addr_t, reserved1, 16);
AT(user_l2_addr_t, tgid, 20);
AT(user_l2_addr_t, reserved2, 24);
AT(user_l2_addr_t, aux, 32);
AT(user_l2_addr_t, pbmp, 36);
AT(user_l2_addr_t, reserved3, 68);
AT(user_l2_addr_t, extra, 84);

static_assert(sizeof(user_l2_learn_limit_t) == 24);
AT(user_l2_learn_limit_t, port, 8);
AT(user_l2_learn_limit_t, limit, 20);

static_assert(sizeof(User_mcast_addr_t) == 88);
AT(User_mcast_addr_t, mac, 0);
AT(User_mcast_addr_t, vid, 6);
AT(User_mcast_addr_t, reserved1, 8);
AT(User_mcast_addr_t, pbmp, 12);
AT(User_mcast_addr_t, reserved2, 44);
