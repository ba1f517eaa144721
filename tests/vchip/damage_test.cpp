// SPDX-License-Identifier: MIT
// Words of an image that lead somewhere else: an image in which one leads to
// what is not there is refused.
#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>
#include <swctl/platform/adapter.h>
#include <swctl/platform/sdk.h>

#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "child.h"

namespace {

using vchip_test::read_file;
using vchip_test::run;
using vchip_test::write_file;

constexpr uint32_t kUnit = 1;
constexpr int32_t kPort = 9;
constexpr uint32_t kVlan = 77;
constexpr uint32_t kEveryPort = 0x1fffffff;
constexpr uint32_t kNoPort = 0x20000000;
constexpr uint8_t kGroupMac[] = {1, 0, 0x5e, 0, 0, 7};

// A setting that ends up in one word. It is given `value`, which differs from
// what is there after power-on; the word may be `last` and must not be `bad`.
struct Word {
  const char *name;
  int32_t (*set)(uint32_t value);
  uint32_t value, last, bad;
  size_t bytes = sizeof(uint32_t);
};

void PrintTo(const Word &word, std::ostream *out) {
  *out << word.name;
}

int32_t set_vlan(uint32_t member, uint32_t untagged) {
  const int32_t made = rtk_vlan_create(kUnit, kVlan);
  return made != 0 ? made : rtk_vlan_port_set(kUnit, kVlan, &member, &untagged);
}

int32_t set_instance(uint32_t instance) {
  if (rtk_vlan_create(kUnit, kVlan) != 0) return 1;
  if (rtk_stp_mstpInstance_create(kUnit, instance) != 0) return 1;
  return rtk_vlan_stg_set(kUnit, kVlan, instance);
}

int32_t set_conversion(uint32_t vid, uint32_t port, uint32_t new_vid) {
  chip_vlan_egress_entry entry = {};
  entry.valid = 1;
  entry.vid = vid;
  entry.port = port;
  entry.new_vid = new_vid;
  return rtk_vlan_egrVlanCnvtEntry_set(kUnit, 3, &entry);
}

int32_t set_address(uint32_t vid, int32_t port, int32_t trunk) {
  chip_l2_ucast_entry entry = {};
  entry.vid = vid;
  entry.mac[0] = 2;
  entry.port = port;
  entry.trunk = trunk;
  entry.flags = 0x08;  // static
  return rtk_l2_addr_add(kUnit, &entry);
}

int32_t set_group(uint32_t vid, uint32_t mask, uint32_t ports) {
  chip_l2_mcast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  memcpy(entry.mac, kGroupMac, sizeof kGroupMac);
  entry.portmask = ports;
  entry.fwdIndex = mask;
  return rtk_l2_mcastAddr_add(kUnit, &entry);
}

int32_t set_ip_group(uint32_t vid, uint32_t ports) {
  chip_ip_mcast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  entry.address_b = 0xe0010203;
  entry.ports = ports;
  return rtk_l2_ipMcastAddr_add(kUnit, &entry);
}

int32_t set_ip6_group(uint32_t vid, uint32_t ports) {
  chip_ip6_mcast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  memset(&entry.address_b, 0xff, sizeof entry.address_b);
  entry.ports = ports;
  return rtk_l2_ip6McastAddr_add(kUnit, &entry);
}

int32_t set_mirror(uint32_t to, uint32_t ingress, uint32_t egress) {
  chip_mirror_entry entry = {};
  entry.mirroring_port = to;
  entry.ingress = ingress;
  entry.egress = egress;
  return rtk_mirror_group_set(kUnit, 2, &entry);
}

// The first of eight words; the others stay as they are.
template <typename Get, typename Set>
int32_t set_first(Get get, Set set, uint32_t value) {
  uint32_t words[8];
  const int32_t read = get(words);
  words[0] = value;
  return read != 0 ? read : set(words);
}

int32_t set_queue(uint32_t queue) {
  return set_first([](auto *words) { return rtk_qos_priMap_get(kUnit, 8, words); },
                   [](auto *words) { return rtk_qos_priMap_set(kUnit, 8, words); }, queue);
}

int32_t set_queue_weight(uint32_t weight) {
  return set_first([](auto *words) { return rtk_qos_schedulingQueue_get(kUnit, kPort, words); },
                   [](auto *words) { return rtk_qos_schedulingQueue_set(kUnit, kPort, words); },
                   weight);
}

int32_t set_source_weight(uint32_t weight) {
  const uint32_t weights[5] = {weight};
  return rtk_qos_priSelGroup_set(kUnit, 2, weights);
}

int32_t set_meter(uint32_t rate, uint32_t slot) {
  const chip_acl_meter meter = {0, rate, slot};
  return rtk_acl_meterEntry_set(kUnit, 5, &meter);
}

int32_t set_rule(uint32_t action, uint32_t value) {
  adp_fp_entity_rule_t rule = {};
  rule.entity = ADP_FP_ENTITY_MAC_VLAN;
  rule.index = 4;
  const int32_t made = adp_fp_add_entity_action(&rule, action, &value, sizeof value, nullptr, 0);
  return made != 0 ? made : adp_fp_add_entity_rule(rule);
}

const Word kWords[] = {
    {"vlan_instance", set_instance, 11, 15, 16},
    {"vlan_member", [](auto v) { return set_vlan(v, 0); }, 0x70, kEveryPort, kNoPort},
    {"vlan_untagged", [](auto v) { return set_vlan(0, v); }, 0x70, kEveryPort, kNoPort},
    {"pvid", [](auto v) { return rtk_vlan_portPvid_set(kUnit, kPort, v); }, 77, 4095, 4096},
    {"conversion_vid", [](auto v) { return set_conversion(v, 0, 0); }, 77, 4095, 4096},
    {"conversion_port", [](auto v) { return set_conversion(0, v, 0); }, 9, 28, 29},
    {"conversion_new_vid", [](auto v) { return set_conversion(0, 0, v); }, 77, 4095, 4096},
    {"conversion_block_mode", [](auto v) { return rtk_vlan_igrVlanCnvtBlkMode_set(kUnit, 0, v); },
     2, 2, 3},
    {"outer_pvid", [](auto v) { return rtk_vlan_portOuterPvid_set(kUnit, kPort, v); }, 77, 4095,
     4096},
    {"tag_tpids", [](auto v) { return rtk_vlan_portIgrInnerTpid_set(kUnit, kPort, v); }, 6, 15, 16},
    {"tag_inner_tpid", [](auto v) { return rtk_vlan_portEgrInnerTpid_set(kUnit, kPort, v); }, 3, 3,
     4},
    {"tag_outer_tpid", [](auto v) { return rtk_vlan_portEgrOuterTpid_set(kUnit, kPort, v); }, 3, 3,
     4},
    {"inner_tpid", [](auto v) { return rtk_vlan_innerTpidEntry_set(kUnit, 1, v); }, 0x9100, 0xffff,
     0x10000},
    {"outer_tpid", [](auto v) { return rtk_vlan_outerTpidEntry_set(kUnit, 1, v); }, 0x9100, 0xffff,
     0x10000},
    {"isolation", [](auto v) { return rtk_port_isolation_set(kUnit, kPort, v); }, 0x70, kEveryPort,
     kNoPort},
    {"flood_index", [](auto v) { return rtk_l2_lookupMissFloodPortMaskIdx_set(kUnit, 2, v); }, 5, 7,
     8},
    {"flood_mask",
     [](auto v) { return rtk_l2_lookupMissFloodPortMask_set_with_idx(kUnit, 2, 5, &v); }, 0x70,
     kEveryPort, kNoPort},
    {"learning_mode", [](auto v) { return rtk_l2_newMacOp_set(kUnit, kPort, v, 0); }, 2, 2, 3},
    {"new_address", [](auto v) { return rtk_l2_newMacOp_set(kUnit, kPort, 0, v); }, 2, 3, 4},
    {"aging", [](auto v) { return rtk_l2_aging_set(kUnit, v); }, 77, 1000000, 1000001},
    {"address_vid", [](auto v) { return set_address(v, 0, 0); }, 77, 4095, 4096},
    {"address_port", [](auto v) { return set_address(0, static_cast<int32_t>(v), 0); }, 9, 28, 29},
    {"address_port_below", [](auto v) { return set_address(0, static_cast<int32_t>(v), 0); }, 9, 0,
     UINT32_MAX},
    {"address_trunk", [](auto v) { return set_address(0, 0, static_cast<int32_t>(v)); }, 9, 31, 32},
    {"group_vid", [](auto v) { return set_group(v, 0, 0); }, 77, 4095, 4096, 2},
    {"group_mask", [](auto v) { return set_group(0, v, 0); }, 300, 511, 512},
    {"group_ports", [](auto v) { return set_group(0, 0, v); }, 0x70, kEveryPort, kNoPort},
    {"ip_group_vid", [](auto v) { return set_ip_group(v, 0); }, 77, 4095, 4096, 2},
    {"ip_group_ports", [](auto v) { return set_ip_group(1, v); }, 0x70, kEveryPort, kNoPort},
    {"ip6_group_vid", [](auto v) { return set_ip6_group(v, 0); }, 77, 4095, 4096, 2},
    {"ip6_group_ports", [](auto v) { return set_ip6_group(1, v); }, 0x70, kEveryPort, kNoPort},
    {"ip_mode", [](auto v) { return rtk_l2_ipmcMode_set(kUnit, v); }, 1, 1, 2},
    {"ip6_mode", [](auto v) { return rtk_l2_ip6mcMode_set(kUnit, v); }, 1, 1, 2},
    {"miss_action", [](auto v) { return rtk_l2_portLookupMissAction_set(kUnit, kPort, 1, v); }, 2,
     3, 4},
    {"mirror_port", [](auto v) { return set_mirror(v, 0, 0); }, 9, 28, 29},
    {"mirror_ingress", [](auto v) { return set_mirror(0, v, 0); }, 0x70, kEveryPort, kNoPort},
    {"mirror_egress", [](auto v) { return set_mirror(0, 0, v); }, 0x70, kEveryPort, kNoPort},
    {"trunk", [](auto v) { return rtk_trunk_port_set(kUnit, 5, &v); }, 0x70, 0x0fffffff,
     0x10000000},
    {"trunk_hash", [](auto v) { return rtk_trunk_distributionAlgorithmParam_set(kUnit, 1, v); }, 6,
     0x7f, 0x80},
    {"outer_priority_map", [](auto v) { return rtk_qos_outer1pPriRemap_set(kUnit, 3, 1, v); }, 5, 7,
     8},
    {"inner_priority_map", [](auto v) { return rtk_qos_1pPriRemap_set(kUnit, 3, v); }, 5, 7, 8},
    {"dscp_map", [](auto v) { return rtk_qos_dscpPriRemap_set(kUnit, 33, v); }, 5, 7, 8},
    {"queue_map", set_queue, 5, 7, 8},
    {"source_weight", set_source_weight, 5, 7, 8},
    {"remark_source", [](auto v) { return rtk_qos_1pRemarkSrcSel_set(kUnit, v); }, 0, 1, 2},
    {"outer_priority", [](auto v) { return rtk_qos_portOuterPri_set(kUnit, kPort, v); }, 5, 7, 8},
    {"inner_priority", [](auto v) { return rtk_qos_portInnerPri_set(kUnit, kPort, v); }, 5, 7, 8},
    {"priority_group", [](auto v) { return rtk_qos_portPriSelGroup_set(kUnit, kPort, v); }, 2, 3,
     4},
    {"algorithm", [](auto v) { return rtk_qos_schedulingAlgorithm_set(kUnit, kPort, v); }, 1, 1, 2},
    {"queue_weight", set_queue_weight, 5, 127, 128},
    {"storm_mode", [](auto v) { return rtk_rate_stormControlRateMode_set(kUnit, v); }, 0, 1, 2},
    {"storm_burst", [](auto v) { return rtk_rate_stormControlBurstSize_set(kUnit, 3, v); }, 77,
     0xffff, 0x10000},
    {"storm_rate", [](auto v) { return rtk_rate_stormControlRate_set(kUnit, kPort, 3, v); }, 77,
     0xffffff, 0x1000000},
    {"ingress_rate",
     [](auto v) {
       return rtk_rate_igrBandwidthCtrlRate_set(kUnit, kPort, static_cast<int32_t>(v));
     },
     77, 0xfffff, 0x100000},
    {"egress_rate",
     [](auto v) {
       return rtk_rate_egrBandwidthCtrlRate_set(kUnit, kPort, static_cast<int32_t>(v));
     },
     77, 0, UINT32_MAX},
    {"frame_length", [](auto v) { return rtk_switch_maxPktLenLinkSpeed_set(kUnit, 1, v); }, 1600,
     0x3fff, 0x4000},
    {"frame_length_below", [](auto v) { return rtk_switch_maxPktLenLinkSpeed_set(kUnit, 1, v); },
     1600, 64, 63},
    {"cpu_format", [](auto v) { return rtk_switch_pkt2CpuTypeFormat_set(kUnit, 2, v); }, 2, 3, 4},
    {"attack_ports", [](auto) { return rtk_sec_portAttackPreventEnable_set(kUnit, 6, 1); }, 0x40,
     kEveryPort, kNoPort},
    {"attack_action", [](auto v) { return rtk_sec_attackPreventAction_set(kUnit, 9, v); }, 1, 1, 2},
    {"trap_action", [](auto v) { return rtk_trap_mgmtFrameAction_set(kUnit, 9, v); }, 2, 3, 4},
    {"trap_port_action",
     [](auto v) { return rtk_trap_portMgmtFrameAction_set(kUnit, kPort, 9, v); }, 2, 3, 4},
    {"trap_group", [](auto v) { return rtk_trap_rmaGroupAction_set(kUnit, 1, v); }, 2, 3, 4},
    {"port_state", [](auto v) { return rtk_stp_mstpState_set(kUnit, 0, kPort, v); }, 2, 3, 4},
    {"rule_miss", [](auto v) { return rtk_acl_lookupMissAct_set(kUnit, kPort, v); }, 1, 1, 2},
    {"meter_rate", [](auto v) { return set_meter(v, 0); }, 77, 0xfffff, 0x100000},
    {"meter_burst_slot", [](auto v) { return set_meter(0, v); }, 1, 1, 2},
    {"meter_mode", [](auto v) { return rtk_acl_meterMode_set(kUnit, 5, v); }, 1, 1, 2},
    {"burst_size",
     [](auto v) {
       const chip_acl_burst burst = {{512, v}};
       return rtk_acl_meterBurstSize_set(kUnit, 0, &burst);
     },
     77, 0xffff, 0x10000},
    {"forced_speed", [](auto v) { return rtk_port_phyForceModeAbility_set(kUnit, kPort, v, 1, 0); },
     3, 4, 5},
    {"medium", [](auto v) { return vchip_medium_set(kUnit, 24, v); }, VCHIP_MEDIUM_FIBRE, 1, 2},
    {"crossover", [](auto v) { return rtk_port_phyCrossOverMode_set(kUnit, kPort, v); }, 2, 2, 3},
    {"adapter_vlan", [](auto v) { return set_rule(ADP_FP_ACTION_VLAN, v); }, 77, 4095, 4096},
    {"adapter_priority", [](auto v) { return set_rule(ADP_FP_ACTION_PRIORITY, v); }, 5, 7, 8},
};

std::string bytes_of(uint32_t value, size_t bytes) {
  const auto half = static_cast<uint16_t>(value);
  return bytes == sizeof half ? std::string(reinterpret_cast<const char *>(&half), sizeof half)
                              : std::string(reinterpret_cast<const char *>(&value), sizeof value);
}

// The places where an image has the word's value and had another one before.
std::vector<size_t> places(const std::string &before, const std::string &after, const Word &word) {
  const std::string value = bytes_of(word.value, word.bytes);
  std::vector<size_t> found;
  for (size_t at = vchip_test::kHeaderSize; at + word.bytes <= after.size(); at += word.bytes)
    if (after.compare(at, word.bytes, value) == 0 && before.compare(at, word.bytes, value) != 0)
      found.push_back(at);
  return found;
}

class Damage : public vchip_test::ImageTest, public testing::WithParamInterface<Word> {
 protected:
  // The image after power-on, made once.
  void SetUp() override {
    static std::string power_on;
    ImageTest::SetUp();
    if (power_on.empty()) {
      make_image();
      power_on = read_file(image_);
    }
    before_ = power_on;
    write_file(image_, before_);
  }

