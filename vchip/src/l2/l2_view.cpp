// SPDX-License-Identifier: MIT
#include <swctl-vchip/l2_view.h>

#include "chip/viewing.h"
#include "common/address_text.h"
#include "common/check.h"

namespace vchip {

std::vector<AddressView> addresses(uint32_t unit) {
  Viewing chip;
  const AddressTable &table = chip.unit(unit).l2.table();
  std::vector<AddressView> all;
  for (int32_t index = table.next(kNoIndex); index != kNoIndex; index = table.next(index)) {
    const chip_l2_ucast_entry &entry = table.entry(index);
    all.push_back({index, entry.vid, mac_text(entry.mac), entry.port, entry.trunk, entry.flags,
                   entry.state, entry.aux, entry.extra, table.age(index)});
  }
  return all;
}

std::vector<GroupView> groups(uint32_t unit) {
  Viewing chip;
  const GroupBlock &block = chip.unit(unit).group;
  std::vector<GroupView> all;
  for (int32_t index = block.next(kNoIndex); index != kNoIndex; index = block.next(index)) {
    const chip_l2_mcast_entry entry = block.entry(index);
    all.push_back({index, entry.vid, mac_text(entry.mac), entry.portmask, entry.fwdIndex});
  }
  return all;
}

LearnView learning(uint32_t unit, int32_t port) {
  Viewing chip;
  const L2Block &block = chip.unit(unit).l2;
  expect_port(port);
  const LearnLimit &limit = block.limit(port);
  return {limit.enabled != 0, limit.limit, block.table().learned(port)};
}

uint32_t aging(uint32_t unit) {
  Viewing chip;
  return chip.unit(unit).l2.aging();
}

}  // namespace vchip
