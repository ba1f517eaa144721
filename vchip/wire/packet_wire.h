// SPDX-License-Identifier: MIT
// An interface of Linux, by a packet socket.
#ifndef VCHIPD_PACKET_WIRE_H
#define VCHIPD_PACKET_WIRE_H

#include "wire_words.h"

namespace vchipd {

// "NAME[:PEER]": a pair that the wire makes, and removes at its end.
std::unique_ptr<Wire> make_veth_wire(const std::string &rest, const Place &place);
// "NAME": an interface that is there.
std::unique_ptr<Wire> make_netdev_wire(const std::string &rest, const Place &place);

}  // namespace vchipd

#endif
