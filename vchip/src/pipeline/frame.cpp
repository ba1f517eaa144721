// SPDX-License-Identifier: MIT
#include "pipeline/frame.h"

namespace vchip {
namespace {

constexpr uint32_t kIp4Bytes = 20;
constexpr uint32_t kIp6Bytes = 40;
constexpr uint32_t kExtensionBytes = 8;
constexpr uint32_t kHopByHop = 0;
constexpr uint32_t kRouting = 43;
constexpr uint32_t kFragment = 44;
constexpr uint32_t kDestinationOptions = 60;

uint32_t lesser(uint32_t one, uint32_t other) {
  return one < other ? one : other;
}

void read_ip4(const Frame &frame, Layers &layers) {
  const uint8_t *header = frame.bytes + layers.at;
  if (layers.at + kIp4Bytes > frame.length || header[0] >> 4 != 4) return;
  const uint32_t header_bytes = (header[0] & 0xfu) * 4;
  const uint32_t total = half_at(header + 2);
  if (header_bytes < kIp4Bytes || layers.at + header_bytes > frame.length) return;
  layers.ip4 = true;
  layers.traffic = header[1];
  layers.protocol = header[9];
  const uint32_t fragment = half_at(header + 6);
  layers.fragment_offset = (fragment & 0x1fff) * 8;
  layers.fragment = (fragment & 0x3fff) != 0;
  layers.later_fragment = layers.fragment_offset != 0;
  layers.end = total < header_bytes ? frame.length : lesser(frame.length, layers.at + total);
  layers.transport = !layers.later_fragment;
  layers.transport_at = layers.at + header_bytes;
}

bool is_extension(uint32_t header) {
  return header == kHopByHop || header == kRouting || header == kDestinationOptions ||
         header == kFragment;
}

// Walks over the extension headers. A later fragment ends the walk, and so does
// a header that is cut off.
void read_extensions(const Frame &frame, Layers &layers) {
  while (is_extension(layers.protocol)) {
    const uint8_t *header = frame.bytes + layers.transport_at;
    if (layers.transport_at + kExtensionBytes > layers.end) {
      layers.transport = false;
      return;
    }
    uint32_t bytes = kExtensionBytes;
    if (layers.protocol == kFragment) {
      const uint32_t field = half_at(header + 2);
      layers.fragment_offset = field & 0xfff8;
      layers.fragment = layers.fragment || layers.fragment_offset != 0 || (field & 1) != 0;
      layers.later_fragment = layers.fragment_offset != 0;
      if (layers.later_fragment) {
        layers.transport = false;
        return;
      }
    } else {
      bytes = (header[1] + 1u) * 8;
    }
    layers.protocol = header[0];
    layers.transport_at += bytes;
  }
}

void read_ip6(const Frame &frame, Layers &layers) {
  const uint8_t *header = frame.bytes + layers.at;
  if (layers.at + kIp6Bytes > frame.length || header[0] >> 4 != 6) return;
  layers.ip6 = true;
  layers.traffic = static_cast<uint8_t>(half_at(header) >> 4);
  layers.protocol = header[6];
  const uint32_t payload = half_at(header + 4);
  layers.end = lesser(frame.length, layers.at + kIp6Bytes + payload);
  layers.transport = true;
  layers.transport_at = layers.at + kIp6Bytes;
  read_extensions(frame, layers);
}

Encapsulation encapsulation_of(const Frame &frame, uint32_t at) {
  const uint8_t *bytes = frame.bytes + at;
  const bool snap =
      at + 3 <= frame.length && bytes[0] == 0xaa && bytes[1] == 0xaa && bytes[2] == 0x03;
  return snap ? Encapsulation::snap : Encapsulation::llc;
}

}  // namespace

Layers layers_of(const Frame &frame, uint32_t at) {
  Layers layers = {};
  layers.at = at + 2;
  layers.end = frame.length;
  const uint32_t type = frame.type_at(at);
  if (type < kFirstEtherType) {
    layers.encapsulation = encapsulation_of(frame, layers.at);
    return layers;
  }
  layers.type = type;
  if (type == kTypeIp4) read_ip4(frame, layers);
  if (type == kTypeIp6) read_ip6(frame, layers);
  return layers;
}

}  // namespace vchip
