// SPDX-License-Identifier: MIT
// A tap: an interface of the system whose frames this process reads and writes.
#ifndef VCHIPD_TAP_H
#define VCHIPD_TAP_H

#include <string>
#include <vector>

#include "os/descriptor.h"
#include "wire.h"

namespace vchipd {

class Tap {
 public:
  // `wire` names it in messages.
  Tap(std::string wire, std::string name) : wire_(std::move(wire)), name_(std::move(name)) {}

  // Makes the interface, which is gone when the tap is closed. Throws Fault.
  void open();
  int descriptor() const { return descriptor_.get(); }
  int index() const { return index_; }
  bool is_up() const;
  // What the interface's owner sees of the cable.
  void show_carrier(bool on);

  // As those of Wire.
  bool receive(Arrivals &arrivals, uint32_t most, WireCounts &counts);
  void send(const vchip_frame_t *frames, uint32_t count, WireCounts &counts);

 private:
  const std::string wire_;
  const std::string name_;
  os::Descriptor descriptor_;
  int index_ = 0;
  int carrier_ = -1;
  std::vector<uint8_t> memory_;
};

}  // namespace vchipd

#endif
