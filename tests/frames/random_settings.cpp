// SPDX-License-Identifier: MIT
#include "random_settings.h"

#include <swctl/platform/sdk.h>

#include <algorithm>

namespace frames {
namespace {

// Answers of the SDK are not looked at: what it refuses is not set.
class Setter {
 public:
  explicit Setter(std::mt19937 &random) : random_(random) {}

  void set() {
    vlans();
    ports();
    tables();
    rules();
    rates();
    traps();
  }

 private:
  uint32_t below(uint32_t end) { return static_cast<uint32_t>(random_() % end); }
  bool one_in(uint32_t number) { return below(number) == 0; }
  int32_t any_port() { return static_cast<int32_t>(below(VCHIP_PORTS)); }
  uint32_t any_ports() { return static_cast<uint32_t>(random_()) & 0x1fffffff; }

  void vlans() {
    for (uint32_t instance = 1; instance < 4; ++instance) {
      rtk_stp_mstpInstance_create(0, instance);
      for (int32_t port = 0; port < VCHIP_PORTS; ++port)
        rtk_stp_mstpState_set(0, instance, port, one_in(4) ? below(4) : 3);
    }
    for (uint32_t vid = 1; vid < 8; ++vid) {
      rtk_vlan_create(0, vid);
      const uint32_t member = any_ports() | any_ports();
      const uint32_t untagged = any_ports() & member;
      rtk_vlan_port_set(0, vid, &member, &untagged);
      rtk_vlan_stg_set(0, vid, below(4));
    }
  }

  void ports() {
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      rtk_vlan_portPvid_set(0, port, 1 + below(8));
      rtk_vlan_portOuterPvid_set(0, port, 1 + below(8));
      rtk_vlan_portIgrFilter_set(0, port, below(2));
      if (one_in(6)) rtk_l2_vlanMode_set(0, port, 1);
      if (one_in(8)) rtk_port_isolation_set(0, port, any_ports());
      if (one_in(10)) rtk_l2_newMacOp_set(0, port, below(3), below(4));
      if (one_in(12)) rtk_port_adminEnable_set(0, port, 0);
      if (one_in(12)) rtk_diag_portMacLocalLoopbackEnable_set(0, port, 1);
      if (one_in(8)) rtk_sec_portAttackPreventEnable_set(0, port, 1);
      if (one_in(6)) rtk_acl_lookupMissAct_set(0, port, one_in(3));
    }
    for (uint32_t type = 0; type < 16; ++type) rtk_sec_attackPreventAction_set(0, type, 1);
    for (uint32_t speed = 0; speed < 2; ++speed)
      rtk_switch_maxPktLenLinkSpeed_set(0, speed, 300 + below(1300));
  }

  void tables() {
    uint32_t trunk = any_ports() & 0xf0;
    rtk_trunk_port_set(0, 1, &trunk);
    trunk = any_ports() & 0xf00;
    rtk_trunk_port_set(0, 0, &trunk);
    rtk_trunk_distributionAlgorithmParam_set(0, 0, below(128));
    for (uint32_t each = 0; each < 6; ++each) {
      chip_l2_ucast_entry entry = {};
      entry.vid = 1 + below(8);
      entry.mac[0] = 2;
      entry.mac[5] = static_cast<uint8_t>(each);
      entry.port = any_port();
      entry.flags = below(2) * 8 + below(4) * 2 + below(2) * 0x20;
      rtk_l2_addr_add(0, &entry);
    }
    chip_mirror_entry mirror = {};
    mirror.enable = below(2);
    mirror.mirroring_port = below(VCHIP_PORTS);
    mirror.ingress = any_ports() & any_ports();
    mirror.egress = any_ports() & any_ports();
    mirror.field15 = below(2);
    rtk_mirror_group_set(0, 0, &mirror);
    chip_vlan_egress_entry conversion = {};
    conversion.valid = 1;
    conversion.vid = 1 + below(8);
    conversion.ignore_port = 1;
    conversion.ignore_second_key = 1;
    conversion.new_vid = 1 + below(100);
    rtk_vlan_egrVlanCnvtEntry_set(0, below(512), &conversion);
  }

  static const uint8_t *bytes(const uint32_t &word) {
    return reinterpret_cast<const uint8_t *>(&word);
  }

