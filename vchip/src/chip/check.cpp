// SPDX-License-Identifier: MIT
// Looks at every word of every block, and at what blocks say together.
#include "chip/check.h"

#include <utility>

#include "document/findings.h"
#include "image/sparse.h"

namespace vchip {
namespace {

constexpr int32_t kOfTheBoard = -1;

template <typename Block>
void check_block(std::vector<Fault> &faults, int32_t unit, const char *name, const Block &block) {
  Findings findings;
  block.check(findings);
  for (const Finding &finding : findings.all())
    faults.push_back({unit, name, finding.word, finding.text});
}

// A VLAN obeys an instance that is there.
void check_instances(std::vector<Fault> &faults, int32_t number, const Unit &unit) {
  for (uint32_t vid = kFirstVlan; vid <= kLastVlan; ++vid) {
    const Vlan &vlan = unit.vlan.vlan(vid);
    if (vlan.exists == 0 || vlan.stg >= kInstances || unit.stp.exists(vlan.stg)) continue;
    faults.push_back({number, "vlan", "vlans[" + std::to_string(vid) + "].stg",
                      std::to_string(vlan.stg) + ", but there is no such instance"});
  }
}

void check_time(std::vector<Fault> &faults, int32_t unit, const char *block,
                const std::string &word, uint64_t time, uint64_t clock) {
  if (time > clock)
    faults.push_back({unit, block, word + ".bucket.time",
                      std::to_string(time) + ", after the clock's " + std::to_string(clock)});
}

// No bucket was filled at a time that is to come.
void check_times(std::vector<Fault> &faults, int32_t number, const Unit &unit) {
  const uint64_t clock = unit.time.clock();
  for (uint32_t meter = 0; meter < VCHIP_METERS; ++meter)
    check_time(faults, number, "meter", "meters[" + std::to_string(meter) + "]",
               unit.meter.bucket(meter).time, clock);
  for (int32_t port = 0; port < VCHIP_PORTS; ++port) {
    const std::string name = "ports[" + std::to_string(port) + "]";
    check_time(faults, number, "rate", name + ".ingress", unit.rate.ingress(port).bucket.time,
               clock);
    check_time(faults, number, "rate", name + ".egress", unit.rate.egress(port).bucket.time, clock);
    for (uint32_t type = 0; type < kStormTypes; ++type)
      check_time(faults, number, "rate", name + ".storm[" + std::to_string(type) + "]",
                 unit.rate.storm(port, type).bucket.time, clock);
  }
}

// The units have one clock.
void check_clocks(std::vector<Fault> &faults, const State &state) {
  const uint64_t first = state.units[0].time.clock();
  for (uint32_t unit = 1; unit < VCHIP_UNITS; ++unit) {
    const uint64_t clock = state.units[unit].time.clock();
    if (clock != first)
      faults.push_back({static_cast<int32_t>(unit), "time", "clock",
                        std::to_string(clock) + ", but unit 0 has " + std::to_string(first)});
  }
}

}  // namespace

std::vector<Fault> faults_of(const State &state) {
  std::vector<Fault> faults;
  check_block(faults, kOfTheBoard, "platform", state.platform);
  check_block(faults, kOfTheBoard, "rules", state.rules);
  for (uint32_t number = 0; number < VCHIP_UNITS; ++number) {
    const auto unit = static_cast<int32_t>(number);
    each_block(state.units[number], [&](const char *name, const auto &block) {
      check_block(faults, unit, name, block);
    });
    check_instances(faults, unit, state.units[number]);
    check_times(faults, unit, state.units[number]);
  }
  check_clocks(faults, state);
  return faults;
}

void recover_copy(State &state) {
  const uint32_t writer = std::exchange(state.header.writer, kNoWriter);
  if (writer == kNoWriter) return;
  ++state.header.interrupted_writes;
  if (writer == kResetting) {
    zero_private(&state.platform, sizeof(State) - sizeof(Header));
    power_on(state);
  } else if (is_sound(state)) {
    repair_state(state);
  }
}

}  // namespace vchip
