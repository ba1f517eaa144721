// SPDX-License-Identifier: MIT
// What a call through the library costs over the same SDK calls made directly,
// both in one run and against an SDK that does nothing.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include <benchmark/benchmark.h>

#include "pairs.h"

namespace {

constexpr uint32_t kLead = 0;
constexpr uint32_t kUnit = 1;
constexpr int32_t kPort = 5;

// The pass-through limit holds against a call to nothing, which costs about
// two nanoseconds, so one more jump shows.
constexpr double kPassThroughLimit = 1.6;

// The body is a template argument, so that it is in the loop itself and
// nothing but the calls is timed.
template <void (*Body)()>
void loop(benchmark::State &state) {
  for (auto _ : state) Body();
}

void loopback_get_library() {
  uint32_t enable;
  benchmark::DoNotOptimize(user_port_loopback_get(kLead, kUnit, kPort, &enable));
}
void loopback_get_direct() {
  uint32_t enable;
  benchmark::DoNotOptimize(rtk_diag_portMacLocalLoopbackEnable_get(kUnit, kPort, &enable));
}

void loopback_set_library() {
  benchmark::DoNotOptimize(user_port_loopback_set(kLead, kUnit, kPort, 1));
}
void loopback_set_direct() {
  benchmark::DoNotOptimize(rtk_diag_portMacLocalLoopbackEnable_set(kUnit, kPort, 1));
}

void init_library() {
  benchmark::DoNotOptimize(user_port_init(kLead, kUnit));
}
void init_direct() {
  benchmark::DoNotOptimize(rtk_switch_maxPktLenTagLenCntIncEnable_set(kUnit, 0));
  benchmark::DoNotOptimize(rtk_rate_stormControlRateMode_set(kUnit, 0));
  for (uint32_t type = 2; type <= 4; ++type) {
    benchmark::DoNotOptimize(rtk_rate_stormControlBurstSize_set(kUnit, type, 100));
  }
}

void link_status_library() {
  uint32_t status = 0;
  benchmark::DoNotOptimize(user_port_link_status_get(kLead, kUnit, kPort, &status));
}
void link_status_direct() {
  uint32_t status = 0;
  uint32_t medium = 0;
  benchmark::DoNotOptimize(rtk_port_link_get(kUnit, kPort, &status));
  benchmark::DoNotOptimize(rtk_port_phyComboPortMedia_get(kUnit, kPort, &medium));
}

// A port that is down and forced: the SDK that does nothing leaves every
// variable at 0.
void read_mode_direct() {
  uint32_t word[5] = {};
  benchmark::DoNotOptimize(rtk_port_link_get(kUnit, kPort, &word[0]));
  benchmark::DoNotOptimize(rtk_port_phyAutoNegoEnable_get(kUnit, kPort, &word[1]));
  benchmark::DoNotOptimize(
      rtk_port_phyForceModeAbility_get(kUnit, kPort, &word[2], &word[3], &word[4]));
}
void speed_get_library() {
  uint32_t speed = 0;
  benchmark::DoNotOptimize(user_port_speed_get(kLead, kUnit, kPort, &speed));
}
void duplex_get_library() {
  uint32_t duplex = 0;
  benchmark::DoNotOptimize(user_port_duplex_get(kLead, kUnit, kPort, &duplex));
}

void write_mode_direct() {
  uint32_t word[4] = {};
  benchmark::DoNotOptimize(rtk_port_phyAutoNegoEnable_get(kUnit, kPort, &word[0]));
  benchmark::DoNotOptimize(
      rtk_port_phyForceModeAbility_get(kUnit, kPort, &word[1], &word[2], &word[3]));
  benchmark::DoNotOptimize(rtk_port_phyAutoNegoEnable_set(kUnit, kPort, 0));
  benchmark::DoNotOptimize(rtk_port_phyForceModeAbility_set(kUnit, kPort, 1, 1, word[3]));
}
void speed_set_library() {
  benchmark::DoNotOptimize(user_port_speed_set(kLead, kUnit, kPort, 100, 1));
}
void duplex_set_library() {
  benchmark::DoNotOptimize(user_port_duplex_set(kLead, kUnit, kPort, 1, 1));
}

const Pair kPairs[] = {
    {"user_port_loopback_get", loop<loopback_get_library>, loop<loopback_get_direct>,
     kPassThroughLimit},
    {"user_port_loopback_set", loop<loopback_set_library>, loop<loopback_set_direct>,
     kPassThroughLimit},
    {"user_port_init", loop<init_library>, loop<init_direct>, 0},
    {"user_port_link_status_get", loop<link_status_library>, loop<link_status_direct>, 0},
    {"user_port_speed_get", loop<speed_get_library>, loop<read_mode_direct>, 0},
    {"user_port_duplex_get", loop<duplex_get_library>, loop<read_mode_direct>, 0},
    {"user_port_speed_set", loop<speed_set_library>, loop<write_mode_direct>, 0},
    {"user_port_duplex_set", loop<duplex_set_library>, loop<write_mode_direct>, 0},
};

}  // namespace

int main(int argc, char **argv) {
  return run_pairs(argc, argv, kPairs);
}
