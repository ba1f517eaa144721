// SPDX-License-Identifier: MIT
#include "port/mode.h"

#include <swctl/port.h>

#include <optional>

namespace swsh {
namespace {

bool is_negotiating(const Context &context, const Port &port) {
  return read_port(context, port, SWSH_CALL(user_port_autoneg_get)) != 0;
}

bool has_link(const Context &context, const Port &port) {
  return read_port(context, port, SWSH_CALL(user_fiberport_link_status_get)) == 1;
}

uint32_t read_ability(const Context &context, const Port &port) {
  return read_port(context, port, SWSH_CALL(user_port_ability_advert_get));
}

// What the library would go by, and read on the wrong unit: none if it goes by
// something else, or if the unit is right.
std::optional<uint32_t> ability_in_place(const Context &context, const Port &port) {
  const bool library_is_right =
      context.unit == 0 || has_link(context, port) || !is_negotiating(context, port);
  if (library_is_right) return std::nullopt;
  return read_ability(context, port);
}

bool has(uint32_t ability, uint32_t any_of) {
  return (ability & any_of) != 0;
}

uint32_t advertised_speed(uint32_t ability) {
  const bool ten = has(ability, USER_ABILITY_10_HALF | USER_ABILITY_10_FULL);
  const bool hundred = has(ability, USER_ABILITY_100_HALF | USER_ABILITY_100_FULL);
  if (ten && !hundred) return USER_SPEED_10;
  if (hundred && !ten) return USER_SPEED_100;
  if (has(ability, USER_ABILITY_1000_FULL) && !ten) return USER_SPEED_1000;
  return USER_SPEED_UNKNOWN;
}

uint32_t advertised_duplex(uint32_t ability) {
  const bool half = has(ability, USER_ABILITY_10_HALF | USER_ABILITY_100_HALF);
  const bool full =
      has(ability, USER_ABILITY_10_FULL | USER_ABILITY_100_FULL | USER_ABILITY_1000_FULL);
  if (half == full) return USER_DUPLEX_BOTH;
  return half ? USER_DUPLEX_HALF : USER_DUPLEX_FULL;
}

}  // namespace

uint32_t read_speed(const Context &context, const Port &port) {
  const std::optional<uint32_t> ability = ability_in_place(context, port);
  if (ability) return advertised_speed(*ability);
  return read_port(context, port, SWSH_CALL(user_port_speed_get));
}

uint32_t read_duplex(const Context &context, const Port &port) {
  const std::optional<uint32_t> ability = ability_in_place(context, port);
  if (ability) return advertised_duplex(*ability);
  return read_port(context, port, SWSH_CALL(user_port_duplex_get));
}

bool read_pause(const Context &context, const Port &port) {
  constexpr uint32_t kBoth = USER_ABILITY_PAUSE | USER_ABILITY_ASYMMETRIC_PAUSE;
  if (context.unit != 0 && is_negotiating(context, port))
    return (read_ability(context, port) & kBoth) == kBoth;
  return read_port(context, port, SWSH_CALL(user_port_pause_get)) != 0;
}

}  // namespace swsh