  void rules() {
    for (uint32_t each = 0; each < 5; ++each) {
      const uint32_t rule = below(1536);
      const uint32_t zero = 0;
      const uint32_t outside = any_ports();
      rtk_acl_ruleEntryField_write(0, 0, rule, CHIP_ACL_FIELD_IN_PORTS, bytes(zero),
                                   bytes(outside));
      chip_acl_action action = {};
      for (const size_t word : {0, 7, 10, 13, 15, 19, 23, 25, 29, 35}) action.word[word] = below(2);
      action.word[CHIP_ACL_WORD_FORWARD_KIND] = below(8);
      action.word[CHIP_ACL_WORD_FORWARD_TO] = below(40);
      for (const size_t word : {9, 12, 14, 18, 22, 24, 30, 31, 36}) action.word[word] = below(9);
      rtk_acl_ruleAction_set(0, 0, rule, &action);
      rtk_acl_ruleValidate_set(0, 0, rule, 1);
    }
    const chip_acl_meter meter = {1, below(3), 0};
    for (uint32_t number = 0; number < 9; ++number) rtk_acl_meterEntry_set(0, number, &meter);
  }

  void rates() {
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      if (one_in(8))
        limit(port, rtk_rate_igrBandwidthCtrlRate_set, rtk_rate_igrBandwidthCtrlEnable_set);
      if (one_in(8))
        limit(port, rtk_rate_egrBandwidthCtrlRate_set, rtk_rate_egrBandwidthCtrlEnable_set);
      for (uint32_t type = 0; type < 5; ++type) {
        if (!one_in(12)) continue;
        rtk_rate_stormControlRate_set(0, port, type, below(4));
        rtk_rate_stormControlEnable_set(0, port, type, 1);
      }
    }
  }
  void limit(int32_t port, int32_t (*rate)(uint32_t, int32_t, int32_t),
             int32_t (*enable)(uint32_t, int32_t, uint32_t)) {
    rate(0, port, static_cast<int32_t>(below(4)));
    enable(0, port, 1);
  }

  void traps() {
    for (uint32_t type = 0; type < 32; ++type) rtk_trap_mgmtFrameAction_set(0, type, below(4));
    for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
      rtk_trap_portMgmtFrameAction_set(0, port, 19, below(4));
      rtk_trap_portMgmtFrameAction_set(0, port, 21, below(4));
      rtk_l2_portLookupMissAction_set(0, port, 0, below(4));
      rtk_l2_portLookupMissAction_set(0, port, 1, below(4));
    }
    for (uint32_t group = 0; group < 4; ++group) rtk_trap_rmaGroupAction_set(0, group, below(4));
    rtk_trap_bypassStp_set(0, 6, below(2));
  }

  std::mt19937 &random_;
};

constexpr uint64_t kAddresses[] = {kBroadcast,
                                   0x0180c2000000,
                                   0x0180c2000001,
                                   0x0180c2000002,
                                   0x0180c2000003,
                                   0x0180c200000e,
                                   0x0180c2000021,
                                   0x01005e010203,
                                   0x333300000001,
                                   0x010000000007,
                                   0};
constexpr uint32_t kTypes[] = {0x0800, 0x86dd, 0x0806, 0x8808, 0x8809, 0x888e, 0x88cc, 0x88b5, 30};

}  // namespace

void set_at_random(std::mt19937 &random) {
  Setter(random).set();
}

Bytes frame_at_random(std::mt19937 &random) {
  const auto below = [&](uint32_t end) { return static_cast<uint32_t>(random() % end); };
  const auto word = [&] { return static_cast<uint32_t>(random()); };
  const auto address = [&](uint32_t special) {
    return below(special) == 0 ? kAddresses[below(std::size(kAddresses))] : station(below(8));
  };
  const uint64_t to = address(2);
  Maker maker(to, below(20) == 0 ? to : address(12));
  if (below(3) == 0)
    maker.tag(below(30) == 0 ? 4095 : below(9), below(8), below(6) == 0 ? 0x88a8 : 0x8100);
  if (below(6) == 0) maker.tag(below(9), below(8));
  const uint32_t type = kTypes[below(std::size(kTypes))];
  maker.type(type);
  constexpr uint32_t kProtocols[] = {1, 2, 6, 17};
  if (type == 0x0800)
    maker.ip4(kProtocols[below(4)], word(), below(2) == 0 ? 0xe0010203 : word(), 40, below(256));
  if (type == 0x8809) maker.byte(below(5));
  if (type == 0x8808) maker.half(1).half(below(3) * 20000);
  Bytes bytes = maker.bytes();
  for (uint32_t more = below(4) * below(400); more > 0; --more)
    bytes.push_back(static_cast<uint8_t>(random()));
  return bytes;
}

}  // namespace frames