  // The next three run in a child. Sets the word; its place, or -1.
  ptrdiff_t place_of_word() const {
    const Word &word = GetParam();
    if (word.set(word.value) != 0) return -1;
    vchip_close();
    const std::vector<size_t> found = places(before_, read_file(image_), word);
    return found.size() == 1 ? static_cast<ptrdiff_t>(found[0]) : -1;
  }

  // Whether the image can be used with this value there.
  bool opens_with(ptrdiff_t place, uint32_t value) const {
    const size_t width = GetParam().bytes;
    std::string bytes = read_file(image_);
    bytes.replace(static_cast<size_t>(place), width, bytes_of(value, width));
    write_file(image_, bytes);
    const bool opened = vchip_open() == nullptr;
    vchip_close();
    return opened;
  }

  int damage() const {
    const ptrdiff_t place = place_of_word();
    if (place < 0) return 1;
    if (!opens_with(place, GetParam().last)) return 2;
    if (opens_with(place, GetParam().bad)) return 3;
    // A refused image is left as it is, but for the header's note of who looked.
    const std::string bad = bytes_of(GetParam().bad, GetParam().bytes);
    return read_file(image_).compare(static_cast<size_t>(place), bad.size(), bad) == 0 ? 0 : 4;
  }

  std::string before_;
};

TEST_P(Damage, IsRefused) {
  EXPECT_EQ(run(image(), [this] { return damage(); }).status, 0);
}

INSTANTIATE_TEST_SUITE_P(Words, Damage, testing::ValuesIn(kWords),
                         [](const auto &word) { return word.param.name; });

}  // namespace
