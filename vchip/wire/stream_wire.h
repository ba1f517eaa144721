// SPDX-License-Identifier: MIT
// A stream of frames, each with its length in front: four bytes, the highest first.
#ifndef VCHIPD_STREAM_WIRE_H
#define VCHIPD_STREAM_WIRE_H

#include "wire_words.h"

namespace vchipd {

// "PATH", a socket of the Unix domain; "ADDR:PORT", of TCP. The wire connects if
// somebody listens there, and listens itself if nobody does.
std::unique_ptr<Wire> make_unix_wire(const std::string &rest, const Place &place);
std::unique_ptr<Wire> make_tcp_wire(const std::string &rest, const Place &place);

}  // namespace vchipd

#endif
