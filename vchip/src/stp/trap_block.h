// SPDX-License-Identifier: MIT
// What becomes of frames that are meant for the processor.
#ifndef VCHIP_STP_TRAP_BLOCK_H
#define VCHIP_STP_TRAP_BLOCK_H

#include <swctl-vchip/vchip.h>

#include <array>
#include <cstdint>

#include "common/frame_action.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kFrameTypes = 32;
inline constexpr uint32_t kRmaGroups = 4;
inline constexpr uint32_t kBypassTypes = 8;

class TrapBlock {
 public:
  using Actions = std::array<FrameAction, kFrameTypes>;

  static constexpr uint32_t kLayout = 1;
  void power_on();
  void repair() {}  // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  const Actions &actions() const { return actions_; }
  void set_action(uint32_t type, FrameAction action) { actions_[type] = action; }
  const Actions &port_actions(int32_t port) const {
    return port_actions_[static_cast<size_t>(port)];
  }
  void set_port_action(int32_t port, uint32_t type, FrameAction action) {
    port_actions_[static_cast<size_t>(port)][type] = action;
  }
  const std::array<FrameAction, kRmaGroups> &rma_groups() const { return rma_groups_; }
  void set_rma_group(uint32_t group, FrameAction action) { rma_groups_[group] = action; }
  const std::array<uint32_t, kBypassTypes> &bypass() const { return bypass_; }
  void set_bypass(uint32_t type, uint32_t enable) { bypass_[type] = enable; }

 private:
  Actions actions_;
  std::array<Actions, VCHIP_PORTS> port_actions_;
  std::array<FrameAction, kRmaGroups> rma_groups_;
  std::array<uint32_t, kBypassTypes> bypass_;
};

}  // namespace vchip

#endif
