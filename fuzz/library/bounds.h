// SPDX-License-Identifier: MIT
// What a caller of the library must keep to. The library does not check it
// and need not, so the fuzzer keeps to it as well; everything else it tries.
// The targets take their arguments by this list.
//
// Beside the list:
// - No address is null: frame.h calls a null address the caller's error.
// - An address leads to one element of its type (a byte address is an
//   Ethernet address, an area without a type a unicast entry) unless the list
//   gives its bytes. They are in memory of exactly that size.
// - Addresses of functions and files are real ones.
// - A message to the kernel is one that MSG_CreateMessage() or
//   MSG_CreateUserToKernelMessage() made, and a thread's socket is taken only
//   while the table of sockets has a free place: kmsg.h says that the mutex
//   stays locked otherwise.
#ifndef SWCTL_FUZZ_LIBRARY_BOUNDS_H
#define SWCTL_FUZZ_LIBRARY_BOUNDS_H

#include <swctl/platform/port_records.h>
#include <swctl/swctl.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace swfuzz {

enum class Bounded {
  bytes_behind,  // an address: this many bytes
  words_around,  // an address: this many bytes, and one word in front
  file_behind,   // an address of no type: an open file
  at_most,       // a number
};

struct Bound {
  std::string_view function;
  size_t argument;  // from 0
  Bounded what;
  size_t number;
  std::string_view reason;
};

inline constexpr size_t kRecordOfDump = std::max(sizeof(user_l2_addr_t), sizeof(User_mcast_addr_t));

// clang-format off
inline constexpr Bound kBounds[] = {
    {"user_field_qualify_SrcIp6", 3, Bounded::bytes_behind, 16, "an IPv6 address"},
    {"user_field_qualify_SrcIp6", 4, Bounded::bytes_behind, 16, "a mask of an IPv6 address"},
    {"user_field_qualify_DstIp6", 3, Bounded::bytes_behind, 16, "an IPv6 address"},
    {"user_field_qualify_DstIp6", 4, Bounded::bytes_behind, 16, "a mask of an IPv6 address"},
    {"User_ip6_mcast_add", 1, Bounded::bytes_behind, 16, "an IPv6 address"},
    {"User_ip6_mcast_add", 2, Bounded::bytes_behind, 16, "an IPv6 address"},
    {"User_ip6_mcast_del", 1, Bounded::bytes_behind, 16, "an IPv6 address"},
    {"User_ip6_mcast_del", 2, Bounded::bytes_behind, 16, "an IPv6 address"},
    {"user_field_get_statistics", 4, Bounded::bytes_behind, 8, "a counter of two words"},
    {"user_stat_port_getAll", 3, Bounded::bytes_behind, sizeof(chip_port_counters_t), "the set of counters of a port"},
    {"user_rate_stormCountMode_get", 2, Bounded::bytes_behind, 1, "a byte, no Ethernet address"},
    {"user_qos_pri_queue_map_set", 0, Bounded::bytes_behind, 8, "a queue for each priority"},
    {"user_qos_schedule_set", 1, Bounded::bytes_behind, 4 * USER_QOS_QUEUES, "a weight for each queue"},
    {"user_qos_schedule_get", 1, Bounded::bytes_behind, 4 * USER_QOS_QUEUES, "a weight for each queue"},
    {"user_stg_vlan_each_time_list", 3, Bounded::bytes_behind, 2 * USER_STG_LIST_WORDS, "the list has that many words"},
    {"user_i2c_ioctl", 4, Bounded::bytes_behind, SWCTL_TMP_BUFFER_SIZE, "room for as many bytes as are asked for"},
    {"user_i2c_ioctl", 5, Bounded::at_most, SWCTL_TMP_BUFFER_SIZE, "the scratch buffer has no more, and nothing checks it"},
    {"user_l2_mactable_fread", 0, Bounded::bytes_behind, kRecordOfDump, "the record that the last argument chooses"},
    {"del_static_mac_by_port_callback", 2, Bounded::bytes_behind, 4, "a chip port"},
    {"del_static_mac_by_trunk_callback", 2, Bounded::bytes_behind, 4, "a trunk group"},
    {"del_static_mac_by_vlan_callback", 2, Bounded::bytes_behind, 2, "a VLAN id"},
    {"del_all__mac_bytype_callback", 2, Bounded::bytes_behind, 4, "a learn type"},
    {"test_fun3_callback", 2, Bounded::file_behind, 0, "the file that is written to"},
    {"test_fun4_callback", 2, Bounded::file_behind, 0, "the file that is written to"},
    {"user_is_mcast_addr_exist_vlan_is", 1, Bounded::words_around, 4 * 4096, "an element for every VLAN, and one in front for VLAN 0"},
    {"user_vlan_port_addEx", 2, Bounded::at_most, 64, "only for the time: calls for each VLAN of a range and each of 256 interfaces"},
    {"user_vlan_port_addEx", 3, Bounded::at_most, 64, "only for the time"},
    {"SetSockData", 0, Bounded::at_most, 4096, "a descriptor, of which a process has not many"},
    {"user_send_data_to_kernel", 2, Bounded::at_most, SWCTL_KMSG_MAX_DATA, "a request has room for no more, and nothing checks it"},
};
// clang-format on

// A reply of the kernel is believed to have the length that it says. An answer
// is a word, and the buffer for replies has room for this many bytes of payload.
inline constexpr size_t kShortestReply = 4;
inline constexpr size_t kLongestReply = 16400 - 16 - sizeof(KernelMsgHeader);

constexpr const Bound *bound_of(std::string_view function, size_t argument) {
  for (const Bound &bound : kBounds)
    if (bound.function == function && bound.argument == argument) return &bound;
  return nullptr;
}

}  // namespace swfuzz

#endif
