// SPDX-License-Identifier: MIT
// The wires on the ports, and what tests of them found.
#ifndef VCHIP_PORT_CABLE_BLOCK_H
#define VCHIP_PORT_CABLE_BLOCK_H

#include <swctl-vchip/vchip.h>
#include <swctl/platform/port_records.h>

#include <cstdint>

namespace vchip {

class Dump;
class Findings;

struct WirePair {
  uint32_t faults;
  uint32_t length;  // in centimetres
};

class CableBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // single words, each valid on its own
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const WirePair &pair(int32_t port, uint32_t pair) const { return ports_[port].pairs[pair]; }
  void set_pair(int32_t port, uint32_t pair, const WirePair &wires);

  // Looks at the wires now. Without a cable every pair is open at the socket.
  void test(int32_t port, bool plugged);
  bool tested(int32_t port) const { return ports_[port].tested != 0; }
  chip_cable_test_t result(int32_t port) const;

 private:
  struct Port {
    WirePair pairs[VCHIP_PAIRS];
    uint32_t tested;
    WirePair found[VCHIP_PAIRS];
  };

  Port ports_[VCHIP_CPU_PORT];
};

}  // namespace vchip

#endif
