// SPDX-License-Identifier: MIT
// Reading a port's speed and duplex. Both readers ask the same questions in
// the same order; they differ in which half of the mode is the caller's.
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

#include "port/advertised.h"
#include "port/report.h"
#include "port/speed_code.h"

namespace {

using swctl::report_read;

constexpr uint32_t kLinkUp = 1;

struct Mode {
  int32_t result;
  // False: the SDK has put its speed code and duplex where it was told to.
  // True: there is no such mode yet, only what the port advertises.
  bool advertised;
  uint32_t ability;
};

constexpr Mode sdk_mode(int32_t result) {
  return {result, false, 0};
}

Mode advertised_mode(const char *function, int32_t port) {
  uint32_t ability = 0;
  const int32_t result = swctl::read_advertised(function, port, &ability);
  return {result, true, ability};
}

Mode read_mode(const char *function, uint32_t unit, int32_t port, uint32_t *speed,
               uint32_t *duplex) {
  uint32_t link = 0;
  int32_t result = report_read(rtk_port_link_get(unit, port, &link));
  if (result < 0) return sdk_mode(result);
  if (link == kLinkUp)
    return sdk_mode(report_read(rtk_port_speedDuplex_get(unit, port, speed, duplex)));

  uint32_t autonegotiation = 0;
  result = report_read(rtk_port_phyAutoNegoEnable_get(unit, port, &autonegotiation));
  if (result < 0) return sdk_mode(result);
  if (autonegotiation != 0) return advertised_mode(function, port);

  uint32_t flow_control = 0;
  return sdk_mode(
      report_read(rtk_port_phyForceModeAbility_get(unit, port, speed, duplex, &flow_control)));
}

constexpr uint32_t advertised_speed(uint32_t ability) {
  const bool ten = (ability & (USER_ABILITY_10_HALF | USER_ABILITY_10_FULL)) != 0;
  const bool hundred = (ability & (USER_ABILITY_100_HALF | USER_ABILITY_100_FULL)) != 0;
  const bool gigabit = (ability & USER_ABILITY_1000_FULL) != 0;
  if (ten && !hundred) return USER_SPEED_10;
  if (hundred && !ten) return USER_SPEED_100;
  if (gigabit && !ten) return USER_SPEED_1000;
  return USER_SPEED_UNKNOWN;
}

constexpr uint32_t advertised_duplex(uint32_t ability) {
  const bool half = (ability & (USER_ABILITY_10_HALF | USER_ABILITY_100_HALF)) != 0;
  const bool full =
      (ability & (USER_ABILITY_10_FULL | USER_ABILITY_100_FULL | USER_ABILITY_1000_FULL)) != 0;
  if (half == full) return USER_DUPLEX_BOTH;
  return half ? USER_DUPLEX_HALF : USER_DUPLEX_FULL;
}

}  // namespace

int32_t user_port_speed_max(uint32_t, uint32_t, int32_t, uint32_t *speed) {
  *speed = USER_SPEED_1000;
  return 0;
}

int32_t user_port_speed_get(uint32_t, uint32_t unit, int32_t port, uint32_t *speed) {
  uint32_t duplex = 0;
  const Mode mode = read_mode("user_port_speed_get", unit, port, speed, &duplex);
  if (mode.result < 0) return mode.result;
  *speed = mode.advertised ? advertised_speed(mode.ability) : swctl::generic_speed(*speed);
  return mode.result;
}

int32_t user_port_duplex_get(uint32_t, uint32_t unit, int32_t port, uint32_t *duplex) {
  uint32_t speed = 0;
  const Mode mode = read_mode("user_port_duplex_get", unit, port, &speed, duplex);
  if (mode.result >= 0 && mode.advertised) *duplex = advertised_duplex(mode.ability);
  return mode.result;
}
