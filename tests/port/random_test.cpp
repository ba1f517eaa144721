// SPDX-License-Identifier: MIT
// Every function in random order with random arguments: nothing may go wrong
// inside, whatever the chip says to it. The sanitizers are the judges.
#include <swctl-vchip/vchip.h>
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <functional>
#include <random>
#include <unistd.h>

#include "support/library_test.h"

unsigned sleep(unsigned) {
  return 0;
}

namespace {

using RandomCalls = swctl_test::LibraryTest;

// Arguments: small ones, middling ones such as VLANs and lengths, and any.
class Source {
 public:
  explicit Source(uint32_t seed) : engine_(seed) {}
  uint32_t word() {
    constexpr uint32_t kLimits[] = {40, 0x4000, UINT32_MAX};
    const uint32_t limit = kLimits[engine_() % 3];
    return static_cast<uint32_t>(engine_()) % limit;
  }
  uint32_t unit() { return word() % 3; }
  int32_t port() { return static_cast<int32_t>(word()); }
  int32_t number() { return static_cast<int32_t>(word()); }
  user_pbmp_t ports() {
    user_pbmp_t ports;
    for (uint32_t &each : ports.word) each = word();
    return ports;
  }

 private:
  std::mt19937 engine_;
};

using Step = std::function<int32_t(Source &)>;

#define PORT_GET(function, type)                           \
  [](Source &s) {                                          \
    type value = {};                                       \
    return function(s.word(), s.unit(), s.port(), &value); \
  }
#define PORT_SET(function) \
  [](Source &s) { return function(s.word(), s.unit(), s.port(), s.word()); }
#define PORT_SET_TWO(function) \
  [](Source &s) { return function(s.word(), s.unit(), s.port(), s.word(), s.word()); }

const Step kSteps[] = {
    PORT_SET(user_port_enable_set),
    PORT_GET(user_port_enable_get, uint32_t),
    PORT_SET(user_port_backpressure_set),
    PORT_SET(user_port_autoneg_set),
    PORT_GET(user_port_autoneg_get, uint32_t),
    PORT_SET(user_port_mdix_set),
    PORT_GET(user_port_mdix_get, uint32_t),
    [](Source &s) {
      const uint32_t ability = s.word();
      return user_port_ability_advert_set(s.word(), s.unit(), s.port(), &ability);
    },
    PORT_GET(user_port_ability_advert_get, uint32_t),
    PORT_SET(user_port_pause_set),
    PORT_GET(user_port_pause_get, uint32_t),
    PORT_GET(user_port_pause_get_stat, uint32_t),
    [](Source &s) { return user_port_egress_rate_set(s.word(), s.unit(), s.port(), s.number()); },
    PORT_GET(user_port_egress_rate_get, int32_t),
    [](Source &s) { return user_port_ingress_rate_set(s.word(), s.unit(), s.port(), s.number()); },
    PORT_GET(user_port_ingress_rate_get, int32_t),
    PORT_SET_TWO(user_rate_stormControlEnable_set),
    PORT_SET_TWO(user_rate_stormsel_set),
    [](Source &s) {
      uint32_t selection = 0;
      return user_rate_stormsel_get(s.word(), s.unit(), s.port(), s.word(), &selection);
    },
    [](Source &s) {
      uint32_t flag = 0;
      uint32_t type = 0;
      return user_rate_stormExceedFlag_get(s.word(), s.unit(), s.port(), &flag, &type);
    },
    [](Source &s) { return user_rate_stormExceedFlag_reset(s.word(), s.unit(), s.port()); },
    PORT_SET_TWO(user_rate_bandwidth_set),
    [](Source &s) {
      uint32_t rate = s.word();
      uint32_t enable = 0;
      return user_rate_bandwidth_get(s.word(), s.unit(), s.port(), s.word(), &rate, &enable);
    },
    [](Source &s) { return user_rate_stormCountMode_set(s.word(), s.unit(), s.word()); },
    [](Source &s) {
      uint8_t mode = 0;
      return user_rate_stormCountMode_get(s.word(), s.unit(), &mode);
    },
    [](Source &s) {
      return user_port_egress_set(s.word(), s.unit(), s.port(), s.word(), s.ports());
    },
    [](Source &s) {
      user_pbmp_t ports = {};
      return user_port_egress_get(s.word(), s.unit(), s.port(), s.word(), &ports);
    },
    [](Source &s) { return user_ulf_flood_ports_set(s.word(), s.unit(), s.ports()); },
    [](Source &s) {
      user_pbmp_t ports = {};
      return user_ulf_flood_ports_get(s.word(), s.unit(), &ports);
    },
    PORT_SET(user_ulf_flood_port_add_remove),
    PORT_SET(user_port_ifilter_set),
    [](Source &s) {
      user_counter_t value = {};
      return user_port_packetstat_get(s.word(), s.unit(), s.port(), s.word(), &value);
    },
    [](Source &s) { return user_port_packetstat_clear(s.word(), s.unit(), s.port()); },
    PORT_GET(user_port_untagged_vlan_get, uint16_t),
    PORT_SET(user_port_untagged_vlan_set),
    PORT_SET(user_port_jumboframe_set),
    PORT_GET(user_port_jumboframe_get, uint32_t),
    PORT_SET(user_port_learn_set),
    PORT_GET(user_port_learn_get, uint32_t),
    PORT_GET(User_port_cablediag, user_cable_diag_t),
    [](Source &s) {
      user_counter_t value = {};
      return user_stat_port_get(s.word(), s.unit(), s.port(), s.number(), &value);
    },
    PORT_GET(user_stat_port_getAll, chip_port_counters_t),
    [](Source &s) { return user_dos_attack_prevent_init(s.word(), s.unit()); },
    [](Source &s) {
      return user_dos_attack_prevent_action_set(s.word(), s.unit(), s.word(), s.word());
    },
    [](Source &s) {
      uint32_t action = 0;
      return user_dos_attack_prevent_action_get(s.word(), s.unit(), s.word(), &action);
    },
    PORT_SET(user_eee_portEnable_set),
    PORT_GET(user_eee_portEnable_get, uint32_t),
    [](Source &s) {
      return user_switch_pkt2CpuTypeFormat_set(s.word(), s.unit(), s.word(), s.word());
    },
    PORT_SET(user_port_dtag_mode_set),
    PORT_GET(user_port_dtag_mode_get, uint32_t),
    PORT_SET_TWO(user_port_tpid_set),
    PORT_GET(user_port_tpid_get, uint16_t),
    [](Source &s) { return user_tpid_entry_set(s.word(), s.unit(), s.word(), s.word()); },
};

TEST_F(RandomCalls, AHundredThousandOfThem) {
  constexpr size_t kCount = std::size(kSteps);
  Source source(20261120);
  std::vector<size_t> succeeded(kCount);
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  for (int step = 0; step < 100000; ++step) {
    const size_t which = source.word() % kCount;
    if (kSteps[which](source) >= 0) ++succeeded[which];
    if (step % 1000 == 0) swprobe::forget();
  }
  testing::internal::GetCapturedStdout();
  testing::internal::GetCapturedStderr();
  // One of them says -1 whatever happens.
  size_t never = 0;
  for (const size_t count : succeeded) never += count == 0 ? 1 : 0;
  EXPECT_EQ(never, 1u) << "the arguments should reach the chip now and then";
}

}  // namespace
