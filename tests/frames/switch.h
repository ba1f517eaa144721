// SPDX-License-Identifier: MIT
// A chip with all cables in, frames to send into it, and what comes out.
#ifndef SWCTL_TESTS_FRAMES_SWITCH_H
#define SWCTL_TESTS_FRAMES_SWITCH_H

#include <swctl-vchip/ability.h>
#include <swctl-vchip/frame.h>
#include <swctl-vchip/l2_view.h>
#include <swctl/platform/sdk.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace frames {

using Bytes = std::vector<uint8_t>;

inline constexpr uint64_t kBroadcast = 0xffffffffffff;
inline constexpr uint64_t kSecond = 1000000000;

// The address of a station by its number.
constexpr uint64_t station(uint32_t number) {
  return 0x020000000000 | number;
}

// A frame in the making: addresses, tags, a type and what follows.
class Maker {
 public:
  Maker(uint64_t to, uint64_t from) {
    address(to);
    address(from);
  }
  Maker &tag(uint32_t vid, uint32_t priority = 0, uint32_t type = 0x8100,
             bool drop_eligible = false) {
    half(type);
    return half(priority << 13 | (drop_eligible ? 0x1000u : 0) | vid);
  }
  Maker &type(uint32_t value) { return half(value); }
  Maker &half(uint32_t value) { return byte(value >> 8).byte(value); }
  Maker &word(uint32_t value) { return half(value >> 16).half(value); }
  Maker &byte(uint32_t value) {
    bytes_.push_back(static_cast<uint8_t>(value));
    return *this;
  }
  Maker &fill(size_t length, uint8_t with = 0) {
    bytes_.resize(length, with);
    return *this;
  }
  // An IPv4 header for a payload of that many bytes, with a right checksum.
  Maker &ip4(uint32_t protocol, uint32_t from, uint32_t to, uint32_t payload, uint32_t traffic = 0,
             uint32_t fragment = 0);
  // At least what a MAC sends.
  Bytes bytes() const {
    Bytes all = bytes_;
    if (all.size() < 60) all.resize(60);
    return all;
  }

 private:
  Maker &address(uint64_t value) {
    for (int shift = 40; shift >= 0; shift -= 8) byte(static_cast<uint32_t>(value >> shift));
    return *this;
  }
  Bytes bytes_;
};

inline Maker &Maker::ip4(uint32_t protocol, uint32_t from, uint32_t to, uint32_t payload,
                         uint32_t traffic, uint32_t fragment) {
  const size_t at = bytes_.size();
  byte(0x45).byte(traffic).half(20 + payload).half(0).half(fragment);
  byte(64).byte(protocol).half(0).word(from).word(to);
  uint32_t sum = 0;
  for (size_t place = at; place < at + 20; place += 2)
    sum += static_cast<uint32_t>(bytes_[place]) << 8 | bytes_[place + 1];
  sum = (sum & 0xffff) + (sum >> 16);
  sum = ~((sum & 0xffff) + (sum >> 16)) & 0xffff;
  bytes_[at + 10] = static_cast<uint8_t>(sum >> 8);
  bytes_[at + 11] = static_cast<uint8_t>(sum);
  return *this;
}

// A plain frame of a length between two stations.
inline Bytes plain(uint64_t to, uint64_t from, size_t length = 60) {
  return Maker(to, from).type(0x88b5).fill(length).bytes();
}

struct Left {
  Bytes bytes;
  int32_t port_in;
  uint32_t reason;
  uint64_t time;
};

class Switch : public testing::Test {
 public:
  static constexpr int32_t kCpu = VCHIP_CPU_PORT;

  // A chip as after power-on, with all cables in.
  static void power_on() {
    ASSERT_EQ(vchip_reset(), 0);
    const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
    for (int32_t port = 0; port < VCHIP_CPU_PORT; ++port)
      ASSERT_EQ(vchip_cable_plug(0, port, &partner), 0);
  }

  static void arrive(int32_t port, const Bytes &frame) {
    ASSERT_EQ(vchip_frame_arrive(0, port, frame.data(), static_cast<uint32_t>(frame.size())), 0);
  }

  // All that has left a port, oldest first.
  static std::vector<Left> taken(int32_t port) {
    std::vector<Left> all;
    Bytes room(VCHIP_FRAME_MAX + 8);
    vchip_frame_t frame = {room.data(), static_cast<uint32_t>(room.size()), 0, 0, 0, 0};
    while (vchip_frame_leave(0, port, &frame) == 1)
      all.push_back(
          {{room.data(), room.data() + frame.length}, frame.port_in, frame.reason, frame.time});
    return all;
  }
  static size_t count(int32_t port) { return taken(port).size(); }

