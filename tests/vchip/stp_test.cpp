// SPDX-License-Identifier: MIT
#include <swctl-vchip/view.h>
#include <swctl/platform/sdk.h>

#include <gmock/gmock.h>
#include <stdexcept>

#include "private_chip.h"

namespace {

using testing::Each;
using testing::HasSubstr;
using vchip_test::kUntouched;
using Words = std::vector<uint32_t>;

class Stp : public vchip_test::PrivateChip {};

TEST_F(Stp, StartsWithTheCommonInstanceForwarding) {
  const vchip::StpView common = {0, Words(VCHIP_PORTS, 3)};
  for (const uint32_t unit : {0u, 1u})
    EXPECT_THAT(vchip::stp_instances(unit), testing::ElementsAre(common));
}

TEST_F(Stp, NewInstancesAreDisabled) {
  EXPECT_EQ(rtk_stp_mstpInstance_create(1, 15), 0);
  ASSERT_EQ(vchip::stp_instances(1).size(), 2u);
  EXPECT_EQ(vchip::stp_instances(1)[1], (vchip::StpView{15, Words(VCHIP_PORTS, 0)}));
  EXPECT_EQ(vchip::stp_instances(0).size(), 1u);
  ASSERT_EQ(rtk_stp_mstpState_set(1, 15, 3, 2), 0);
  ASSERT_EQ(rtk_stp_mstpInstance_destroy(1, 15), 0);
  ASSERT_EQ(rtk_stp_mstpInstance_create(1, 15), 0);
  EXPECT_THAT(vchip::stp_instances(1)[1].states, Each(0u)) << "old states are forgotten";
}

TEST_F(Stp, SaysWhichInstancesExist) {
  uint32_t exists = kUntouched;
  EXPECT_EQ(rtk_stp_isMstpInstanceExist_get(0, 0, &exists), 0);
  EXPECT_EQ(exists, 1u);
  EXPECT_EQ(rtk_stp_isMstpInstanceExist_get(0, 15, &exists), 0);
  EXPECT_EQ(exists, 0u);
}

TEST_F(Stp, InstancesThatAreThereOrNot) {
  uint32_t state = kUntouched;
  EXPECT_EQ(rtk_stp_mstpInstance_create(0, 0), VCHIP_E_INSTANCE_EXISTS);
  EXPECT_EQ(rtk_stp_mstpInstance_destroy(0, 0), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_stp_mstpInstance_destroy(0, 3), VCHIP_E_INSTANCE);
  EXPECT_EQ(rtk_stp_mstpState_set(0, 3, 0, 1), VCHIP_E_INSTANCE);
  EXPECT_EQ(rtk_stp_mstpState_get(0, 3, 0, &state), VCHIP_E_INSTANCE);
  EXPECT_EQ(rtk_vlan_stg_set(0, 1, 3), VCHIP_E_INSTANCE);
  EXPECT_EQ(rtk_vlan_stg_set(0, 2, 0), VCHIP_E_VLAN);
  EXPECT_EQ(state, kUntouched);
}

TEST_F(Stp, HasRanges) {
  const std::string before = vchip::dump_json(-1);
  uint32_t word = kUntouched;
  for (const uint32_t instance : {16u, UINT32_MAX}) {
    EXPECT_EQ(rtk_stp_mstpInstance_create(0, instance), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_stp_mstpInstance_destroy(0, instance), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_stp_isMstpInstanceExist_get(0, instance, &word), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_stp_mstpState_set(0, instance, 0, 0), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_stp_mstpState_get(0, instance, 0, &word), VCHIP_E_INDEX);
    EXPECT_EQ(rtk_vlan_stg_set(0, 1, instance), VCHIP_E_INDEX);
  }
  for (const uint32_t vid : {0u, 4095u}) EXPECT_EQ(rtk_vlan_stg_set(0, vid, 0), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_stp_mstpState_set(0, 0, 0, 4), VCHIP_E_VALUE);
  EXPECT_EQ(word, kUntouched);
  EXPECT_EQ(vchip::dump_json(-1), before);
}

TEST_F(Stp, KeepsAStatePerPortAndInstance) {
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 1), 0);
  for (uint32_t state = 0; state < 4; ++state) {
    EXPECT_EQ(rtk_stp_mstpState_set(0, 1, 28, state), 0);
    uint32_t read = kUntouched;
    EXPECT_EQ(rtk_stp_mstpState_get(0, 1, 28, &read), 0);
    EXPECT_EQ(read, state);
  }
  EXPECT_EQ(vchip::stp_instances(0)[1].states[27], 0u);
  EXPECT_THAT(vchip::stp_instances(0)[0].states, Each(3u));
}

