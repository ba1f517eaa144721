// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

int32_t user_port_enable_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  return rtk_port_adminEnable_set(unit, port, enable);
}

int32_t user_port_enable_get(uint32_t, uint32_t unit, int32_t port, uint32_t *enable) {
  return rtk_port_adminEnable_get(unit, port, enable);
}

int32_t user_port_backpressure_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  return rtk_port_backpressureEnable_set(unit, port, enable);
}

int32_t user_port_autoneg_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  return rtk_port_phyAutoNegoEnable_set(unit, port, enable);
}

int32_t user_port_autoneg_get(uint32_t, uint32_t unit, int32_t port, uint32_t *enable) {
  return rtk_port_phyAutoNegoEnable_get(unit, port, enable);
}

int32_t user_port_mdix_get(uint32_t, uint32_t unit, int32_t port, uint32_t *mode) {
  return rtk_port_phyCrossOverMode_get(unit, port, mode);
}

int32_t user_port_mdix_set(uint32_t, uint32_t unit, int32_t port, uint32_t mode) {
  if (mode > USER_MDIX_CROSSED) return -1;
  return rtk_port_phyCrossOverMode_set(unit, port, mode);
}

int32_t user_port_ability_advert_set(uint32_t, uint32_t unit, int32_t port,
                                     const uint32_t *ability) {
  return rtk_port_phyAutoNegoAbility_set(unit, port, ability);
}

int32_t user_port_ability_advert_get(uint32_t, uint32_t unit, int32_t port, uint32_t *ability) {
  return rtk_port_phyAutoNegoAbility_get(unit, port, ability);
}
