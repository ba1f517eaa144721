// SPDX-License-Identifier: MIT
// Captures: one whose frames arrive at their times, and one of what leaves.
#ifndef VCHIPD_CAPTURE_WIRE_H
#define VCHIPD_CAPTURE_WIRE_H

#include "wire_words.h"

namespace vchipd {

// "IN", "IN,OUT" or ",OUT".
std::unique_ptr<Wire> make_capture_wire(const std::string &rest, const Place &place);

}  // namespace vchipd

#endif
