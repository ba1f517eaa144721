// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include <cstring>

#include "subjects.h"

namespace vchip_test {
namespace {

constexpr chip_l2_ucast_entry kEntry = {10, {2, 0, 0, 0, 0, 1}, {0, 0}, 3, 0, 8, 0,
                                        0,  {0, 0, 0, 0},       0};
constexpr chip_l2_mcast_entry kGroup = {10, {1, 0, 0x5e, 0, 0, 1}, 6, 0, {0, 0, 0}};
constexpr chip_l2_flush_request kRequest = {0, 1, 20, 1, 1, 3, 0, 1};

// The entry and the group, for calls that need one. A call that is about to
// be refused changes nothing, and neither does this then.
void put(uint32_t unit, const Outputs &outputs) {
  if (outputs.null >= 0) return;
  rtk_l2_addr_add(unit, &kEntry);
  rtk_l2_mcastAddr_add(unit, &kGroup);
}

// Runs a call that writes a record, and says so in the outputs.
template <typename Record, typename Call>
int32_t with_record(Outputs &outputs, int index, Record record, Call call) {
  const Record before = record;
  const int32_t result = call(outputs.null == index ? nullptr : &record);
  if (memcmp(&before, &record, sizeof record) != 0) outputs.words[index] = 0;
  return result;
}

// Runs a scan from its start.
template <typename Record, typename Scan>
int32_t scan(uint32_t unit, Outputs &outputs, Record record, Scan call) {
  put(unit, outputs);
  return with_record(outputs, 0, int32_t{-1}, [&](int32_t *index) {
    return with_record(outputs, 1, record, [&](Record *entry) { return call(index, entry); });
  });
}

const uint8_t *mac_or_null(const uint8_t *mac, const Outputs &outputs) {
  return outputs.null == 0 ? nullptr : mac;
}

}  // namespace

const Subjects &l2_subjects() {
  static const Subjects all = {
      {"rtk_l2_nextValidAddr_get", false, 0, 2,
       [](auto u, auto, auto &o) {
         return scan(u, o, chip_l2_ucast_entry{}, [=](int32_t *index, chip_l2_ucast_entry *entry) {
           return rtk_l2_nextValidAddr_get(u, index, 1, entry);
         });
       }},
      {"rtk_l2_nextValidMcastAddr_get", false, 0, 2,
       [](auto u, auto, auto &o) {
         return scan(u, o, chip_l2_mcast_entry{}, [=](int32_t *index, chip_l2_mcast_entry *entry) {
           return rtk_l2_nextValidMcastAddr_get(u, index, entry);
         });
       }},
      {"rtk_l2_addr_add", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_l2_addr_add(u, o.null == 0 ? nullptr : &kEntry); }},
      {"rtk_l2_addr_get", false, 0, 1,
       [](auto u, auto, auto &o) {
         put(u, o);
         chip_l2_ucast_entry key = kEntry;
         key.port = -1;
         return with_record(o, 0, key, [=](auto *entry) { return rtk_l2_addr_get(u, entry); });
       }},
      {"rtk_l2_addr_del", false, 0, 1,
       [](auto u, auto, auto &o) {
         put(u, o);
         return rtk_l2_addr_del(u, 10, mac_or_null(kEntry.mac, o));
       }},
      {"rtk_l2_ucastAddr_flush", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_l2_ucastAddr_flush(u, o.null == 0 ? nullptr : &kRequest);
       }},
      {"rtk_l2_mcastAddr_add", false, 0, 1,
       [](auto u, auto, auto &o) {
         // A group that exists would be refused; every call brings a new one.
         static uint8_t number = 0;
         chip_l2_mcast_entry group = kGroup;
         group.mac[4] = ++number;
         return rtk_l2_mcastAddr_add(u, o.null == 0 ? nullptr : &group);
       }},
      {"rtk_l2_mcastAddr_get", false, 0, 1,
       [](auto u, auto, auto &o) {
         put(u, o);
         chip_l2_mcast_entry key = kGroup;
         key.portmask = 0;
         return with_record(o, 0, key, [=](auto *entry) { return rtk_l2_mcastAddr_get(u, entry); });
       }},
      {"rtk_l2_mcastAddr_del", false, 0, 1,
       [](auto u, auto, auto &o) {
         put(u, o);
         return rtk_l2_mcastAddr_del(u, 10, mac_or_null(kGroup.mac, o));
       }},
      {"rtk_l2_aging_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_l2_aging_set(u, 60); }},
      {"rtk_l2_aging_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_l2_aging_get(u, o.at(0)); }},
      {"rtk_l2_portLimitLearningCntEnable_set", true, VCHIP_E_CPU_PORT, 0,
       [](auto u, auto p, auto &) { return rtk_l2_portLimitLearningCntEnable_set(u, p, 1); }},
      {"rtk_l2_portLimitLearningCnt_set", true, VCHIP_E_CPU_PORT, 0,
       [](auto u, auto p, auto &) { return rtk_l2_portLimitLearningCnt_set(u, p, 8191); }},
      {"rtk_l2_portLimitLearningCnt_get", true, VCHIP_E_CPU_PORT, 1,
       [](auto u, auto p, auto &o) {
         return with_record(o, 0, int32_t{-1}, [=](int32_t *limit) {
           return rtk_l2_portLimitLearningCnt_get(u, p, limit);
         });
       }},
      {"rtk_l2_portLearningCnt_get", true, 0, 1,
       [](auto u, auto p, auto &o) { return rtk_l2_portLearningCnt_get(u, p, o.at(0)); }},
  };
  return all;
}

}  // namespace vchip_test
