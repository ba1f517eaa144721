// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

namespace {

int32_t read_medium(uint32_t unit, int32_t port, uint32_t *medium) {
  uint32_t value = 0;
  const int32_t result = rtk_port_phyComboPortMedia_get(unit, port, &value);
  *medium = value;
  return result;
}

bool is_fibre(uint32_t lead, uint32_t unit, int32_t port) {
  uint32_t medium = UINT32_MAX;
  const int32_t result = user_port_link_medium_get(lead, unit, port, &medium);
  return result >= 0 && medium == USER_MEDIUM_FIBRE;
}

}  // namespace

int32_t user_port_media_type_get(uint32_t, uint32_t unit, int32_t port, uint32_t *medium) {
  return read_medium(unit, port, medium);
}

int32_t user_port_link_medium_get(uint32_t, uint32_t unit, int32_t port, uint32_t *medium) {
  return read_medium(unit, port, medium);
}

int32_t user_fiberport_link_status_get(uint32_t, uint32_t unit, int32_t port, uint32_t *status) {
  return rtk_port_link_get(unit, port, status);
}

int32_t user_port_link_status_get(uint32_t lead, uint32_t unit, int32_t port, uint32_t *status) {
  const int32_t result = rtk_port_link_get(unit, port, status);
  if (!is_fibre(lead, unit, port) || *status == 0) return result;
  // The fibre side reports light; the port is up only if it is enabled too.
  uint32_t admin = 0;
  if (rtk_port_adminEnable_get(unit, port, &admin) >= 0) *status = admin;
  return result;
}

int32_t user_port_loopback_get(uint32_t, uint32_t unit, int32_t port, uint32_t *enable) {
  return rtk_diag_portMacLocalLoopbackEnable_get(unit, port, enable);
}

int32_t user_port_loopback_set(uint32_t, uint32_t unit, int32_t port, uint32_t enable) {
  return rtk_diag_portMacLocalLoopbackEnable_set(unit, port, enable);
}
