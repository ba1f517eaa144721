// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>

#include "subjects.h"

namespace vchip_test {
namespace {

// The address of a record, or null where that is asked for.
template <typename Record>
Record *unless_null(Record &record, const Outputs &outputs, int index = 0) {
  return outputs.null == index ? nullptr : &record;
}

const Subjects &rule_subjects() {
  static const uint32_t codes[CHIP_ACL_TEMPLATE_FIELDS] = {1, 2};
  static const uint8_t bytes[] = {0x88, 0xCC};
  static const chip_acl_operation join = {{0, 1, 0}};
  static const chip_acl_range range = {7, 9};
  static chip_acl_action action;
  static const Subjects all = {
      {"rtk_acl_template_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_acl_template_set(u, 5, o.null == 0 ? nullptr : codes);
       }},
      {"rtk_acl_templateSelector_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_acl_templateSelector_set(u, 11, 4, 3, 0); }},
      {"rtk_acl_ruleEntryField_write", false, 0, 2,
       [](auto u, auto, auto &o) {
         return rtk_acl_ruleEntryField_write(u, 0, 7, CHIP_ACL_FIELD_ETHER_TYPE,
                                             o.null == 0 ? nullptr : bytes,
                                             o.null == 1 ? nullptr : bytes);
       }},
      {"rtk_acl_ruleOperation_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_acl_ruleOperation_set(u, 0, 6, unless_null(join, o));
       }},
      {"rtk_acl_ruleValidate_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_acl_ruleValidate_set(u, 0, 7, 1); }},
      {"rtk_acl_rule_del", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_acl_rule_del(u, 0, unless_null(range, o)); }},
      {"rtk_acl_ruleAction_get", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_acl_ruleAction_get(u, 0, 7, unless_null(action, o));
       }},
      {"rtk_acl_ruleAction_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_acl_ruleAction_set(u, 0, 7, unless_null(action, o));
       }},
      {"rtk_acl_lookupMissAct_set", true, 0, 0,
       [](auto u, auto p, auto &) {
         return rtk_acl_lookupMissAct_set(u, static_cast<uint32_t>(p), 1);
       }},
  };
  return all;
}

const Subjects &meter_subjects() {
  static chip_acl_meter entry = {1, 100, 1};
  static chip_acl_burst burst = {{512, 61440}};
  static const Subjects all = {
      {"rtk_acl_meterMode_set", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_acl_meterMode_set(u, 255, 1); }},
      {"rtk_acl_meterEntry_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_acl_meterEntry_get(u, 255, unless_null(entry, o)); }},
      {"rtk_acl_meterEntry_set", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_acl_meterEntry_set(u, 255, unless_null(entry, o)); }},
      {"rtk_acl_meterBurstSize_get", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_acl_meterBurstSize_get(u, 0, unless_null(burst, o));
       }},
      {"rtk_acl_meterBurstSize_set", false, 0, 1,
       [](auto u, auto, auto &o) {
         return rtk_acl_meterBurstSize_set(u, 0, unless_null(burst, o));
       }},
      {"rtk_acl_statPktCnt_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_acl_statPktCnt_get(u, 3, o.at(0)); }},
      {"rtk_acl_statPktCnt_clear", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_acl_statPktCnt_clear(u, 3); }},
      {"rtk_acl_statByteCnt_get", false, 0, 1,
       [](auto u, auto, auto &o) { return rtk_acl_statByteCnt_get(u, 3, o.at(0)); }},
      {"rtk_acl_statByteCnt_clear", false, 0, 0,
       [](auto u, auto, auto &) { return rtk_acl_statByteCnt_clear(u, 3); }},
  };
  return all;
}

}  // namespace

const Subjects &acl_subjects() {
  static const Subjects all = [] {
    Subjects joined = rule_subjects();
    joined.insert(joined.end(), meter_subjects().begin(), meter_subjects().end());
    return joined;
  }();
  return all;
}

}  // namespace vchip_test
