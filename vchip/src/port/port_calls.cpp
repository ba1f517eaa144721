// SPDX-License-Identifier: MIT
// The SDK's calls on ports.
#include <swctl/platform/port_read.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

using vchip::at_most;
using vchip::change;
using vchip::flag;
using vchip::look;
using vchip::not_null;
using vchip::on_front_port;
using vchip::on_port;
using vchip::Unit;

int32_t rtk_port_link_get(uint32_t unit, int32_t port, uint32_t *link) {
  return look(unit, {on_port(port), not_null(link)}, [=](const Unit &chip) {
    *link = chip.port.link(port).up ? 1 : 0;
    return 0;
  });
}

int32_t rtk_port_speedDuplex_get(uint32_t unit, int32_t port, uint32_t *speed, uint32_t *duplex) {
  return look(unit, {on_port(port), not_null(speed, duplex)}, [=](const Unit &chip) {
    const vchip::Link link = chip.port.link(port);
    if (!link.up) return VCHIP_E_LINK;
    *speed = link.speed;
    *duplex = link.duplex;
    return 0;
  });
}

int32_t rtk_port_phyComboPortMedia_get(uint32_t unit, int32_t port, uint32_t *media) {
  return look(unit, {on_front_port(port), not_null(media)}, [=](const Unit &chip) {
    *media = chip.port.medium(port);
    return 0;
  });
}

int32_t rtk_port_adminEnable_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return look(unit, {on_port(port), not_null(enable)}, [=](const Unit &chip) {
    *enable = chip.port.admin(port);
    return 0;
  });
}

int32_t rtk_port_adminEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_port(port), flag(enable)},
                [=](Unit &chip) { chip.port.set_admin(port, enable != 0); });
}

int32_t rtk_port_phyAutoNegoEnable_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return look(unit, {on_front_port(port), not_null(enable)}, [=](const Unit &chip) {
    *enable = chip.port.autonegotiation(port);
    return 0;
  });
}

int32_t rtk_port_phyAutoNegoEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_front_port(port), flag(enable)},
                [=](Unit &chip) { chip.port.set_autonegotiation(port, enable != 0); });
}

int32_t rtk_port_phyAutoNegoAbility_get(uint32_t unit, int32_t port, uint32_t *ability) {
  return look(unit, {on_front_port(port), not_null(ability)}, [=](const Unit &chip) {
    *ability = chip.port.advertised(port);
    return 0;
  });
}

int32_t rtk_port_phyAutoNegoAbility_set(uint32_t unit, int32_t port, const uint32_t *ability) {
  const uint32_t word = ability == nullptr ? 0 : *ability;
  const int32_t known = (word & ~VCHIP_ABILITY_ALL) == 0 ? 0 : VCHIP_E_VALUE;
  return change(unit, {on_front_port(port), not_null(ability), known},
                [=](Unit &chip) { chip.port.set_advertised(port, word); });
}

int32_t rtk_port_phyForceModeAbility_get(uint32_t unit, int32_t port, uint32_t *speed,
                                         uint32_t *duplex, uint32_t *flow_control) {
  return look(unit, {on_front_port(port), not_null(speed, duplex, flow_control)},
              [=](const Unit &chip) {
                const vchip::ForcedMode mode = chip.port.forced(port);
                *speed = mode.speed;
                *duplex = mode.duplex;
                *flow_control = mode.flow_control;
                return 0;
              });
}

int32_t rtk_port_phyForceModeAbility_set(uint32_t unit, int32_t port, uint32_t speed,
                                         uint32_t duplex, uint32_t flow_control) {
  return change(
      unit,
      {on_front_port(port), at_most(speed, VCHIP_SPEED_MAX), flag(duplex), flag(flow_control)},
      [=](Unit &chip) {
        chip.port.set_forced(port, {speed, duplex, flow_control});
      });
}

int32_t rtk_diag_portMacLocalLoopbackEnable_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return look(unit, {on_port(port), not_null(enable)}, [=](const Unit &chip) {
    *enable = chip.port.loopback(port);
    return 0;
  });
}

int32_t rtk_diag_portMacLocalLoopbackEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_port(port), flag(enable)},
                [=](Unit &chip) { chip.port.set_loopback(port, enable != 0); });
}

int32_t rtk_port_flowCtrlEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_front_port(port), flag(enable)},
                [=](Unit &chip) { chip.port.set_flow_control(port, enable != 0); });
}

int32_t rtk_port_flowctrl_get(uint32_t unit, int32_t port, uint32_t *transmit, uint32_t *receive) {
  return look(unit, {on_front_port(port), not_null(transmit, receive)}, [=](const Unit &chip) {
    const vchip::Pause pause = chip.port.pause(port);
    *transmit = pause.transmit;
    *receive = pause.receive;
    return 0;
  });
}

int32_t rtk_port_backpressureEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_front_port(port), flag(enable)},
                [=](Unit &chip) { chip.port.set_back_pressure(port, enable != 0); });
}

int32_t swctl_platform_port_backpressure_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return look(unit, {on_port(port), not_null(enable)}, [=](const Unit &chip) {
    *enable = chip.port.back_pressure(port);
    return 0;
  });
}

int32_t rtk_port_phyCrossOverMode_get(uint32_t unit, int32_t port, uint32_t *mode) {
  return look(unit, {on_front_port(port), not_null(mode)}, [=](const Unit &chip) {
    *mode = chip.port.crossover(port);
    return 0;
  });
}

int32_t rtk_port_phyCrossOverMode_set(uint32_t unit, int32_t port, uint32_t mode) {
  return change(unit, {on_front_port(port), at_most(mode, VCHIP_CROSSOVER_CROSSED)},
                [=](Unit &chip) { chip.port.set_crossover(port, mode); });
}

int32_t rtk_eee_portEnable_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return look(unit, {on_front_port(port), not_null(enable)}, [=](const Unit &chip) {
    *enable = chip.port.eee(port);
    return 0;
  });
}

int32_t rtk_eee_portEnable_set(uint32_t unit, int32_t port, uint32_t enable) {
  return change(unit, {on_front_port(port), flag(enable)},
                [=](Unit &chip) { chip.port.set_eee(port, enable != 0); });
}
