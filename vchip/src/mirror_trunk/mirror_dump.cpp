// SPDX-License-Identifier: MIT
#include "document/dump.h"
#include "mirror_trunk/mirror_block.h"

namespace vchip {
namespace {

void dump_group(Dump &entry, const chip_mirror_entry &group) {
  entry.flag("enable", group.enable != 0);
  entry.number("mirroring_port", group.mirroring_port);
  entry.ports("ingress", group.ingress);
  entry.ports("egress", group.egress);
  entry.flag("field7", group.field7 != 0);
  entry.flag("cpu_port", group.field12 != 0);
  entry.flag("flows", group.field15 != 0);
  entry.numbers("other_fields", {group.field5, group.field6, group.field8, group.field9,
                                 group.field10, group.field11, group.field13, group.field14});
}

}  // namespace

void MirrorBlock::dump(const char *name, Dump &unit) const {
  unit.objects(name, groups_.size(),
               [this](Dump &entry, size_t group) { dump_group(entry, groups_[group]); });
}

}  // namespace vchip
