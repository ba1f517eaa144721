// SPDX-License-Identifier: MIT
// What holds for every function that is one SDK call with the caller's own
// arguments: the leading argument is dropped, everything else is handed on,
// the result comes back, nothing is printed.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "support/library_test.h"

namespace {

using swctl_test::chip_answers;

struct Thin {
  const char *function;
  const char *call;
  int32_t (*invoke)(uint32_t lead, uint32_t unit, int32_t port, uint32_t *word);
  const char *output;  // written through the caller's address; null for a setter
  const char *value;   // of a setter: the argument that takes *word
};

constexpr uint32_t kValue = 0x80000001;

#define THIN_GET(function, call, output)                                                   \
  {                                                                                        \
#function, #call,                                                                      \
        [](uint32_t lead, uint32_t unit, int32_t port,                                     \
           uint32_t * word) { return function(lead, unit, port, word); }, #output, nullptr \
  }
#define THIN_SET(function, call, value)                                                    \
  {                                                                                        \
#function, #call,                                                                      \
        [](uint32_t lead, uint32_t unit, int32_t port,                                     \
           uint32_t * word) { return function(lead, unit, port, *word); }, nullptr, #value \
  }

const Thin kThin[] = {
    THIN_SET(user_port_enable_set, rtk_port_adminEnable_set, enable),
    THIN_GET(user_port_enable_get, rtk_port_adminEnable_get, enable),
    THIN_SET(user_port_backpressure_set, rtk_port_backpressureEnable_set, enable),
    THIN_SET(user_port_autoneg_set, rtk_port_phyAutoNegoEnable_set, enable),
    THIN_GET(user_port_autoneg_get, rtk_port_phyAutoNegoEnable_get, enable),
    THIN_GET(user_port_mdix_get, rtk_port_phyCrossOverMode_get, mode),
    THIN_GET(user_port_ability_advert_get, rtk_port_phyAutoNegoAbility_get, ability),
    {"user_port_ability_advert_set", "rtk_port_phyAutoNegoAbility_set",
     [](uint32_t lead, uint32_t unit, int32_t port, uint32_t *word) {
       return user_port_ability_advert_set(lead, unit, port, word);
     },
     nullptr, "ability"},
    THIN_SET(user_eee_portEnable_set, rtk_eee_portEnable_set, enable),
    THIN_GET(user_eee_portEnable_get, rtk_eee_portEnable_get, enable),
    {"user_rate_stormsel_get", "rtk_rate_stormControlTypeSel_get",
     [](uint32_t lead, uint32_t unit, int32_t port, uint32_t *word) {
       return user_rate_stormsel_get(lead, unit, port, 9, word);
     },
     "selection", nullptr},
    {"user_port_packetstat_get", "rtk_stat_port_get",
     [](uint32_t lead, uint32_t unit, int32_t port, uint32_t *word) {
       user_counter_t value = {7, 7};
       const int32_t result = user_port_packetstat_get(lead, unit, port, kValue, &value);
       *word = value.high;
       return result;
     },
     "value.high", nullptr},
    {"user_stat_port_getAll", "rtk_stat_port_getAll",
     [](uint32_t lead, uint32_t unit, int32_t port, uint32_t *word) {
       chip_port_counters_t counters;
       counters.value[0].high = 7;
       const int32_t result = user_stat_port_getAll(lead, unit, port, &counters);
       *word = counters.value[0].high;
       return result;
     },
     "counters.value", nullptr},
};

using ThinFunctions = swctl_test::LibraryTest;

TEST_F(ThinFunctions, HandArgumentsOnAndTheResultBack) {
  for (const Thin &thin : kThin) {
    for (int64_t result : {int64_t{0}, int64_t{3}, int64_t{-1}, int64_t{INT32_MIN}}) {
      SCOPED_TRACE(thin.function);
      swprobe::clear_plan();
      chip_answers(
          thin.call, result,
          thin.output == nullptr ? swctl_test::Outputs{} : swctl_test::Outputs{{thin.output, 41}});
      swprobe::forget();
      uint32_t word = kValue;
      EXPECT_EQ(thin.invoke(99, 0xFFFFFFFF, -3, &word), result);
      const auto calls = swprobe::take();
      ASSERT_EQ(calls.size(), 1u);
      EXPECT_EQ(calls[0].name, thin.call);
      EXPECT_EQ(static_cast<uint32_t>(calls[0].in("unit")), 0xFFFFFFFFu);
      EXPECT_EQ(calls[0].in("port"), -3);
      if (thin.output != nullptr) {
        EXPECT_EQ(word, 41u);
      } else {
        EXPECT_EQ(static_cast<uint32_t>(calls[0].in(thin.value)), kValue);
      }
    }
  }
}

TEST_F(ThinFunctions, LeaveTheOutputAloneWhenTheSdkDoes) {
  for (const Thin &thin : kThin) {
    if (thin.output == nullptr) continue;
    SCOPED_TRACE(thin.function);
    swprobe::clear_plan();
    chip_answers(thin.call, -5);
    uint32_t word = 7;
    EXPECT_EQ(thin.invoke(0, 1, 5, &word), -5);
    EXPECT_EQ(word, 7u);
  }
}

TEST_F(ThinFunctions, PrintNothingOnFailure) {
  const auto all = [] {
    for (const Thin &thin : kThin) {
      uint32_t word = 0;
      EXPECT_LT(thin.invoke(0, VCHIP_UNITS, 5, &word), 0) << thin.function;
    }
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

TEST_F(ThinFunctions, CounterAndTypeAreHandedOn) {
  user_counter_t value = {};
  user_port_packetstat_get(0, 1, 5, 0xFFFFFFFE, &value);
  EXPECT_EQ(static_cast<uint32_t>(swprobe::take().at(0).in("counter")), 0xFFFFFFFEu);
  uint32_t selection = 0;
  user_rate_stormsel_get(0, 1, 5, 0xFFFFFFFD, &selection);
  EXPECT_EQ(static_cast<uint32_t>(swprobe::take().at(0).in("type")), 0xFFFFFFFDu);
}

// The rest of this family, called with a chip that refuses everything.
TEST_F(ThinFunctions, NoFunctionBesideThePauseOnesPrints) {
  const auto all = [] {
    uint32_t word = 0;
    int32_t rate = 0;
    uint8_t byte = 0;
    uint16_t half = 0;
    user_pbmp_t ports = {};
    user_counter_t value = {};
    constexpr uint32_t kBad = VCHIP_UNITS;
    user_port_mdix_set(0, kBad, 5, 1);
    user_port_egress_rate_set(0, kBad, 5, 1);
    user_port_egress_rate_get(0, kBad, 5, &rate);
    user_port_ingress_rate_set(0, kBad, 5, 1);
    user_port_ingress_rate_get(0, kBad, 5, &rate);
    user_rate_stormControlEnable_set(0, kBad, 5, 0, 1);
    user_rate_stormsel_set(0, kBad, 5, 0, 1);
    user_rate_stormExceedFlag_get(0, kBad, 5, &word, &word);
    user_rate_stormExceedFlag_reset(0, kBad, 5);
    user_rate_bandwidth_set(0, kBad, 5, 0, 1);
    user_rate_bandwidth_get(0, kBad, 5, 0, &word, &word);
    user_rate_stormCountMode_set(0, kBad, 0);
    user_rate_stormCountMode_get(0, kBad, &byte);
    user_port_egress_set(0, kBad, 5, 0, ports);
    user_port_egress_get(0, kBad, 5, 0, &ports);
    user_ulf_flood_ports_set(0, kBad, ports);
    user_ulf_flood_ports_get(0, kBad, &ports);
    user_ulf_flood_port_add_remove(0, kBad, 5, 1);
    user_port_ifilter_set(0, kBad, 5, 1);
    user_port_packetstat_clear(0, kBad, 5);
    user_port_untagged_vlan_get(0, kBad, 5, &half);
    user_port_untagged_vlan_set(0, kBad, 5, 1);
    user_port_jumboframe_set(0, kBad, 5, 1);
    user_port_jumboframe_get(0, kBad, 5, &word);
    user_port_learn_set(0, kBad, VCHIP_PORTS, 0);
    user_port_learn_get(0, kBad, 5, &word);
    for (int32_t kind = 0; kind < 5; ++kind) user_stat_port_get(0, kBad, 5, kind, &value);
    user_dos_attack_prevent_init(0, kBad);
    user_dos_attack_prevent_action_set(0, kBad, 0, 1);
    user_dos_attack_prevent_action_get(0, kBad, 99, &word);
    user_switch_pkt2CpuTypeFormat_set(0, kBad, 0, 1);
    user_port_dtag_mode_set(0, kBad, 5, 1);
    user_port_dtag_mode_get(0, kBad, 5, &word);
    user_port_tpid_set(0, kBad, 5, 1, 1);
    user_port_tpid_get(0, kBad, 5, &half);
    user_tpid_entry_set(0, kBad, 1, 1);
  };
  EXPECT_PRINTED(swctl_test::printed_by(all), "", "");
}

}  // namespace
