// SPDX-License-Identifier: MIT
#include <string>

#include "document/findings.h"
#include "rate/rate_block.h"

namespace vchip {
namespace {

void check_bucket(Findings &findings, const std::string &name, const Bucket &bucket,
                  const Fill &fill) {
  const std::string level = name + "bucket.level";
  findings.any(level.c_str(), bucket.level);
  findings.any((name + "bucket.time").c_str(), bucket.time);
  if (bucket.level != kFull) findings.at_most(level.c_str(), bucket.level, fill.size);
}

void check_bandwidth(Findings &findings, const std::string &name, const Bandwidth &limit) {
  findings.flag((name + "limited").c_str(), limit.limited);
  findings.at_most((name + "rate").c_str(), limit.rate, kMaxBandwidth);
  check_bucket(findings, name, limit.bucket, RateBlock::fill_of(limit));
}

}  // namespace

// The CPU port has no storm control: its words stay as after power-on.
void RateBlock::check_storm(Findings &findings, int32_t port, uint32_t type) const {
  const Storm &own = storm(port, type);
  const bool front = port != VCHIP_CPU_PORT;
  findings.at_most("controlled", own.controlled, front ? 1 : 0);
  findings.at_most("selection", own.selection, front ? 1 : 0);
  findings.in("rate", own.rate, front ? 0 : kMaxStormRate, kMaxStormRate);
  findings.at_most("exceeded", own.exceeded, front ? 1 : 0);
  check_bucket(findings, "", own.bucket, storm_fill(port, type));
}

void RateBlock::check(Findings &findings) const {
  findings.at_most("storm_mode", storm_mode_, kCountPackets);
  findings.each_at_most("storm_burst", storm_burst_, kMaxStormBurst);
  findings.each("ports", ports_, [&](const Port &port, size_t number) {
    check_bandwidth(findings, "ingress.", port.ingress);
    check_bandwidth(findings, "egress.", port.egress);
    findings.each("storm", port.storm, [&](const Storm &, size_t type) {
      check_storm(findings, static_cast<int32_t>(number), static_cast<uint32_t>(type));
    });
  });
}

}  // namespace vchip
