// SPDX-License-Identifier: MIT
#include <swctl-vchip/rate_view.h>

#include "chip/viewing.h"

namespace vchip {

RateView rates(uint32_t unit) {
  Viewing chip;
  const RateBlock &rate = chip.unit(unit).rate;
  return {rate.storm_mode(), {rate.storm_burst().begin(), rate.storm_burst().end()}};
}

PortRateView port_rates(uint32_t unit, int32_t port) {
  Viewing chip;
  const RateBlock &rate = chip.unit(unit).rate;
  expect_port(port);
  const Bandwidth &ingress = rate.ingress(port);
  const Bandwidth &egress = rate.egress(port);
  PortRateView view = {ingress.limited != 0, ingress.rate, egress.limited != 0, egress.rate, {}};
  for (uint32_t type = 0; type < kStormTypes; ++type) {
    const Storm &storm = rate.storm(port, type);
    view.storm.push_back({storm.controlled != 0, storm.selection, storm.rate, storm.exceeded != 0});
  }
  return view;
}

}  // namespace vchip
