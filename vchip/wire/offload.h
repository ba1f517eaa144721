// SPDX-License-Identifier: MIT
// What a sender left to its interface: checksums, and the division of a long
// packet into frames.
#ifndef VCHIPD_OFFLOAD_H
#define VCHIPD_OFFLOAD_H

#include <cstdint>
#include <functional>

namespace vchipd {

// What a packet socket tells of a packet: the header of VIRTIO 1.2, section 5.1.6,
// in the machine's byte order.
struct OffloadHeader {
  uint8_t flags;
  uint8_t division;      // kDivided...
  uint16_t header_size;  // a guess of all headers' bytes
  uint16_t division_size;
  uint16_t checksum_start;
  uint16_t checksum_offset;
};
static_assert(sizeof(OffloadHeader) == 10);

inline constexpr uint8_t kNeedsChecksum = 1;
inline constexpr uint8_t kDividedNot = 0;
inline constexpr uint8_t kDividedTcp4 = 1;
inline constexpr uint8_t kDividedTcp6 = 4;
inline constexpr uint8_t kDividedUdp = 5;
inline constexpr uint8_t kDividedEcn = 0x80;  // a flag beside it
inline constexpr uint16_t kTcpChecksum = 16;  // offsets in their headers
inline constexpr uint16_t kUdpChecksum = 6;

// Writes the checksum that the header speaks of. False if it lies outside.
bool complete_checksum(const OffloadHeader &header, uint8_t *frame, uint32_t length);

// Divides a packet of TCP or UDP into frames as its sender would have sent them.
// `place(length)` gives the memory of each. False: it cannot be divided.
bool divide(const OffloadHeader &header, const uint8_t *packet, uint32_t length,
            const std::function<uint8_t *(uint32_t length)> &place);

}  // namespace vchipd

#endif