  // How many frames left each port since the last look; ports without are left out.
  static std::map<int32_t, size_t> counts() {
    std::map<int32_t, size_t> all;
    const uint32_t ready = vchip_frames_ready(0);
    for (int32_t port = 0; port < VCHIP_PORTS; ++port)
      if ((ready >> port & 1) != 0) all[port] = count(port);
    return all;
  }
  // Ports that something left by since the last look, as a mask.
  static uint32_t left() {
    uint32_t ports = 0;
    for (const auto &[port, number] : counts()) ports |= uint32_t{1} << port;
    return ports;
  }
  // Where a frame goes.
  static uint32_t out(int32_t port, const Bytes &frame) {
    left();
    arrive(port, frame);
    return left();
  }

  static vchip_drops_t drops(int32_t port) {
    vchip_drops_t all = {};
    EXPECT_EQ(vchip_drops_get(0, port, &all), 0);
    return all;
  }

  static vchip::AddressView entry_of(uint64_t address, uint32_t vid = 1) {
    return look_for(address, vid).at(0);
  }
  static bool is_known(uint64_t address, uint32_t vid = 1) {
    return !look_for(address, vid).empty();
  }

  // What left one port, and nothing but one frame.
  static Left only(int32_t port) {
    const std::vector<Left> all = taken(port);
    EXPECT_EQ(all.size(), 1u) << "port " << port;
    return all.empty() ? Left() : all[0];
  }
  // A frame as it leaves a port.
  static Bytes through(int32_t port, const Bytes &frame, int32_t out_of) {
    left();
    arrive(port, frame);
    const Left sent = only(out_of);
    left();
    return sent.bytes;
  }

  // A VLAN with members, some of them untagged.
  static void make_vlan(uint32_t vid, uint32_t members, uint32_t untagged = 0) {
    ASSERT_EQ(rtk_vlan_create(0, vid), 0);
    set_vlan(vid, members, untagged);
  }
  static void set_vlan(uint32_t vid, uint32_t members, uint32_t untagged = 0) {
    ASSERT_EQ(rtk_vlan_port_set(0, vid, &members, &untagged), 0);
  }
  static void set_trunk(uint32_t trunk, uint32_t members) {
    ASSERT_EQ(rtk_trunk_port_set(0, trunk, &members), 0);
  }

  // A static entry.
  static void bind(uint64_t address, int32_t port, uint32_t flags = 8, int32_t trunk = 0) {
    chip_l2_ucast_entry entry = {};
    entry.vid = 1;
    write_address(entry.mac, address);
    entry.port = port;
    entry.trunk = trunk;
    entry.flags = flags;
    ASSERT_EQ(rtk_l2_addr_add(0, &entry), 0);
  }
  static void join(uint64_t group, uint32_t ports, uint32_t index = 0) {
    chip_l2_mcast_entry entry = {};
    entry.vid = 1;
    write_address(entry.mac, group);
    entry.portmask = ports;
    entry.fwdIndex = index;
    ASSERT_EQ(rtk_l2_mcastAddr_add(0, &entry), 0);
  }

  static void advance(uint64_t nanoseconds) { ASSERT_EQ(vchip_clock_advance(nanoseconds), 0); }

 private:
  static void write_address(uint8_t *to, uint64_t address) {
    for (int byte = 0; byte < 6; ++byte)
      to[byte] = static_cast<uint8_t>(address >> (40 - 8 * byte));
  }
  static std::vector<vchip::AddressView> look_for(uint64_t address, uint32_t vid) {
    uint8_t bytes[6];
    write_address(bytes, address);
    char text[18];
    snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", bytes[0], bytes[1], bytes[2],
             bytes[3], bytes[4], bytes[5]);
    std::vector<vchip::AddressView> found;
    for (const vchip::AddressView &each : vchip::addresses(0))
      if (each.mac == text && each.vid == vid) found.push_back(each);
    return found;
  }

 protected:
  Switch() {
    for (const char *name : {"VCHIP_IMAGE", "VCHIP_LOG", "VCHIP_TRACE"}) unsetenv(name);
  }
  void SetUp() override { power_on(); }
};

constexpr uint32_t mask(std::initializer_list<int> ports) {
  uint32_t all = 0;
  for (const int port : ports) all |= uint32_t{1} << port;
  return all;
}

}  // namespace frames

#endif
