// SPDX-License-Identifier: MIT
// The counters of the ports.
#ifndef VCHIP_COUNTER_COUNTER_BLOCK_H
#define VCHIP_COUNTER_COUNTER_BLOCK_H

#include <swctl-vchip/vchip.h>
#include <swctl/platform/port_records.h>

#include <cstdint>

namespace vchip {

class Dump;
class Findings;

class PortCounterBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // a counter is whatever was counted
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  user_counter_t value(int32_t port, uint32_t counter) const { return ports_[port].value[counter]; }
  uint64_t count(int32_t port, uint32_t counter) const;
  const chip_port_counters_t &port(int32_t port) const { return ports_[port]; }
  void set(int32_t port, uint32_t counter, uint64_t value);
  void add(int32_t port, uint32_t counter, uint64_t amount);
  void clear(int32_t port) { ports_[port] = {}; }

 private:
  chip_port_counters_t ports_[VCHIP_PORTS];
};

}  // namespace vchip

#endif
