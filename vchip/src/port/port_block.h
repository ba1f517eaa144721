// SPDX-License-Identifier: MIT
// The ports of a unit: settings, cables, and the links that follow.
#ifndef VCHIP_PORT_PORT_BLOCK_H
#define VCHIP_PORT_PORT_BLOCK_H

#include <swctl-vchip/ability.h>
#include <swctl-vchip/vchip.h>

#include <cstdint>

#include "port/link.h"

namespace vchip {

class Dump;
class Findings;

struct ForcedMode {
  uint32_t speed;
  uint32_t duplex;
  uint32_t flow_control;
};

struct Cable {
  bool plugged;
  vchip_partner_t partner;  // zeroes without a cable
};

class PortBlock {
 public:
  static constexpr uint32_t kLayout = 2;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  bool admin(int32_t port) const { return of(port).admin != 0; }
  void set_admin(int32_t port, bool on) { of(port).admin = on; }
  bool autonegotiation(int32_t port) const { return of(port).autonegotiation != 0; }
  void set_autonegotiation(int32_t port, bool on) { of(port).autonegotiation = on; }
  uint32_t advertised(int32_t port) const { return of(port).advertised; }
  void set_advertised(int32_t port, uint32_t ability) { of(port).advertised = ability; }
  ForcedMode forced(int32_t port) const;
  void set_forced(int32_t port, const ForcedMode &mode);
  bool loopback(int32_t port) const { return of(port).loopback != 0; }
  void set_loopback(int32_t port, bool on) { of(port).loopback = on; }
  uint32_t medium(int32_t port) const { return of(port).medium; }
  bool back_pressure(int32_t port) const { return of(port).back_pressure != 0; }
  void set_back_pressure(int32_t port, bool on) { of(port).back_pressure = on; }
  uint32_t crossover(int32_t port) const { return of(port).crossover; }
  void set_crossover(int32_t port, uint32_t mode) { of(port).crossover = mode; }
  bool eee(int32_t port) const { return of(port).eee != 0; }
  void set_eee(int32_t port, bool on) { of(port).eee = on; }
  // Both ways of agreeing on pause: what is advertised, and what is forced.
  void set_flow_control(int32_t port, bool on);

  // From outside: cables, modules, partners.
  void set_medium(int32_t port, uint32_t medium) { of(port).medium = medium; }
  Cable cable(int32_t port) const;
  void plug(int32_t port, const vchip_partner_t &partner);
  void pull(int32_t port) { of(port).cable = 0; }

  Link link(int32_t port) const;
  Pause pause(int32_t port) const;

 private:
  struct Port {
    uint32_t admin;
    uint32_t autonegotiation;
    uint32_t advertised;
    uint32_t forced_speed;
    uint32_t forced_duplex;
    uint32_t forced_flow_control;
    uint32_t medium;
    uint32_t loopback;
    uint32_t back_pressure;
    uint32_t crossover;
    uint32_t eee;
    // The partner's ability word with the flags below in its reserved bits: in
    // one word, so that no killed call can leave half a partner. 0: no cable.
    uint32_t cable;
  };
  static constexpr uint32_t kPlugged = 1;
  static constexpr uint32_t kNegotiates = 2;

  const Port &of(int32_t port) const { return ports_[port]; }
  Port &of(int32_t port) { return ports_[port]; }
  void dump_port(Dump &entry, int32_t port) const;
  void check_cable(Findings &findings, const Port &port) const;

  Port ports_[VCHIP_PORTS];
};

}  // namespace vchip

#endif
