// SPDX-License-Identifier: MIT
#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>
#include <swctl/port.h>

#include "cases.h"
#include "sweep.h"

namespace sweep {
namespace {

constexpr uint32_t kLead = 1;
constexpr uint32_t kUnit = 1;
constexpr int32_t kPort = 3;
constexpr int32_t kCombo = 24;
constexpr int32_t kOther = 5;

uint32_t word;

void plug(int32_t port) {
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  vchip_cable_plug(kUnit, port, &partner);
}

void readers(const char *variant) {
  SWEEP(user_port_speed_get, variant, 0, kLead, kUnit, kPort, &word);
  SWEEP(user_port_duplex_get, variant, 0, kLead, kUnit, kPort, &word);
  SWEEP(user_port_pause_get, variant, 0, kLead, kUnit, kPort, &word);
}

// The chip goes on from what was set: each set of arguments begins again.
void setters(const char *variant, uint32_t autonegotiation, uint32_t ability) {
  const auto begin = [&] {
    start_over();
    user_port_ability_advert_set(kLead, kUnit, kPort, &ability);
    user_port_autoneg_set(kLead, kUnit, kPort, autonegotiation);
  };
  begin();
  SWEEP(user_port_speed_set, variant, 0, kLead, kUnit, kPort, USER_SPEED_100, 1);
  begin();
  SWEEP(user_port_duplex_set, variant, 0, kLead, kUnit, kPort, 1, 1);
}

void modes() {
  start_over();
  plug(kPort);
  readers("link up");
  start_over();
  readers("negotiating, link down");
  user_port_autoneg_set(kLead, kUnit, kPort, 0);
  readers("forced, link down");
  setters("forced", 0, VCHIP_ABILITY_100_FULL);
  setters("negotiating", 1, VCHIP_ABILITY_100_FULL);
  setters("negotiating, with pause", 1, VCHIP_ABILITY_100_FULL | VCHIP_ABILITY_PAUSE);
}

// A read that fails leaves what the caller has: the same as the chip would say.
void link_status(const char *variant, int32_t port, uint32_t before) {
  uint32_t status = 0;
  sweep({"user_port_link_status_get", variant, 0, [&] {
           status = before;
           return user_port_link_status_get(kLead, kUnit, port, &status);
         }});
}

void links() {
  start_over();
  link_status("copper down", kPort, 0);
  vchip_medium_set(kUnit, kCombo, 1);
  link_status("fibre down", kCombo, 0);
  plug(kPort);
  link_status("copper up", kPort, 1);
  plug(kCombo);
  link_status("fibre up", kCombo, 1);
}

void storms() {
  uint32_t enable = 0;
  start_over();
  SWEEP(user_rate_stormCountMode_set, "count mode 0", 0, kLead, kUnit, 0);
  SWEEP(user_rate_bandwidth_set, "off", 0, kLead, kUnit, kPort, 2, 0);
  vchip_storm_exceed(kUnit, kPort, 4);
  SWEEP(user_rate_stormExceedFlag_get, "the last", 0, kLead, kUnit, kPort, &word, &enable);
  vchip_storm_exceed(kUnit, kPort, 1);
  SWEEP(user_rate_stormExceedFlag_get, "the second", 0, kLead, kUnit, kPort, &word, &enable);
}

void learning() {
  for (const uint32_t mode : {USER_LEARN_RESTORE, USER_LEARN_FORWARD, USER_LEARN_TO_CPU,
                              USER_LEARN_COPY_CPU, USER_LEARN_ON}) {
    start_over();
    SWEEP(user_port_learn_set, "", 0, kLead, 0, kPort, mode);
  }
  start_over();
  user_port_learn_set(kLead, 0, kPort, USER_LEARN_DISCARD);
  start_library_over();
  SWEEP(user_port_learn_set, "kept", 0, kLead, 0, kPort, USER_LEARN_TO_CPU);
}

void counters() {
  user_counter_t value = {};
  start_over();
  for (const int32_t kind : {USER_STAT_CHECKSUM, USER_STAT_FRAGMENTS})
    SWEEP(user_stat_port_get, "one counter", 0, kLead, kUnit, kPort, kind, &value);
  SWEEP(user_stat_port_get, "errors", 0, kLead, kUnit, kPort, USER_STAT_ERRORS, &value);
  SWEEP(user_ulf_flood_port_add_remove, "remove", 0, kLead, kUnit, kPort, 0);
}

void double_tag() {
  start_over();
  SWEEP(user_port_dtag_mode_set, "is off", 0, kLead, kUnit, kPort, USER_DTAG_OFF);
  SWEEP(user_port_dtag_mode_set, "first on", 0, kLead, kUnit, kPort, USER_DTAG_ON);
  SWEEP(user_port_dtag_mode_set, "is on", 0, kLead, kUnit, kPort, USER_DTAG_ON);
  SWEEP(user_port_dtag_mode_set, "second on", 0, kLead, kUnit, kOther, USER_DTAG_ON);
  SWEEP(user_port_dtag_mode_set, "one of two off", 0, kLead, kUnit, kOther, USER_DTAG_OFF);
  SWEEP(user_port_dtag_mode_set, "last off", 0, kLead, kUnit, kPort, USER_DTAG_OFF);
}

}  // namespace

void port_cases() {
  modes();
  links();
  storms();
  learning();
  counters();
  double_tag();
}

}  // namespace sweep
