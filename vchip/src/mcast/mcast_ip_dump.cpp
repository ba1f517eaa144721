// SPDX-License-Identifier: MIT
#include <vector>

#include "common/address_text.h"
#include "document/dump.h"
#include "mcast/mcast_ip_block.h"

namespace vchip {
namespace {

void dump_addresses(Dump &entry, const chip_ip_mcast_entry &own) {
  entry.text("source", ip4_text(own.address_a));
  entry.text("group", ip4_text(own.address_b));
}

void dump_addresses(Dump &entry, const chip_ip6_mcast_entry &own) {
  entry.text("source", ip6_text(own.address_a.bytes));
  entry.text("group", ip6_text(own.address_b.bytes));
}

template <typename Table>
void dump_entries(Dump &block, const char *name, const Table &table) {
  std::vector<size_t> used;
  for (size_t index = 0; index < table.size(); ++index)
    if (table[index].used != 0) used.push_back(index);
  block.objects(name, used.size(), [&](Dump &entry, size_t place) {
    const auto &own = table[used[place]].entry;
    entry.number("vid", own.vid);
    dump_addresses(entry, own);
    entry.ports("ports", own.ports);
  });
}

}  // namespace

void McastIpBlock::dump(const char *name, Dump &unit) const {
  unit.object(name, [this](Dump &block) {
    dump_entries(block, "ip", ip_);
    dump_entries(block, "ip6", ip6_);
    block.number("ip_mode", ip_mode_);
    block.number("ip6_mode", ip6_mode_);
    block.objects("ports", miss_actions_.size(), [this](Dump &entry, size_t port) {
      entry.number("port", static_cast<int64_t>(port));
      entry.numbers("miss_action", numbers_of(miss_actions_[port]));
    });
  });
}

}  // namespace vchip
