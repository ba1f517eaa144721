// SPDX-License-Identifier: MIT
#include "document/dump.h"
#include "rate/rate_block.h"

namespace vchip {
namespace {

void dump_bandwidth(Dump &entry, const Bandwidth &bandwidth) {
  entry.flag("limited", bandwidth.limited != 0);
  entry.number("rate", bandwidth.rate);
}

void dump_storm(Dump &entry, const Storm &storm) {
  entry.flag("controlled", storm.controlled != 0);
  entry.number("selection", storm.selection);
  entry.number("rate", storm.rate);
  entry.flag("exceeded", storm.exceeded != 0);
}

}  // namespace

void RateBlock::dump_port(Dump &entry, int32_t port) const {
  entry.number("port", port);
  entry.object("ingress", [&](Dump &limit) { dump_bandwidth(limit, ingress(port)); });
  entry.object("egress", [&](Dump &limit) { dump_bandwidth(limit, egress(port)); });
  if (port == VCHIP_CPU_PORT) return;
  entry.objects("storm", kStormTypes, [&](Dump &type, size_t index) {
    dump_storm(type, storm(port, static_cast<uint32_t>(index)));
  });
}

void RateBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.number("storm_mode", storm_mode_);
    block.text("storm_counts", storm_mode_ == kCountBytes ? "bytes" : "packets");
    block.numbers("storm_burst", {storm_burst_.begin(), storm_burst_.end()});
    block.objects("ports", VCHIP_PORTS, [this](Dump &entry, size_t port) {
      dump_port(entry, static_cast<int32_t>(port));
    });
  });
}

}  // namespace vchip
