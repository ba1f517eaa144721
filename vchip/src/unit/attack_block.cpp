// SPDX-License-Identifier: MIT
#include "unit/attack_block.h"

#include <swctl/platform/sdk.h>

#include "core/check.h"
#include "core/chip.h"
#include "core/dump.h"

namespace vchip {

void AttackBlock::reset() {
  protected_ports_ = 0;
  actions_.fill(0);
}

void AttackBlock::protect(int32_t port, bool on) {
  const uint32_t bit = uint32_t{1} << port;
  protected_ports_ = on ? protected_ports_ | bit : protected_ports_ & ~bit;
}

void AttackBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    block.ports("protected_ports", protected_ports_);
    block.numbers("action", {actions_.begin(), actions_.end()});
  });
}

}  // namespace vchip

int32_t rtk_sec_portAttackPreventEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return vchip::change(unit, {vchip::on_front_port(port), vchip::flag(enable)},
                       [=](vchip::Unit &chip) { chip.attack.protect(port, enable != 0); });
}

int32_t rtk_sec_attackPreventAction_get(uint32_t unit, uint32_t type, uint32_t *action) {
  return vchip::look(unit, {vchip::not_null(action), vchip::below(type, vchip::kAttackTypes)},
                     [=](const vchip::Unit &chip) {
                       *action = chip.attack.actions()[type];
                       return 0;
                     });
}

int32_t rtk_sec_attackPreventAction_set(uint32_t unit, uint32_t type, uint32_t action) {
  return vchip::change(unit, {vchip::below(type, vchip::kAttackTypes), vchip::flag(action)},
                       [=](vchip::Unit &chip) { chip.attack.set_action(type, action); });
}
