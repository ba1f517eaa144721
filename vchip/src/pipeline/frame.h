// SPDX-License-Identifier: MIT
// A frame as it was received, and what is in it. Reading never passes the
// end of the frame; a header that is cut off is not there.
#ifndef VCHIP_PIPELINE_FRAME_H
#define VCHIP_PIPELINE_FRAME_H

#include <cstdint>
#include <cstring>

namespace vchip {

inline constexpr uint32_t kMacBytes = 6;
inline constexpr uint32_t kTagBytes = 4;
inline constexpr uint32_t kAddressBytes = 2 * kMacBytes;  // where the first type is
inline constexpr uint32_t kMinBytes = 60;                 // what a MAC pads to, without FCS
inline constexpr uint32_t kFcsBytes = 4;
inline constexpr uint32_t kShortestFrame = 14;  // both addresses and a type
inline constexpr uint32_t kLongestFrame = 16379;

inline constexpr uint32_t kFirstEtherType = 0x0600;  // below: a length (IEEE 802.3)
inline constexpr uint32_t kTypeIp4 = 0x0800;
inline constexpr uint32_t kTypeArp = 0x0806;
inline constexpr uint32_t kTypeIp6 = 0x86dd;
inline constexpr uint32_t kTypeMacControl = 0x8808;
inline constexpr uint32_t kTypeSlow = 0x8809;
inline constexpr uint32_t kTypeEapol = 0x888e;
inline constexpr uint32_t kTypeLldp = 0x88cc;

inline constexpr uint32_t kProtocolIcmp = 1;
inline constexpr uint32_t kProtocolIgmp = 2;
inline constexpr uint32_t kProtocolTcp = 6;
inline constexpr uint32_t kProtocolUdp = 17;
inline constexpr uint32_t kProtocolIcmp6 = 58;

constexpr uint32_t half_at(const uint8_t *bytes) {
  return static_cast<uint32_t>(bytes[0]) << 8 | bytes[1];
}
constexpr uint32_t word_at(const uint8_t *bytes) {
  return half_at(bytes) << 16 | half_at(bytes + 2);
}
constexpr void put_half(uint8_t *bytes, uint32_t value) {
  bytes[0] = static_cast<uint8_t>(value >> 8);
  bytes[1] = static_cast<uint8_t>(value);
}
constexpr void put_word(uint8_t *bytes, uint32_t value) {
  put_half(bytes, value >> 16);
  put_half(bytes + 2, value);
}
inline uint64_t address_at(const uint8_t *bytes) {
  return static_cast<uint64_t>(half_at(bytes)) << 32 | word_at(bytes + 2);
}

inline constexpr uint64_t kBroadcast = 0xffffffffffff;
inline constexpr uint64_t kReservedAddress = 0x0180c2000000;  // IEEE 802.1Q table 8-1, from here on
constexpr bool is_group(uint64_t address) {
  return (address >> 40 & 1) != 0;
}

enum class Cast : uint32_t { unicast, multicast, broadcast };
constexpr Cast cast_of(uint64_t destination) {
  if (destination == kBroadcast) return Cast::broadcast;
  return is_group(destination) ? Cast::multicast : Cast::unicast;
}

// The bytes from the destination address on, without FCS, and at least as many
// as a MAC sends.
struct Frame {
  const uint8_t *bytes;
  uint32_t length;

  uint64_t destination() const { return address_at(bytes); }
  uint64_t source() const { return address_at(bytes + kMacBytes); }
  uint32_t wire() const { return length + kFcsBytes; }
  // The type or length at an offset; 0 past the end.
  uint32_t type_at(uint32_t offset) const {
    return offset + 2 <= length ? half_at(bytes + offset) : 0;
  }
};

// A tag of IEEE 802.1Q as it was received.
struct Tag {
  bool there;
  bool drop_eligible;
  uint8_t priority;
  uint16_t vid;
};
inline Tag tag_at(const Frame &frame, uint32_t offset) {
  const uint32_t control = frame.type_at(offset + 2);
  return {true, (control >> 12 & 1) != 0, static_cast<uint8_t>(control >> 13),
          static_cast<uint16_t>(control & 0xfff)};
}

enum class Encapsulation : uint32_t { ethernet, snap, llc };

// What follows the tags, up to the ports of TCP and UDP.
struct Layers {
  Encapsulation encapsulation;
  uint32_t type;  // the EtherType; 0 for a frame with a length
  bool ip4;       // an IPv4 or IPv6 header that is whole
  bool ip6;
  bool later_fragment;
  bool fragment;     // a part of a packet, the first or a later one
  bool transport;    // the next header is at `transport_at`
  uint8_t traffic;   // type of service or traffic class
  uint8_t protocol;  // of IPv4, or the last of the headers of IPv6
  uint32_t at;       // of the network header, or of what follows a length
  uint32_t transport_at;
  uint32_t end;              // of the packet, no further than the frame
  uint32_t fragment_offset;  // bytes

  bool ip() const { return ip4 || ip6; }
  bool has_transport(const uint32_t bytes) const {
    return transport && transport_at + bytes <= end;
  }
  bool is(uint32_t wanted, uint32_t bytes) const {
    return protocol == wanted && has_transport(bytes);
  }
};
// `at` is where the type is, after the tags.
Layers layers_of(const Frame &frame, uint32_t at);

}  // namespace vchip

#endif
