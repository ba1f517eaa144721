// SPDX-License-Identifier: MIT
// Things that a command names and the chip does not have.
#ifndef SWCTL_SHELL_CHIP_ABSENT_H
#define SWCTL_SHELL_CHIP_ABSENT_H

#include <string>
#include <vector>

#include "fault.h"

namespace swsh {

// Wrong usage, "there is no VLAN 10".
CommandError there_is_no(const std::string &kind, const std::string &which);

// Throws there_is_no() for those of the wanted numbers that are not among the
// others; both lists rise.
void expect_among(const std::string &kind, const std::vector<int64_t> &wanted,
                  const std::vector<int64_t> &there);

// Acts on one thing. A refusal may only mean that it is not there: then
// is_there() says so, and there_is_no() takes the refusal's place.
template <typename Act, typename IsThere>
void act_on(const std::string &kind, const std::string &which, Act act, IsThere is_there) {
  try {
    act();
  } catch (const CommandError &) {
    if (!is_there()) throw there_is_no(kind, which);
    throw;
  }
}

}  // namespace swsh

#endif
