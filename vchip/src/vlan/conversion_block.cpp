// SPDX-License-Identifier: MIT
#include "vlan/conversion_block.h"

#include <swctl/platform/sdk.h>
#include <swctl/platform/vlan_read.h>

#include <atomic>
#include <vector>

#include "core/check.h"
#include "core/chip.h"
#include "core/dump.h"
#include "core/table.h"

namespace vchip {
namespace {

int32_t on_egress_entry(uint32_t index) {
  return index < kEgressEntries ? 0 : VCHIP_E_INDEX;
}

int32_t on_ingress_block(uint32_t block) {
  return block < kIngressBlocks ? 0 : VCHIP_E_INDEX;
}

// Values of a key that is ignored have no meaning and are not looked at.
int32_t possible(const chip_vlan_egress_entry *entry) {
  if (entry == nullptr) return 0;
  const bool flags = entry->valid <= 1 && entry->ignore_vid <= 1 && entry->ignore_port <= 1 &&
                     entry->ignore_second_key <= 1;
  const bool vids = (entry->ignore_vid != 0 || entry->vid < kVlanIds) && entry->new_vid < kVlanIds;
  const bool port = entry->ignore_port != 0 || entry->port < VCHIP_PORTS;
  if (!port) return VCHIP_E_PORT;
  return flags && vids ? 0 : VCHIP_E_VALUE;
}

// Field by field: what a caller's memory holds between them must not become
// part of an image. The valid flag is left alone.
void copy_fields(chip_vlan_egress_entry &to, const chip_vlan_egress_entry &from) {
  to.ignore_vid = from.ignore_vid;
  to.vid = from.vid;
  to.ignore_second_key = from.ignore_second_key;
  to.second_key = from.second_key;
  to.field6 = from.field6;
  to.field7 = from.field7;
  to.ignore_port = from.ignore_port;
  to.port = from.port;
  to.field10 = from.field10;
  to.field11 = from.field11;
  to.new_vid = from.new_vid;
  to.field13 = from.field13;
  to.field14 = from.field14;
}

void dump_key(Dump &entry, const char *name, uint8_t ignored, uint32_t value) {
  if (ignored != 0) return entry.null(name);
  entry.number(name, value);
}

void dump_entry(Dump &entry, uint32_t index, const chip_vlan_egress_entry &egress) {
  entry.number("index", index);
  dump_key(entry, "port", egress.ignore_port, egress.port);
  dump_key(entry, "vid", egress.ignore_vid, egress.vid);
  dump_key(entry, "second_key", egress.ignore_second_key, egress.second_key);
  entry.number("new_vid", egress.new_vid);
  entry.numbers("other_fields", {egress.field6, egress.field7, egress.field10, egress.field11,
                                 egress.field13, egress.field14});
}

}  // namespace

// Power-on modes differ from what management programs set, so that a missing
// initialisation shows.
void ConversionBlock::reset() {
  for (chip_vlan_egress_entry &entry : egress_) entry = {};
  for (uint32_t block = 0; block < kIngressBlocks; ++block) modes_[block] = block;
}

void ConversionBlock::set_egress(uint32_t index, const chip_vlan_egress_entry &entry) {
  chip_vlan_egress_entry &own = egress_[index];
  const std::atomic_ref<uint32_t> valid(own.valid);
  valid.exchange(0);
  copy_fields(own, entry);
  valid.exchange(entry.valid);
}

void ConversionBlock::dump(const char *name, Dump &unit) const {
  std::vector<uint32_t> valid;
  for (uint32_t index = 0; index < kEgressEntries; ++index)
    if (egress_[index].valid != 0) valid.push_back(index);
  unit.object(name, [&](Dump &block) {
    block.objects("egress", valid.size(), [&](Dump &entry, size_t place) {
      dump_entry(entry, valid[place], egress_[valid[place]]);
    });
    block.numbers("ingress_block_modes", {modes_.begin(), modes_.end()});
  });
}

}  // namespace vchip

int32_t rtk_vlan_egrVlanCnvtEntry_set(uint32_t unit, uint32_t index,
                                      const chip_vlan_egress_entry *entry) {
  return vchip::change(
      unit, {vchip::not_null(entry), vchip::on_egress_entry(index), vchip::possible(entry)},
      [=](vchip::Unit &chip) { chip.conversion.set_egress(index, *entry); });
}

int32_t rtk_vlan_igrVlanCnvtBlkMode_set(uint32_t unit, uint32_t block, uint32_t mode) {
  return vchip::change(unit,
                       {vchip::on_ingress_block(block), vchip::at_most(mode, vchip::kMaxBlockMode)},
                       [=](vchip::Unit &chip) { chip.conversion.set_mode(block, mode); });
}

int32_t swctl_platform_vlan_egress_next(uint32_t unit, int32_t from,
                                        swctl_platform_vlan_egress *egress) {
  return vchip::look(
      unit, {vchip::not_null(egress), vchip::search_from(from)}, [=](const vchip::Unit &chip) {
        *egress = {};
        egress->index = vchip::first_used(from, vchip::kEgressEntries, [&](uint32_t index) {
          return chip.conversion.egress(index).valid != 0;
        });
        if (egress->index >= 0)
          egress->entry = chip.conversion.egress(static_cast<uint32_t>(egress->index));
        return 0;
      });
}
