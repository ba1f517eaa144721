// SPDX-License-Identifier: MIT
#ifndef VCHIPD_FAULT_H
#define VCHIPD_FAULT_H

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace vchipd {

// Why something cannot be had: what() names it.
struct Fault : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Wrong words on the command line or in a request.
struct WrongWords : Fault {
  using Fault::Fault;
};

// The system has refused, with what errno says.
inline Fault system_fault(const std::string &what) {
  return Fault(what + ": " + strerror(errno));
}

// The same for want of a right: `what` is not allowed.
inline Fault no_right(const std::string &wire, const std::string &what) {
  return Fault(wire + ": no right to " + what +
               "; run as root, or inside 'unshare -Urn', or use unix:, tcp: or pcap:, which need "
               "no right");
}

}  // namespace vchipd

#endif
