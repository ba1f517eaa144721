// SPDX-License-Identifier: MIT
// An interface of Linux whose frames come from and go to the port.
#ifndef VCHIPD_TAP_WIRE_H
#define VCHIPD_TAP_WIRE_H

#include "wire_words.h"

namespace vchipd {

// "NAME": the interface is made, and is gone with the wire.
std::unique_ptr<Wire> make_tap_wire(const std::string &rest, const Place &place);

}  // namespace vchipd

#endif
