// SPDX-License-Identifier: MIT
// "veth:sw1": words that name a wire, and those that name a port.
#ifndef VCHIPD_WIRE_WORDS_H
#define VCHIPD_WIRE_WORDS_H

#include <cstdint>
#include <memory>
#include <string>

#include "wire.h"

namespace vchipd {

// What a wire may need to know of where it is plugged in.
struct Place {
  std::string image;
  uint32_t unit;
  int32_t port;
};

// The number on the box, "0" for the CPU, or "p27": a chip port. Throws WrongWords.
int32_t parse_port(const std::string &word);
std::string port_name(int32_t port);

// Makes the wire; throws Fault.
std::unique_ptr<Wire> make_wire(const std::string &word, const Place &place);

// The kinds, for a message: "veth:NAME[:PEER], ...".
std::string wire_kinds();

}  // namespace vchipd

#endif
