// SPDX-License-Identifier: MIT
// Prevention of denial-of-service attacks.
#ifndef VCHIP_SWITCH_ATTACK_BLOCK_H
#define VCHIP_SWITCH_ATTACK_BLOCK_H

#include <array>
#include <cstdint>

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kAttackTypes = 16;
inline constexpr uint32_t kMaxAttackAction = 1;

class AttackBlock {
 public:
  static constexpr uint32_t kLayout = 1;
  void power_on() {}  // all zero
  void repair() {}    // single words, each valid on its own
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  uint32_t protected_ports() const { return protected_ports_; }
  void protect(int32_t port, bool on);
  const std::array<uint32_t, kAttackTypes> &actions() const { return actions_; }
  void set_action(uint32_t type, uint32_t action) { actions_[type] = action; }

 private:
  uint32_t protected_ports_;
  std::array<uint32_t, kAttackTypes> actions_;
};

}  // namespace vchip

#endif
