// SPDX-License-Identifier: MIT
#include "pipeline/trunk_hash.h"

#include "unit/state.h"

namespace vchip {
namespace {

constexpr uint32_t kSourcePort = 0x01;
constexpr uint32_t kSourceMac = 0x02;
constexpr uint32_t kDestinationMac = 0x04;
constexpr uint32_t kSourceIp = 0x08;
constexpr uint32_t kDestinationIp = 0x10;
constexpr uint32_t kSourceL4 = 0x20;
constexpr uint32_t kDestinationL4 = 0x40;
constexpr uint32_t kAlgorithm = 0;  // no call chooses another for a trunk
constexpr uint32_t kL4Bytes = 4;

class Hash {
 public:
  void add(uint32_t word) {
    hash_ = (hash_ ^ word) * 0x85ebca6b;
    hash_ ^= hash_ >> 13;
  }
  void add(const uint8_t *bytes, uint32_t count) {
    for (uint32_t at = 0; at < count; at += 2) add(half_at(bytes + at));
  }
  uint32_t value() const { return hash_ ^ hash_ >> 16; }

 private:
  uint32_t hash_ = 0x9747b28c;
};

void add_ip(Hash &hash, const Way &way, uint32_t offset4, uint32_t offset6) {
  const uint8_t *network = way.frame.bytes + way.layers.at;
  if (way.layers.ip4) return hash.add(network + offset4, 4);
  if (way.layers.ip6) return hash.add(network + offset6, 16);
  hash.add(0);
}

void add_l4(Hash &hash, const Way &way, uint32_t offset) {
  const Layers &layers = way.layers;
  const bool there = layers.is(kProtocolTcp, kL4Bytes) || layers.is(kProtocolUdp, kL4Bytes);
  hash.add(there ? half_at(way.frame.bytes + layers.transport_at + offset) : 0);
}

}  // namespace

uint32_t trunk_hash(const Way &way) {
  const uint32_t fields = way.unit.trunk.hash_fields()[kAlgorithm];
  Hash hash;
  if ((fields & kSourcePort) != 0) hash.add(static_cast<uint32_t>(way.port));
  if ((fields & kSourceMac) != 0) hash.add(way.frame.bytes + kMacBytes, kMacBytes);
  if ((fields & kDestinationMac) != 0) hash.add(way.frame.bytes, kMacBytes);
  if ((fields & kSourceIp) != 0) add_ip(hash, way, 12, 8);
  if ((fields & kDestinationIp) != 0) add_ip(hash, way, 16, 24);
  if ((fields & kSourceL4) != 0) add_l4(hash, way, 0);
  if ((fields & kDestinationL4) != 0) add_l4(hash, way, 2);
  return hash.value();
}

uint32_t nth_port(uint32_t ports, uint32_t place) {
  for (; place > 0; --place) ports &= ports - 1;
  return ports & ~(ports - 1);
}

}  // namespace vchip
