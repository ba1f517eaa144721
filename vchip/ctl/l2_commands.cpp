// SPDX-License-Identifier: MIT
// What stations do to the address table.
#include <swctl-vchip/vchip.h>

#include <chrono>
#include <cstring>

#include "commands.h"
#include "os/json.h"
#include "usage_error.h"
#include "wires_client.h"
#include "words.h"

namespace vchipctl {
namespace {

vchip_station_t parse_station(const StationWords &words) {
  vchip_station_t station = {};
  const std::vector<uint8_t> mac = parse_mac(words.mac);
  memcpy(station.mac, mac.data(), sizeof station.mac);
  station.vid = parse_word(words.vlan, "VLAN", 4095);
  station.trunk = static_cast<int32_t>(parse_word(words.trunk, "trunk group", 31));
  return station;
}

}  // namespace

void learn(const StationWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const vchip_station_t station = parse_station(words);
  const std::vector<int32_t> ports = parse_ports(words.port);
  if (ports.size() != 1)
    throw UsageError("a station sends into one port, not '" + words.port + "'");
  expect_done(vchip_station_learn(unit, ports.front(), &station));
}

void mark(const MarkWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const std::vector<uint8_t> mac = parse_mac(words.mac);
  const uint32_t vid = parse_word(words.vlan, "VLAN", 4095);
  const uint32_t state = parse_word(words.state, "state word", UINT32_MAX);
  const uint32_t aux = parse_word(words.aux, "aux word", UINT32_MAX);
  expect_done(vchip_l2_mark(unit, vid, mac.data(), state, aux));
}

// The frames that wait belong to the vchipd that serves the unit: if it leaves the
// clock to others, it moves the clock, and with it the frames.
void pass_time(const TimeWords &words) {
  const uint32_t unit = parse_unit(words.unit);
  const uint32_t seconds = parse_word(words.seconds, "number of seconds", UINT32_MAX);
  const auto passed = std::chrono::nanoseconds(std::chrono::seconds(seconds)).count();
  const auto answer =
      ask_if_served(unit, {{"do", "time"}, {"nanoseconds", static_cast<uint64_t>(passed)}});
  if (answer && (*answer)["moved"] == true) return;
  expect_done(vchip_time_pass(unit, seconds));
}

}  // namespace vchipctl
