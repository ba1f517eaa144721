// SPDX-License-Identifier: MIT
#include "mirror_trunk/mirror_block.h"

#include <swctl-vchip/mirror_trunk_view.h>
#include <swctl/platform/sdk.h>

#include <atomic>
#include <cstring>

#include "core/check.h"
#include "core/dump.h"
#include "core/ports_in.h"
#include "core/viewing.h"

namespace vchip {
namespace {

static_assert(sizeof(chip_mirror_entry) == kMirrorWords * sizeof(uint32_t));

int32_t on_group(uint32_t group) {
  return group < kMirrorGroups ? 0 : VCHIP_E_INDEX;
}

// Words without a name are kept as they come.
int32_t possible(const chip_mirror_entry *entry) {
  if (entry == nullptr) return 0;
  const uint32_t beyond = ~kAllPorts;
  if (entry->mirroring_port >= VCHIP_PORTS) return VCHIP_E_PORT;
  if (((entry->ingress | entry->egress) & beyond) != 0) return VCHIP_E_PORT;
  const bool flags =
      entry->enable <= 1 && entry->field7 <= 1 && entry->field12 <= 1 && entry->field15 <= 1;
  return flags ? 0 : VCHIP_E_VALUE;
}

void dump_group(Dump &entry, const chip_mirror_entry &group) {
  entry.flag("enable", group.enable != 0);
  entry.number("mirroring_port", group.mirroring_port);
  entry.numbers("ingress", ports_in(group.ingress));
  entry.numbers("egress", ports_in(group.egress));
  entry.flag("field7", group.field7 != 0);
  entry.flag("cpu_port", group.field12 != 0);
  entry.flag("flows", group.field15 != 0);
  entry.numbers("other_fields", {group.field5, group.field6, group.field8, group.field9,
                                 group.field10, group.field11, group.field13, group.field14});
}

}  // namespace

void MirrorBlock::reset() {
  groups_.fill({});
}

void MirrorBlock::set_group(uint32_t group, const chip_mirror_entry &entry) {
  chip_mirror_entry &own = groups_[group];
  const std::atomic_ref<uint32_t> enable(own.enable);
  chip_mirror_entry disabled = entry;
  disabled.enable = 0;
  enable.exchange(0);
  own = disabled;
  enable.exchange(entry.enable);
}

void MirrorBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, groups_.size(),
               [this](Dump &entry, size_t group) { dump_group(entry, groups_[group]); });
}

std::vector<std::vector<uint32_t>> mirror_groups(uint32_t unit) {
  Viewing chip;
  const MirrorBlock &block = chip.unit(unit).mirror;
  std::vector<std::vector<uint32_t>> all;
  for (uint32_t group = 0; group < kMirrorGroups; ++group) {
    std::vector<uint32_t> words(kMirrorWords);
    memcpy(words.data(), &block.group(group), sizeof(chip_mirror_entry));
    all.push_back(words);
  }
  return all;
}

}  // namespace vchip

int32_t rtk_mirror_group_get(uint32_t unit, uint32_t group, chip_mirror_entry *entry) {
  return vchip::look(unit, {vchip::not_null(entry), vchip::on_group(group)},
                     [=](const vchip::Unit &chip) {
                       *entry = chip.mirror.group(group);
                       return 0;
                     });
}

int32_t rtk_mirror_group_set(uint32_t unit, uint32_t group, const chip_mirror_entry *entry) {
  return vchip::change(unit,
                       {vchip::not_null(entry), vchip::on_group(group), vchip::possible(entry)},
                       [=](vchip::Unit &chip) { chip.mirror.set_group(group, *entry); });
}
