// SPDX-License-Identifier: MIT
// The virtual chip and a bridge of the kernel with the same settings, and the
// same frames for both.
#ifndef SWCTL_KERNEL_BRIDGE_TWINS_H
#define SWCTL_KERNEL_BRIDGE_TWINS_H

#include <map>
#include <string>

#include "kernel_bridge.h"

namespace bridge {

inline constexpr int kPorts = 6;
inline constexpr uint32_t kAllPorts = 0x7e;  // 1 to 6
inline constexpr std::chrono::milliseconds kGiveUp{2000};

constexpr uint32_t bit(int port) {
  return uint32_t{1} << port;
}

enum class State { kDisabled, kBlocking, kLearning, kForwarding };

// What left, by port.
using Heard = std::map<int, Bytes>;

class Twins {
 public:
  // Ports 1 to 6, each an untagged member of VLAN 1, all forwarding.
  Twins();

  // Members of a VLAN; `untagged` is a part of `members`. None: no such VLAN.
  void vlan(uint32_t vid, uint32_t members, uint32_t untagged);
  // `port` has to be a member of the VLAN.
  void default_vlan(int port, uint32_t vid);
  // The kernel leaves a port's state alone only while a daemon has spanning
  // tree in hand; begin_states() says that one has.
  void begin_states();
  void state(int port, State state);
  void learning(int port, bool on);
  // Those of `ports` do not hear each other.
  void isolated(uint32_t ports);
  // Where frames go whose destination is in no entry.
  void flood(uint32_t unicast, uint32_t multicast, uint32_t broadcast);
  void station(uint64_t address, uint32_t vid, int port);  // static, and does not move
  void begin_groups();
  void group(uint64_t address, uint32_t vid, uint32_t ports);
  // Entries end after that many seconds; `pass` lets them go by.
  void ageing(int seconds);
  void pass(int milliseconds);

  // One frame, from a host whose address begins with 02:00:00, into port `port` of both. Answers
  // what left the chip; `difference` says in words what left the kernel's bridge otherwise, and is
  // empty if nothing did. A port that the chip leaves silent is listened to for `patience`.
  Heard send(int port, const Bytes &frame, std::string &difference,
             std::chrono::milliseconds patience = std::chrono::milliseconds{20});
  // What comes from the kernel's bridge that nobody asked for.
  std::string surplus(std::chrono::milliseconds patience);

 private:
  struct Vlan {
    uint32_t members;
    uint32_t untagged;
  };

  Bytes hear(int port, std::chrono::milliseconds patience);
  void flags(const char *flag, uint32_t ports);
  void write(int port, uint32_t vid);

  KernelBridge kernel_{kPorts};
  std::map<uint32_t, Vlan> vlans_;
  std::map<int, uint32_t> default_vlans_;
  std::map<std::pair<uint64_t, uint32_t>, uint32_t> groups_;
};

}  // namespace bridge

#endif
