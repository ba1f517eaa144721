// SPDX-License-Identifier: MIT
// The SDK's calls on tag handling and tag protocol identifiers.
#include <swctl/platform/port_read.h>
#include <swctl/platform/sdk.h>

#include "chip/chip.h"
#include "common/check.h"

namespace {

using vchip::at_most;
using vchip::below;
using vchip::change;
using vchip::flag;
using vchip::kTpids;
using vchip::look;
using vchip::not_null;
using vchip::on_port;
using vchip::PortTags;
using vchip::Unit;

constexpr uint32_t kLastOuterTagStatus = 1;

// Sets one word of a port, once `possible` says 0.
int32_t set_word(uint32_t unit, int32_t port, uint32_t PortTags::*word, uint32_t value,
                 int32_t possible) {
  return change(unit, {on_port(port), possible},
                [=](Unit &chip) { chip.tag.port(port).*word = value; });
}

int32_t get_word(uint32_t unit, int32_t port, uint32_t PortTags::*word, uint32_t *value) {
  return look(unit, {on_port(port), not_null(value)}, [=](const Unit &chip) {
    *value = chip.tag.port(port).*word;
    return 0;
  });
}

int32_t set_keep(uint32_t unit, int32_t port, vchip::TagKeep PortTags::*keep, uint32_t inner,
                 uint32_t outer) {
  return change(unit, {on_port(port), flag(inner), flag(outer)}, [=](Unit &chip) {
    chip.tag.port(port).*keep = {inner, outer};
  });
}

}  // namespace

int32_t rtk_vlan_portOuterPvid_set(uint32_t unit, int32_t port, uint32_t pvid) {
  return set_word(unit, port, &PortTags::outer_pvid, pvid, vchip::on_vlan_id(pvid));
}

int32_t rtk_vlan_portIgrFilter_set(uint32_t unit, int32_t port, uint32_t enable) {
  return set_word(unit, port, &PortTags::ingress_filter, enable, flag(enable));
}

int32_t swctl_platform_port_filter_get(uint32_t unit, int32_t port, uint32_t *enable) {
  return get_word(unit, port, &PortTags::ingress_filter, enable);
}

int32_t rtk_l2_vlanMode_get(uint32_t unit, int32_t port, uint32_t *mode) {
  return get_word(unit, port, &PortTags::double_tag, mode);
}

int32_t rtk_l2_vlanMode_set(uint32_t unit, int32_t port, uint32_t mode) {
  return set_word(unit, port, &PortTags::double_tag, mode, flag(mode));
}

int32_t rtk_vlan_portIgrTagKeepEnable_set(uint32_t unit, int32_t port, uint32_t inner,
                                          uint32_t outer) {
  return set_keep(unit, port, &PortTags::ingress_keep, inner, outer);
}

int32_t rtk_vlan_portEgrTagKeepEnable_set(uint32_t unit, int32_t port, uint32_t inner,
                                          uint32_t outer) {
  return set_keep(unit, port, &PortTags::egress_keep, inner, outer);
}

int32_t rtk_vlan_portEgrOuterTagSts_set(uint32_t unit, int32_t port, uint32_t status) {
  return set_word(unit, port, &PortTags::outer_tag_status, status,
                  at_most(status, kLastOuterTagStatus));
}

int32_t rtk_vlan_innerTpidEntry_get(uint32_t unit, uint32_t index, uint32_t *tpid) {
  return look(unit, {not_null(tpid), below(index, kTpids)}, [=](const Unit &chip) {
    *tpid = chip.tag.inner()[index];
    return 0;
  });
}

int32_t rtk_vlan_innerTpidEntry_set(uint32_t unit, uint32_t index, uint32_t tpid) {
  return change(unit, {below(index, kTpids), at_most(tpid, vchip::kMaxTpid)},
                [=](Unit &chip) { chip.tag.inner()[index] = tpid; });
}

int32_t rtk_vlan_outerTpidEntry_set(uint32_t unit, uint32_t index, uint32_t tpid) {
  return change(unit, {below(index, kTpids), at_most(tpid, vchip::kMaxTpid)},
                [=](Unit &chip) { chip.tag.outer()[index] = tpid; });
}

int32_t swctl_platform_outer_tpid_get(uint32_t unit, uint32_t index, uint32_t *tpid) {
  return vchip::look(unit, {not_null(tpid), below(index, kTpids)}, [=](const Unit &chip) {
    *tpid = chip.tag.outer()[index];
    return 0;
  });
}

int32_t rtk_vlan_portIgrInnerTpid_set(uint32_t unit, int32_t port, uint32_t mask) {
  return set_word(unit, port, &PortTags::ingress_inner_tpids, mask,
                  at_most(mask, vchip::kTpidMask));
}

int32_t rtk_vlan_portEgrInnerTpid_get(uint32_t unit, int32_t port, uint32_t *index) {
  return get_word(unit, port, &PortTags::egress_inner_tpid, index);
}

int32_t rtk_vlan_portEgrInnerTpid_set(uint32_t unit, int32_t port, uint32_t index) {
  return set_word(unit, port, &PortTags::egress_inner_tpid, index, below(index, kTpids));
}

int32_t rtk_vlan_portEgrOuterTpid_set(uint32_t unit, int32_t port, uint32_t index) {
  return set_word(unit, port, &PortTags::egress_outer_tpid, index, below(index, kTpids));
}
