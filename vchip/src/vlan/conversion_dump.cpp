// SPDX-License-Identifier: MIT
#include <vector>

#include "document/dump.h"
#include "vlan/conversion_block.h"

namespace vchip {
namespace {

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
