// SPDX-License-Identifier: MIT
// The SDK's calls on rates and storm control, and what frames do to them.
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace {

using vchip::at_most;
using vchip::below;
using vchip::change;
using vchip::flag;
using vchip::kMaxBandwidth;
using vchip::kMaxStormRate;
using vchip::kStormTypes;
using vchip::look;
using vchip::not_null;
using vchip::on_front_port;
using vchip::on_port;
using vchip::Unit;

int32_t possible_rate(int32_t rate) {
  return rate >= 0 && rate <= kMaxBandwidth ? 0 : VCHIP_E_VALUE;
}

// Reading and writing a word of storm control.
int32_t get_storm(uint32_t unit, int32_t port, uint32_t type, uint32_t vchip::Storm::*word,
                  uint32_t *value) {
  return look(unit, {on_front_port(port), not_null(value), below(type, kStormTypes)},
              [=](const Unit &chip) {
                *value = chip.rate.storm(port, type).*word;
                return 0;
              });
}

int32_t set_storm(uint32_t unit, int32_t port, uint32_t type, uint32_t vchip::Storm::*word,
                  uint32_t value, uint32_t limit) {
  return change(unit, {on_front_port(port), below(type, kStormTypes), at_most(value, limit)},
                [=](Unit &chip) { chip.rate.storm(port, type).*word = value; });
}

}  // namespace

int32_t rtk_rate_stormControlRateMode_set(uint32_t unit, uint32_t mode) {
  return change(unit, {at_most(mode, vchip::kCountPackets)},
                [=](Unit &chip) { chip.rate.set_storm_mode(mode, chip.time.clock()); });
}

int32_t rtk_rate_stormControlRateMode_get(uint32_t unit, uint32_t *mode) {
  return look(unit, {not_null(mode)}, [=](const Unit &chip) {
    *mode = chip.rate.storm_mode();
    return 0;
  });
}

int32_t rtk_rate_stormControlBurstSize_set(uint32_t unit, uint32_t type, uint32_t size) {
  return change(unit, {below(type, kStormTypes), at_most(size, vchip::kMaxStormBurst)},
                [=](Unit &chip) { chip.rate.set_storm_burst(type, size, chip.time.clock()); });
}

int32_t rtk_rate_igrBandwidthCtrlEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_port(port), flag(enable)},
                [=](Unit &chip) { chip.rate.ingress(port).limited = enable; });
}

int32_t rtk_rate_igrBandwidthCtrlRate_get(uint32_t unit, int32_t port, int32_t *rate) {
  return look(unit, {on_port(port), not_null(rate)}, [=](const Unit &chip) {
    *rate = chip.rate.ingress(port).rate;
    return 0;
  });
}

int32_t rtk_rate_igrBandwidthCtrlRate_set(uint32_t unit, int32_t port, int32_t rate) {
  return change(unit, {on_port(port), possible_rate(rate)}, [=](Unit &chip) {
    vchip::RateBlock::set_rate(chip.rate.ingress(port), rate, chip.time.clock());
  });
}

int32_t rtk_rate_egrBandwidthCtrlEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_port(port), flag(enable)},
                [=](Unit &chip) { chip.rate.egress(port).limited = enable; });
}

int32_t rtk_rate_egrBandwidthCtrlRate_get(uint32_t unit, int32_t port, int32_t *rate) {
  return look(unit, {on_port(port), not_null(rate)}, [=](const Unit &chip) {
    *rate = chip.rate.egress(port).rate;
    return 0;
  });
}

int32_t rtk_rate_egrBandwidthCtrlRate_set(uint32_t unit, int32_t port, int32_t rate) {
  return change(unit, {on_port(port), possible_rate(rate)}, [=](Unit &chip) {
    vchip::RateBlock::set_rate(chip.rate.egress(port), rate, chip.time.clock());
  });
}

int32_t rtk_rate_stormControlEnable_get(uint32_t unit, int32_t port, uint32_t type,
                                        uint32_t *enable) {
  return get_storm(unit, port, type, &vchip::Storm::controlled, enable);
}

int32_t rtk_rate_stormControlEnable_set(uint32_t unit, int32_t port, uint32_t type,
                                        uint32_t enable) {
  return set_storm(unit, port, type, &vchip::Storm::controlled, enable, 1);
}

int32_t rtk_rate_stormControlTypeSel_get(uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t *selection) {
  return get_storm(unit, port, type, &vchip::Storm::selection, selection);
}

int32_t rtk_rate_stormControlTypeSel_set(uint32_t unit, int32_t port, uint32_t type,
                                         uint32_t selection) {
  return set_storm(unit, port, type, &vchip::Storm::selection, selection, 1);
}

int32_t rtk_rate_stormControlRate_get(uint32_t unit, int32_t port, uint32_t type, uint32_t *rate) {
  return get_storm(unit, port, type, &vchip::Storm::rate, rate);
}

int32_t rtk_rate_stormControlRate_set(uint32_t unit, int32_t port, uint32_t type, uint32_t rate) {
  return change(unit, {on_front_port(port), below(type, kStormTypes), at_most(rate, kMaxStormRate)},
                [=](Unit &chip) { chip.rate.set_storm_rate(port, type, rate, chip.time.clock()); });
}

int32_t rtk_rate_stormControlExceed_get(uint32_t unit, int32_t port, uint32_t type,
                                        uint32_t *exceeded) {
  return get_storm(unit, port, type, &vchip::Storm::exceeded, exceeded);
}

int32_t rtk_rate_stormControlExceed_reset(uint32_t unit, int32_t port, uint32_t type) {
  return set_storm(unit, port, type, &vchip::Storm::exceeded, 0, 0);
}

int32_t vchip_storm_exceed(uint32_t unit, int32_t port, uint32_t type) {
  return set_storm(unit, port, type, &vchip::Storm::exceeded, 1, 1);
}
