// SPDX-License-Identifier: MIT
/**
 * @file wires.h
 * @brief Where a vchipd listens, for programs that speak with it.
 *
 * vchipd serves one unit of an image and listens on a socket beside the image,
 * a stream of the Unix domain. A request is one line of JSON, and so is the
 * answer; then vchipd closes the connection.
 *
 *     {"do":"wires"}                             {"wires":[{"port":0,"wire":"veth:sw1",...}]}
 *     {"do":"wire","port":2,"wire":"tap:sw3"}    {}
 *     {"do":"wire","port":2,"wire":"none"}       {}
 *     {"do":"time","nanoseconds":1000}           {"moved":true}
 *     {"do":"capture","ports":[0,1],"filter":"arp","drops":true,"count":3}    {}
 *
 * After the answer to a capture the connection stays: a file of the kind pcapng
 * follows, of the frames that pass from then on, until so many have been written or the
 * caller closes its half. No list of ports: all of them; what is left out of the other
 * words means all frames, without the reasons for drops, without end.
 *
 * The chip's clock is moved by a vchipd with --virtual-time alone. Ports are chip
 * ports. A request that is refused is answered {"error":"why"}.
 */
#ifndef SWCTL_VCHIP_WIRES_H
#define SWCTL_VCHIP_WIRES_H

#include <cstdint>
#include <string>

namespace vchip {

// The name of the socket of the vchipd that serves a unit of an image.
inline std::string wires_socket(const std::string &image, uint32_t unit) {
  return image + ".wires" + std::to_string(unit);
}

}  // namespace vchip

#endif