TEST_F(Stp, VlansOfADestroyedInstanceFallBack) {
  ASSERT_EQ(rtk_vlan_create(0, 10), 0);
  ASSERT_EQ(rtk_vlan_create(0, 4094), 0);
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 1), 0);
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 2), 0);
  EXPECT_EQ(rtk_vlan_stg_set(0, 10, 1), 0);
  EXPECT_EQ(rtk_vlan_stg_set(0, 4094, 2), 0);
  EXPECT_EQ(vchip::vlans(0)[1].stg, 1u);
  ASSERT_EQ(rtk_stp_mstpInstance_destroy(0, 2), 0);
  EXPECT_EQ(vchip::vlans(0)[1].stg, 1u);
  EXPECT_EQ(vchip::vlans(0)[2].stg, 0u);
}

TEST_F(Stp, IsResetAndDumped) {
  ASSERT_EQ(rtk_stp_mstpInstance_create(0, 4), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 4, 0, 1), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 4, 1, 2), 0);
  ASSERT_EQ(rtk_stp_mstpState_set(0, 4, 2, 3), 0);
  EXPECT_THAT(vchip::dump_json(-1), HasSubstr(R"({"instance":4,"states":["blocking","learning",)"
                                              R"("forwarding","disabled",)"));
  ASSERT_EQ(vchip_reset(), 0);
  EXPECT_EQ(vchip::stp_instances(0).size(), 1u);
  EXPECT_THROW(vchip::stp_instances(2), std::out_of_range);
}

class Traps : public vchip_test::PrivateChip {};

TEST_F(Traps, StartUnlikeWhatProgramsSet) {
  const vchip::TrapView expected = {Words(32, 1), Words(4, 0), Words(8, 0)};
  for (const uint32_t unit : {0u, 1u}) {
    EXPECT_EQ(vchip::traps(unit), expected);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      EXPECT_EQ(vchip::port_traps(unit, port), Words(32, 1));
  }
}

TEST_F(Traps, AreKeptApart) {
  EXPECT_EQ(rtk_trap_mgmtFrameAction_set(1, 5, 2), 0);
  EXPECT_EQ(rtk_trap_portMgmtFrameAction_set(1, 28, 19, 3), 0);
  EXPECT_EQ(rtk_trap_rmaGroupAction_set(1, 1, 1), 0);
  EXPECT_EQ(rtk_trap_bypassStp_set(1, 6, 1), 0);
  const vchip::TrapView view = vchip::traps(1);
  EXPECT_EQ(view.frame_action[5], 2u);
  EXPECT_EQ(view.frame_action[19], 1u);
  EXPECT_EQ(vchip::port_traps(1, 28)[19], 3u);
  EXPECT_EQ(vchip::port_traps(1, 27)[19], 1u);
  EXPECT_EQ(view.rma_group_action, (Words{0, 1, 0, 0}));
  EXPECT_EQ(view.passes_blocked_ports, (Words{0, 0, 0, 0, 0, 0, 1, 0}));
  EXPECT_EQ(vchip::traps(0).frame_action[5], 1u);
}

TEST_F(Traps, HaveRanges) {
  const std::string before = vchip::dump_json(-1);
  EXPECT_EQ(rtk_trap_mgmtFrameAction_set(0, 32, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_trap_mgmtFrameAction_set(0, 0, 4), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_trap_portMgmtFrameAction_set(0, 0, 32, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_trap_portMgmtFrameAction_set(0, 0, 0, 4), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_trap_rmaGroupAction_set(0, 4, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_trap_rmaGroupAction_set(0, 0, 4), VCHIP_E_VALUE);
  EXPECT_EQ(rtk_trap_bypassStp_set(0, 8, 0), VCHIP_E_INDEX);
  EXPECT_EQ(rtk_trap_bypassStp_set(0, 0, 2), VCHIP_E_VALUE);
  EXPECT_EQ(vchip::dump_json(-1), before);
  EXPECT_THROW(vchip::traps(2), std::out_of_range);
  EXPECT_THROW(vchip::port_traps(0, 29), std::out_of_range);
}

TEST_F(Traps, AreDumpedByName) {
  ASSERT_EQ(rtk_trap_mgmtFrameAction_set(0, 4, 0), 0);
  ASSERT_EQ(rtk_trap_mgmtFrameAction_set(0, 5, 2), 0);
  ASSERT_EQ(rtk_trap_mgmtFrameAction_set(0, 21, 3), 0);
  ASSERT_EQ(rtk_trap_rmaGroupAction_set(0, 0, 2), 0);
  ASSERT_EQ(rtk_trap_bypassStp_set(0, 6, 1), 0);
  const std::string dump = vchip::dump_json(-1);
  EXPECT_THAT(dump, HasSubstr(R"("trap":{"frames":{"mld":"forward","igmp":"trap","bpdu":"drop",)"
                              R"("lldp":"copy","own_mac":"drop","by_type":[)"));
  EXPECT_THAT(dump, HasSubstr(R"("oam":"trap","lacp":"forward","rma_groups":[2,0,0,0],)"
                              R"("slow_protocols_bypass":true,"bypass":[0,0,0,0,0,0,1,0],)"));
}

}  // namespace
