// SPDX-License-Identifier: MIT
#include "switch/attack_block.h"

#include "common/numbers.h"
#include "common/sound.h"

namespace vchip {

bool AttackBlock::sound() const {
  return is_ports(protected_ports_) && are_at_most(actions_, kMaxAttackAction);
}

void AttackBlock::protect(int32_t port, bool on) {
  protected_ports_ = on ? protected_ports_ | port_bit(port) : protected_ports_ & ~port_bit(port);
}

}  // namespace vchip
