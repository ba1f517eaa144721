// SPDX-License-Identifier: MIT
#include "twins.h"

#include <swctl-vchip/ability.h>
#include <swctl-vchip/frame.h>
#include <swctl/platform/sdk.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <sys/stat.h>
#include <thread>

namespace bridge {
namespace {

// How the addresses of hosts begin.
constexpr std::array<uint8_t, 3> kHosts = {2, 0, 0};
constexpr uint32_t kStatic = 0x08;
constexpr uint32_t kEveryPort = (uint32_t{1} << VCHIP_PORTS) - 1;

void must(int32_t answer, const char *call) {
  if (answer != 0) throw std::runtime_error(std::string(call) + ": " + std::to_string(answer));
}
#define MUST(call) must(call, #call)

template <typename Entry>
void set_address(Entry &entry, uint64_t address) {
  for (size_t byte = 0; byte < 6; ++byte)
    entry.mac[byte] = static_cast<uint8_t>(address >> (40 - 8 * byte));
}

std::string text(uint64_t address) {
  std::array<char, 18> words = {};
  const auto byte = [&](int shift) { return static_cast<unsigned>(address >> shift) & 0xff; };
  snprintf(words.data(), words.size(), "%02x:%02x:%02x:%02x:%02x:%02x", byte(40), byte(32),
           byte(24), byte(16), byte(8), byte(0));
  return words.data();
}

// The start of a frame, which holds its number, and its length.
std::string hex(const Bytes &frame) {
  if (frame.empty()) return "nothing";
  std::string words;
  std::array<char, 3> digits = {};
  for (size_t place = 0; place < std::min<size_t>(frame.size(), 28); ++place) {
    snprintf(digits.data(), digits.size(), "%02x", frame[place]);
    words += digits.data();
  }
  return words + "... (" + std::to_string(frame.size()) + " bytes)";
}

Bytes leave(int port) {
  Bytes room(VCHIP_FRAME_MAX);
  vchip_frame_t frame = {room.data(), static_cast<uint32_t>(room.size()), 0, 0, 0, 0};
  if (vchip_frame_leave(0, port, &frame) != 1) return {};
  room.resize(frame.length);
  return room;
}

}  // namespace

Twins::Twins() {
  MUST(vchip_reset());
  const vchip_partner_t partner = {1, VCHIP_ABILITY_USUAL};
  const uint32_t members = kAllPorts;
  for (int port = 1; port <= kPorts; ++port) {
    MUST(vchip_cable_plug(0, port, &partner));
    MUST(rtk_vlan_portIgrFilter_set(0, port, 1));
    default_vlans_[port] = 1;
  }
  MUST(rtk_vlan_port_set(0, 1, &members, &members));
  vlans_[1] = {kAllPorts, kAllPorts};
}

// What `flag` of bridge(8) says about each port of a mask.
void Twins::flags(const char *flag, uint32_t ports) {
  std::ostringstream commands;
  for (int port = 1; port <= kPorts; ++port)
    commands << "link set dev " << interface(port) << ' ' << flag
             << ((ports & bit(port)) != 0 ? " on\n" : " off\n");
  kernel_.bridge(commands.str());
}

void Twins::write(int port, uint32_t vid) {
  const auto &[members, untagged] = vlans_[vid];
  std::ostringstream command;
  if ((members & bit(port)) == 0) return;
  command << "vlan add dev " << interface(port) << " vid " << vid;
  if ((untagged & bit(port)) != 0) command << " untagged";
  if (default_vlans_[port] == vid) command << " pvid";
  command << '\n';
  kernel_.bridge(command.str());
}

void Twins::vlan(uint32_t vid, uint32_t members, uint32_t untagged) {
  const uint32_t before = vlans_.count(vid) != 0 ? vlans_[vid].members : 0;
  std::ostringstream gone;
  for (int port = 1; port <= kPorts; ++port)
    if ((before & bit(port)) != 0)
      gone << "vlan del dev " << interface(port) << " vid " << vid << '\n';
  kernel_.bridge(gone.str());
  if (vlans_.count(vid) != 0) MUST(rtk_vlan_destroy(0, vid));
  vlans_.erase(vid);
  if (members == 0) return;
  vlans_[vid] = {members, untagged};
  MUST(rtk_vlan_create(0, vid));
  MUST(rtk_vlan_port_set(0, vid, &members, &untagged));
  for (int port = 1; port <= kPorts; ++port) write(port, vid);
}

void Twins::default_vlan(int port, uint32_t vid) {
  const uint32_t before = default_vlans_[port];
  default_vlans_[port] = vid;
  MUST(rtk_vlan_portPvid_set(0, port, vid));
  if (vlans_.count(before) != 0) write(port, before);
  write(port, vid);
}

void Twins::begin_states() {
  mkdir("/sbin", 0755);
  std::ofstream("/sbin/bridge-stp") << "#!/bin/sh\nexit 0\n";
  chmod("/sbin/bridge-stp", 0755);
  kernel_.ip("link set br0 type bridge stp_state 1\n");
  for (int port = 1; port <= kPorts; ++port) state(port, State::kForwarding);
}

void Twins::state(int port, State state) {
  constexpr std::array<int, 4> kOfBridge = {0, 4, 2, 3};
  const auto number = static_cast<uint32_t>(state);
  MUST(rtk_stp_mstpState_set(0, 0, port, number));
  kernel_.bridge("link set dev " + interface(port) + " state " +
                 std::to_string(kOfBridge.at(number)) + "\n");
}

void Twins::learning(int port, bool on) {
  MUST(rtk_l2_newMacOp_set(0, port, on ? 0 : 2, 0));
  kernel_.bridge("link set dev " + interface(port) + " learning " + (on ? "on\n" : "off\n"));
}

void Twins::isolated(uint32_t ports) {
  for (int port = 1; port <= kPorts; ++port)
    MUST(rtk_port_isolation_set(0, port,
                                (ports & bit(port)) != 0 ? kEveryPort & ~ports : kEveryPort));
  flags("isolated", ports);
}

void Twins::flood(uint32_t unicast, uint32_t multicast, uint32_t broadcast) {
  const std::array<uint32_t, 5> by_type = {multicast, multicast, unicast, multicast, broadcast};
  for (uint32_t type = 0; type < by_type.size(); ++type) {
    const uint32_t index = type + 1;
    MUST(rtk_l2_lookupMissFloodPortMask_set_with_idx(0, type, index, &by_type[type]));
    MUST(rtk_l2_lookupMissFloodPortMaskIdx_set(0, type, index));
  }
  flags("flood", unicast);
  flags("mcast_flood", multicast);
  flags("bcast_flood", broadcast);
}

void Twins::station(uint64_t address, uint32_t vid, int port) {
  chip_l2_ucast_entry entry = {};
  entry.vid = vid;
  entry.port = port;
  entry.flags = kStatic;
  set_address(entry, address);
  MUST(rtk_l2_addr_add(0, &entry));
  kernel_.bridge("fdb replace " + text(address) + " dev " + interface(port) +
                 " master static sticky vlan " + std::to_string(vid) + "\n");
}

void Twins::begin_groups() {
  kernel_.ip("link set br0 type bridge mcast_snooping 1\n");
}

void Twins::group(uint64_t address, uint32_t vid, uint32_t ports) {
  uint32_t &members = groups_[{address, vid}];
  for (int port = 1; port <= kPorts; ++port) {
    if (((members ^ ports) & bit(port)) == 0) continue;
    kernel_.bridge(std::string("mdb ") + ((ports & bit(port)) != 0 ? "add" : "del") +
                   " dev br0 port " + interface(port) + " grp " + text(address) +
                   " permanent vid " + std::to_string(vid) + "\n");
  }
  chip_l2_mcast_entry entry = {};
  entry.vid = static_cast<uint16_t>(vid);
  entry.portmask = ports;
  set_address(entry, address);
  if (members != 0) MUST(rtk_l2_mcastAddr_del(0, vid, entry.mac));
  if (ports != 0) MUST(rtk_l2_mcastAddr_add(0, &entry));
  members = ports;
}

void Twins::ageing(int seconds) {
  MUST(rtk_l2_aging_set(0, static_cast<uint32_t>(seconds)));
  kernel_.ip("link set br0 type bridge ageing_time " + std::to_string(100 * seconds) + "\n");
}

void Twins::pass(int milliseconds) {
  MUST(vchip_clock_advance(static_cast<uint64_t>(milliseconds) * 1000000));
  std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

// The kernel's bridge says IGMP things of its own while it looks at groups.
Bytes Twins::hear(int port, std::chrono::milliseconds patience) {
  Bytes frame = kernel_.hear(port, patience);
  while (!frame.empty() && !std::equal(kHosts.begin(), kHosts.end(), frame.begin() + 6))
    frame = kernel_.hear(port, patience);
  return frame;
}

Heard Twins::send(int port, const Bytes &frame, std::string &difference,
                  std::chrono::milliseconds patience) {
  MUST(vchip_frame_arrive(0, port, frame.data(), static_cast<uint32_t>(frame.size())));
  kernel_.send(port, frame);
  Heard heard;
  for (int out = 1; out <= kPorts; ++out) {
    const Bytes left = leave(out);
    if (!left.empty()) heard[out] = left;
  }
  // The silent ports last: by then the kernel has had its time.
  for (const auto &[out, expected] : heard) {
    const Bytes other = hear(out, kGiveUp);
    if (other != expected)
      difference += "port " + std::to_string(out) + ": the chip " + hex(expected) +
                    ", the kernel " + hex(other) + "\n";
  }
  for (int out = 1; out <= kPorts; ++out) {
    if (heard.count(out) != 0) continue;
    const Bytes other = hear(out, patience);
    if (!other.empty())
      difference +=
          "port " + std::to_string(out) + ": the chip nothing, the kernel " + hex(other) + "\n";
  }
  while (vchip_frames_ready(0) != 0)
    for (int out = 0; out < VCHIP_PORTS; ++out) leave(out);
  if (!difference.empty())
    difference = hex(frame) + " into port " + std::to_string(port) + ":\n" + difference;
  return heard;
}

std::string Twins::surplus(std::chrono::milliseconds patience) {
  std::string all;
  for (int port = 1; port <= kPorts; ++port) {
    const Bytes frame = hear(port, patience);
    if (!frame.empty()) all += "port " + std::to_string(port) + ": " + hex(frame) + "\n";
  }
  return all;
}

}  // namespace bridge
