// SPDX-License-Identifier: MIT
#include <swctl/platform/sdk.h>
#include <swctl/port.h>

namespace {

constexpr uint32_t kTpidMask = 0xffff;

}  // namespace

int32_t user_port_tpid_set(uint32_t, uint32_t unit, int32_t port, uint32_t tpid, uint32_t index) {
  int32_t result = rtk_vlan_innerTpidEntry_set(unit, index, tpid & kTpidMask);
  if (result < 0) return result;
  result = rtk_vlan_portIgrInnerTpid_set(unit, port, uint32_t{1} << (index % 32));
  if (result < 0) return result;
  result = rtk_vlan_portEgrInnerTpid_set(unit, port, index);
  if (result < 0) return result;
  result = rtk_vlan_outerTpidEntry_set(unit, index, tpid & kTpidMask);
  if (result < 0) return result;
  return rtk_vlan_portEgrOuterTpid_set(unit, port, index);
}

int32_t user_port_tpid_get(uint32_t, uint32_t unit, int32_t port, uint16_t *tpid) {
  uint32_t index = 0;
  int32_t result = rtk_vlan_portEgrInnerTpid_get(unit, port, &index);
  if (result < 0) return result;
  uint32_t value = 0;
  result = rtk_vlan_innerTpidEntry_get(unit, index, &value);
  if (result >= 0) *tpid = static_cast<uint16_t>(value);
  return result;
}

int32_t user_tpid_entry_set(uint32_t, uint32_t unit, uint32_t index, uint32_t tpid) {
  return rtk_vlan_outerTpidEntry_set(unit, index, tpid & kTpidMask);
}
