// SPDX-License-Identifier: MIT
#include "offload.h"

#include <algorithm>
#include <cstring>
#include <linux/if_ether.h>
#include <netinet/in.h>

#include "ethernet.h"

namespace vchipd {
namespace {

constexpr uint32_t kIp4Bytes = 20;
constexpr uint32_t kIp6Bytes = 40;
constexpr uint32_t kUdpBytes = 8;
constexpr uint32_t kTcpBytes = 20;
constexpr uint8_t kFin = 0x01, kPush = 0x08, kCwr = 0x80;

uint32_t get16(const uint8_t *bytes) {
  return uint32_t{bytes[0]} << 8 | bytes[1];
}
uint32_t get32(const uint8_t *bytes) {
  return get16(bytes) << 16 | get16(bytes + 2);
}
void put16(uint8_t *bytes, uint32_t value) {
  bytes[0] = static_cast<uint8_t>(value >> 8);
  bytes[1] = static_cast<uint8_t>(value);
}
void put32(uint8_t *bytes, uint32_t value) {
  put16(bytes, value >> 16);
  put16(bytes + 2, value);
}

// RFC 1071.
uint64_t sum_of(const uint8_t *bytes, uint32_t length) {
  uint64_t sum = 0;
  for (; length > 1; length -= 2, bytes += 2) sum += get16(bytes);
  return length != 0 ? sum + (uint32_t{bytes[0]} << 8) : sum;
}
uint32_t checksum(uint64_t sum) {
  while (sum >> 16 != 0) sum = (sum & 0xFFFF) + (sum >> 16);
  return static_cast<uint32_t>(~sum & 0xFFFF);
}

// Where the parts of a packet are.
struct Parts {
  uint32_t network;    // offset of the IP header
  uint32_t transport;  // of the TCP or UDP header
  uint32_t payload;
  bool is_ip4;
  bool is_tcp;
};

bool find_network(const uint8_t *packet, uint32_t length, Parts &parts) {
  uint32_t place = kMacs;
  while (place + kTagBytes + 2 <= length &&
         (get16(packet + place) == ETH_P_8021Q || get16(packet + place) == ETH_P_8021AD))
    place += kTagBytes;
  parts.network = place + 2;
  const uint32_t type = get16(packet + place);
  parts.is_ip4 = type == ETH_P_IP;
  return parts.is_ip4 || type == ETH_P_IPV6;
}

bool find_parts(const OffloadHeader &header, const uint8_t *packet, uint32_t length, Parts &parts) {
  const uint8_t type = header.division & static_cast<uint8_t>(~kDividedEcn);
  if (length < kMacs + 2 || !find_network(packet, length, parts)) return false;
  parts.is_tcp = type == kDividedTcp4 || type == kDividedTcp6;
  if (!parts.is_tcp && type != kDividedUdp) return false;
  parts.transport = header.checksum_start;
  const uint32_t ip_bytes = parts.is_ip4 ? kIp4Bytes : kIp6Bytes;
  if (parts.transport < parts.network + ip_bytes) return false;
  if (parts.transport + (parts.is_tcp ? kTcpBytes : kUdpBytes) > length) return false;
  const uint32_t bytes = parts.is_tcp ? (packet[parts.transport + 12] >> 4) * 4u : kUdpBytes;
  parts.payload = parts.transport + bytes;
  return header.division_size != 0 && parts.payload <= length;
}

void write_ip(const Parts &parts, uint8_t *frame, uint32_t length, uint32_t number) {
  uint8_t *ip = frame + parts.network;
  if (!parts.is_ip4) {
    put16(ip + 4, length - parts.network - kIp6Bytes);
    return;
  }
  put16(ip + 2, length - parts.network);
  put16(ip + 4, get16(ip + 4) + number);
  put16(ip + 10, 0);
  put16(ip + 10, checksum(sum_of(ip, parts.transport - parts.network)));
}

uint64_t pseudo_header(const Parts &parts, const uint8_t *frame, uint32_t length) {
  const uint8_t *ip = frame + parts.network;
  const uint32_t addresses = parts.is_ip4 ? 12 : 8;
  const uint64_t sum = sum_of(ip + addresses, parts.is_ip4 ? 8 : 32);
  return sum + (parts.is_tcp ? IPPROTO_TCP : IPPROTO_UDP) + (length - parts.transport);
}

void write_transport(const Parts &parts, uint8_t *frame, uint32_t length, uint32_t offset,
                     bool is_last) {
  uint8_t *header = frame + parts.transport;
  if (parts.is_tcp) {
    put32(header + 4, get32(header + 4) + offset);
    if (!is_last) header[13] &= static_cast<uint8_t>(~(kFin | kPush));
    if (offset != 0) header[13] &= static_cast<uint8_t>(~kCwr);
  } else {
    put16(header + 4, length - parts.transport);
  }
  uint8_t *field = header + (parts.is_tcp ? kTcpChecksum : kUdpChecksum);
  put16(field, 0);
  const uint32_t value =
      checksum(pseudo_header(parts, frame, length) + sum_of(header, length - parts.transport));
  put16(field, value == 0 && !parts.is_tcp ? 0xFFFF : value);
}

}  // namespace

bool complete_checksum(const OffloadHeader &header, uint8_t *frame, uint32_t length) {
  const uint32_t field = uint32_t{header.checksum_start} + header.checksum_offset;
  if (field + 2 > length) return false;
  const uint32_t value =
      checksum(sum_of(frame + header.checksum_start, length - header.checksum_start));
  // UDP has no checksum of 0; in TCP both zeros mean the same.
  put16(frame + field, value == 0 ? 0xFFFF : value);
  return true;
}

bool divide(const OffloadHeader &header, const uint8_t *packet, uint32_t length,
            const std::function<uint8_t *(uint32_t length)> &place) {
  Parts parts = {};
  if (!find_parts(header, packet, length, parts)) return false;
  const uint32_t payload = length - parts.payload;
  uint32_t number = 0;
  for (uint32_t offset = 0; offset < payload; offset += header.division_size, ++number) {
    const uint32_t size = std::min<uint32_t>(header.division_size, payload - offset);
    const uint32_t total = parts.payload + size;
    uint8_t *frame = place(total);
    memcpy(frame, packet, parts.payload);
    memcpy(frame + parts.payload, packet + parts.payload + offset, size);
    write_ip(parts, frame, total, number);
    write_transport(parts, frame, total, offset, offset + size == payload);
  }
  return true;
}

}  // namespace vchipd
