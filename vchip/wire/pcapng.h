// SPDX-License-Identifier: MIT
// Blocks of a capture file of the kind pcapng, as bytes in this machine's order.
#ifndef VCHIPD_PCAPNG_H
#define VCHIPD_PCAPNG_H

#include <cstdint>
#include <string>
#include <vector>

namespace vchipd {

using Bytes = std::vector<uint8_t>;

// A frame that was seen at a port.
struct SeenFrame {
  int32_t port;
  bool outbound;  // it has left the port
  const uint8_t *bytes;
  uint32_t length;
  uint64_t time;        // nanoseconds
  std::string comment;  // empty for none
};

// The head of a file.
void put_section(Bytes &out, const std::string &program);
// An interface of Ethernet with stamps in nanoseconds; the first is number 0.
void put_interface(Bytes &out, const std::string &name, const std::string &description,
                   const std::string &filter);
// `missed` frames of the interface before this one are not in the file.
void put_frame(Bytes &out, uint32_t interface, const SeenFrame &frame, uint64_t missed);
// What an interface has seen in all, and how much of that is not in the file.
void put_statistics(Bytes &out, uint32_t interface, uint64_t time, uint64_t seen, uint64_t missed);

}  // namespace vchipd

#endif
