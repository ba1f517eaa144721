// SPDX-License-Identifier: MIT
#include "commands.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>
#include <swctl-vchip/view.h>
#include <swctl/platform/port_records.h>

#include <cstdio>

#include "images.h"
#include "port_names.h"
#include "usage_error.h"
#include "words.h"

namespace vchipctl {
namespace {

constexpr uint32_t kStormTypes = 5;

vchip_partner_t parse_partner(const LinkWords &words) {
  if (words.partner && words.forced) throw UsageError("--partner and --forced exclude each other");
  if (words.forced) return {0, parse_mode(*words.forced)};
  if (words.partner) return {1, parse_abilities(*words.partner)};
  return {1, VCHIP_ABILITY_USUAL};
}

void expect_combo(uint32_t unit, int32_t port) {
  if (vchip::port(unit, port).combo) return;
  throw UsageError("port '" + port_name(port) +
                   "' has no fibre side: expected a combo port, 25 or 26");
}

// Messages of management programs end their line themselves.
std::string one_line(std::string text) {
  while (!text.empty() && text.back() == '\n') text.pop_back();
  return text;
}

void show_trace() {
  const vchip::PlatformView platform = vchip::platform();
  printf("trace is %s, %zu records\n", platform.trace_on ? "on" : "off", platform.trace.size());
  for (const vchip::TraceRecord &record : platform.trace)
    printf("%s %s\n", one_line(record.location).c_str(), one_line(record.message).c_str());
}

}  // namespace

void reset(const std::vector<std::string> &images) {
  for_each_image(images, [](const std::string &image) {
    open_image(image);
    expect_done(vchip_reset());
  });
}

void link_up(const LinkWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const vchip_partner_t partner = parse_partner(words);
  for (const int32_t port : parse_ports(words.ports))
    expect_done(vchip_cable_plug(unit, port, &partner));
}

void link_down(const LinkWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  for (const int32_t port : parse_ports(words.ports)) expect_done(vchip_cable_pull(unit, port));
}

void medium(const MediumWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const uint32_t side = parse_medium(words.medium);
  const std::vector<int32_t> ports = parse_ports(words.ports);
  for (const int32_t port : ports) expect_combo(unit, port);
  for (const int32_t port : ports) expect_done(vchip_medium_set(unit, port, side));
}

void pair(const PairWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const std::vector<uint32_t> pairs = parse_pairs(words.pairs);
  const uint32_t faults = parse_faults(words.faults);
  const uint32_t length = parse_word(words.length, "length", UINT32_MAX);
  for (const int32_t port : parse_ports(words.ports))
    for (const uint32_t each : pairs) expect_done(vchip_pair_set(unit, port, each, faults, length));
}

void counter(const CounterWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const std::vector<int32_t> ports = parse_ports(words.ports);
  const uint32_t counter = parse_word(words.counter, "counter", CHIP_PORT_COUNTERS - 1);
  const uint64_t number = parse_number(words.number, "number", UINT64_MAX);
  if (words.change != "set" && words.change != "add")
    throw UsageError("no counter command '" + words.change + "': expected set or add");
  const auto change = words.change == "set" ? vchip_counter_set : vchip_counter_add;
  for (const int32_t port : ports) expect_done(change(unit, port, counter, number));
}

void storm(const StormWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const uint32_t type = parse_word(words.type, "storm type", kStormTypes - 1);
  for (const int32_t port : parse_ports(words.ports))
    expect_done(vchip_storm_exceed(unit, port, type));
}

void trace(const std::string &word) {
  if (word == "on") return expect_done(vchip_trace_set(1));
  if (word == "off") return expect_done(vchip_trace_set(0));
  if (word == "show") return show_trace();
  throw UsageError("no trace command '" + word + "': expected on, off or show");
}

}  // namespace vchipctl
