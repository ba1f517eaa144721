// SPDX-License-Identifier: MIT
#include <string>
#include <vector>

#include "common/address_text.h"
#include "document/dump.h"
#include "l2/group_block.h"
#include "l2/l2_block.h"

namespace vchip {
namespace {

struct FlagName {
  uint32_t bit;
  const char *name;
};
constexpr FlagName kFlagNames[] = {
    {kFilterSourceFlag, "filter-source"},
    {kFilterDestinationFlag, "filter-destination"},
    {kStaticFlag, "static"},
    {kViolationIgnoredFlag, "violation-ignored"},
    {kViolationFlag, "violation"},
};

std::vector<std::string> flag_names(uint32_t flags) {
  std::vector<std::string> names;
  for (const FlagName &flag : kFlagNames)
    if ((flags & flag.bit) != 0) names.emplace_back(flag.name);
  return names;
}

void dump_flags(Dump &entry, uint32_t flags) {
  entry.number("word", flags);
  entry.texts("names", flag_names(flags));
}

void dump_address(Dump &entry, const AddressTable &table, int32_t index) {
  const chip_l2_ucast_entry &own = table.entry(index);
  entry.number("index", index);
  entry.number("vid", own.vid);
  entry.text("mac", mac_text(own.mac));
  entry.number("port", own.port);
  entry.number("trunk", own.trunk);
  entry.object("flags", [&](Dump &word) { dump_flags(word, own.flags); });
  entry.flag("violation", (own.state & kViolationState) != 0);
  entry.number("state", own.state);
  entry.number("aux", own.aux);
  entry.number("extra", own.extra);
  entry.number("age", table.age(index));
}

void dump_group(Dump &entry, const GroupBlock &block, int32_t index) {
  const chip_l2_mcast_entry own = block.entry(index);
  entry.number("index", index);
  entry.number("vid", own.vid);
  entry.text("mac", mac_text(own.mac));
  entry.ports("ports", own.portmask);
  entry.number("forwarding", own.fwdIndex);
}

// The indexes of all that a table holds.
template <typename Table>
std::vector<int32_t> indexes(const Table &table) {
  std::vector<int32_t> all;
  for (int32_t index = table.next(kNoIndex); index != kNoIndex; index = table.next(index))
    all.push_back(index);
  return all;
}

void dump_port(Dump &entry, const L2Block &block, int32_t port) {
  const LearnLimit &limit = block.limit(port);
  entry.number("port", port);
  entry.number("learned", block.table().learned(port));
  if (port == VCHIP_CPU_PORT) return;
  entry.flag("limited", limit.enabled != 0);
  entry.number("limit", limit.limit);
}

}  // namespace

void L2Block::dump(const char *name, Dump &unit) const {
  const std::vector<int32_t> all = indexes(table_);
  unit.object(name, [&](Dump &block) {
    block.number("aging", aging_);
    block.objects("ports", VCHIP_PORTS, [this](Dump &entry, size_t port) {
      dump_port(entry, *this, static_cast<int32_t>(port));
    });
    block.objects("addresses", all.size(),
                  [&](Dump &entry, size_t i) { dump_address(entry, table_, all[i]); });
  });
}

void GroupBlock::dump(const char *name, Dump &unit) const {
  const std::vector<int32_t> all = indexes(*this);
  unit.objects(name, all.size(), [&](Dump &entry, size_t i) { dump_group(entry, *this, all[i]); });
}

}  // namespace vchip
