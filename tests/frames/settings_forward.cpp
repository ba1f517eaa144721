// SPDX-License-Identifier: MIT
// Addresses, groups, learning and flooding.
#include "settings.h"

namespace frames::forward_setting {
namespace {

constexpr uint32_t kTo6 = mask({6});
constexpr uint8_t kStation5[6] = {2, 0, 0, 0, 0, 5};
constexpr uint8_t kGroup[6] = {1, 0, 0, 0, 0, 9};
constexpr uint64_t kGroupAddress = 0x010000000009;
constexpr uint64_t kIp4Address = 0x01005e010203;
constexpr uint64_t kIp6Address = 0x333300000009;
constexpr uint32_t kIp4Group = 0xe0010203;
constexpr chip_ip6_address kIp6Group = {{0xff, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9}};
constexpr chip_ip6_address kAnySource = {};

constexpr chip_l2_ucast_entry static_entry() {
  chip_l2_ucast_entry entry = {};
  entry.vid = 1;
  for (size_t at = 0; at < 6; ++at) entry.mac[at] = kStation5[at];
  entry.port = 6;
  entry.flags = 8;
  return entry;
}
constexpr chip_l2_ucast_entry kEntry = static_entry();

constexpr chip_l2_mcast_entry group_entry() {
  chip_l2_mcast_entry entry = {};
  entry.vid = 1;
  for (size_t at = 0; at < 6; ++at) entry.mac[at] = kGroup[at];
  entry.portmask = mask({6});
  return entry;
}
constexpr chip_l2_mcast_entry kGroupEntry = group_entry();

constexpr chip_ip_mcast_entry ip_entry(uint32_t ports) {
  chip_ip_mcast_entry entry = {};
  entry.vid = 1;
  entry.address_b = kIp4Group;
  entry.ports = ports;
  return entry;
}
constexpr chip_ip_mcast_entry kIpEntry = ip_entry(mask({6}));
constexpr chip_ip_mcast_entry kOtherIpEntry = ip_entry(mask({7}));

constexpr chip_ip6_mcast_entry ip6_entry() {
  chip_ip6_mcast_entry entry = {};
  entry.vid = 1;
  entry.address_b = kIp6Group;
  entry.ports = mask({6});
  return entry;
}
constexpr chip_ip6_mcast_entry kIp6Entry = ip6_entry();

constexpr chip_l2_flush_request kFlushAll = {};

void group() {
  done(rtk_l2_mcastAddr_add(0, &kGroupEntry));
}
void to_group() {
  send(1, plain(kGroupAddress, station(1)));
}
void by_address() {
  done(rtk_l2_ipmcMode_set(0, 1));
}
void ip_group() {
  done(rtk_l2_ipMcastAddr_add(0, &kIpEntry));
}
void ip_group_by_address() {
  by_address();
  ip_group();
}
void to_ip_group() {
  send(1, Maker(kIp4Address, station(1))
              .type(0x0800)
              .ip4(17, 0x0a000001, kIp4Group, 20)
              .fill(60)
              .bytes());
}
void by_address6() {
  done(rtk_l2_ip6mcMode_set(0, 1));
}
void ip6_group() {
  done(rtk_l2_ip6McastAddr_add(0, &kIp6Entry));
}
void ip6_group_by_address() {
  by_address6();
  ip6_group();
}
void to_ip6_group() {
  Maker maker(kIp6Address, station(1));
  maker.type(0x86dd).word(0x60000000).half(8).byte(17).byte(64);
  for (uint32_t at = 0; at < 16; ++at) maker.byte(at == 15 ? 1 : 0xfe);
  for (const uint8_t byte : kIp6Group.bytes) maker.byte(byte);
  send(1, maker.fill(62).bytes());
}

void learn_then_send() {
  from_station();
  to_station();
}
void wait_then_send() {
  Switch::advance(2 * kSecond);
  to_station();
}
void no_room() {
  done(rtk_l2_portLimitLearningCnt_set(0, 5, 0));
}
void limited() {
  done(rtk_l2_portLimitLearningCntEnable_set(0, 5, 1));
}
void zero_source() {
  send(5, plain(kBroadcast, 0));
  Switch::left();
  send(1, plain(0, station(1)));
}
void second_mask() {
  done(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, 2, 1, &kTo6));
  done(rtk_l2_lookupMissFloodPortMaskIdx_set(0, 2, 0));
}

}  // namespace

std::vector<Setting> all() {
  return {
      SWCTL_SETTING(rtk_l2_addr_add, (0, &kEntry), nullptr, to_station),
      SWCTL_SETTING(rtk_l2_addr_del, (0, 1, kStation5), from_station, to_station),
      SWCTL_SETTING(rtk_l2_ucastAddr_flush, (0, &kFlushAll), from_station, to_station),
      SWCTL_SETTING(rtk_l2_aging_set, (0, 1), from_station, wait_then_send),
      SWCTL_SETTING(rtk_l2_portLimitLearningCntEnable_set, (0, 5, 1), no_room, learn_then_send),
      SWCTL_SETTING(rtk_l2_portLimitLearningCnt_set, (0, 5, 0), limited, learn_then_send),
      SWCTL_SETTING(rtk_l2_newMacOp_set, (0, 5, 2, 0), nullptr, learn_then_send),
      SWCTL_SETTING(rtk_l2_zeroSALearningEnable_set, (0, 0), nullptr, zero_source),
      SWCTL_SETTING(rtk_l2_mcastAddr_add, (0, &kGroupEntry), nullptr, to_group),
      SWCTL_SETTING(rtk_l2_mcastAddr_del, (0, 1, kGroup), group, to_group),
      SWCTL_SETTING(rtk_l2_ipMcastAddr_add, (0, &kIpEntry), by_address, to_ip_group),
      SWCTL_SETTING(rtk_l2_ipMcastAddr_set, (0, &kOtherIpEntry), ip_group_by_address, to_ip_group),
      SWCTL_SETTING(rtk_l2_ipMcastAddr_del, (0, 0, kIp4Group, 1), ip_group_by_address, to_ip_group),
      SWCTL_SETTING(rtk_l2_ipmcMode_set, (0, 1), ip_group, to_ip_group),
      SWCTL_SETTING(rtk_l2_ip6McastAddr_add, (0, &kIp6Entry), by_address6, to_ip6_group),
      SWCTL_SETTING(rtk_l2_ip6McastAddr_del, (0, kAnySource, kIp6Group, 1), ip6_group_by_address,
                    to_ip6_group),
      SWCTL_SETTING(rtk_l2_ip6mcMode_set, (0, 1), ip6_group, to_ip6_group),
      SWCTL_SETTING(rtk_l2_portLookupMissAction_set, (0, 1, 0, 1), nullptr, to_ip_group),
      SWCTL_SETTING(rtk_l2_lookupMissFloodPortMask_set_with_idx, (0, 2, 0, &kTo6), nullptr,
                    to_station),
      SWCTL_SETTING(rtk_l2_lookupMissFloodPortMaskIdx_set, (0, 2, 1), second_mask, to_station),
  };
}

}  // namespace frames::forward_setting
