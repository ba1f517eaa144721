// SPDX-License-Identifier: MIT
#include <array>

#include "document/findings.h"
#include "l2/address_table.h"
#include "l2/l2_block.h"
#include "l2/l2_check.h"

namespace vchip {
namespace {

// Also of an entry that is no more: what it held stays.
void check_entry(Findings &findings, const chip_l2_ucast_entry &entry) {
  findings.at_most("vid", entry.vid, kVlanIds - 1);
  findings.rule(on_station(entry.mac) == 0, "mac", "is a group address");
  findings.any("mac", entry.mac);
  findings.zero("padding", entry.padding);
  findings.at_most("port", entry.port, VCHIP_PORTS - 1);
  findings.at_most("trunk", entry.trunk, kTrunkGroups - 1);
  findings.any("flags", entry.flags);
  findings.any("state", entry.state);
  findings.any("aux", entry.aux);
  findings.zero("rest", entry.rest);
  findings.any("extra", entry.extra);
}

}  // namespace

// An entry lies in the bucket of its key, and there is no other with that key.
void AddressTable::check_place(Findings &findings, int32_t index) const {
  const chip_l2_ucast_entry &own = entry(index);
  findings.rule(bucket_of(own.vid, own.mac) == index / kPlaces, "", "is in a bucket of others");
  findings.rule(find(own.vid, own.mac) >= index || bucket_of(own.vid, own.mac) != index / kPlaces,
                "", "is there twice");
  if (is_static(own)) return;
  findings.rule(slots_[index].seen >= oldest_, "seen", "is before that of the oldest entry");
}

void AddressTable::check(Findings &findings) const {
  std::array<uint32_t, VCHIP_PORTS> counted = {};
  findings.any("taken", taken_);
  findings.any("now", now_);
  findings.any("oldest", oldest_);
  findings.is("unused", unused_, 0);
  findings.each("entries", slots_, [&](const Slot &slot, size_t number) {
    const auto index = static_cast<int32_t>(number);
    if (!is_taken(index) && findings.is_empty(slot)) return;
    check_entry(findings, slot.entry);
    findings.is("unused", slot.unused, 0);
    findings.at_most("seen", slot.seen, now_);
    if (!is_taken(index)) return;
    check_place(findings, index);
    if (!is_static(slot.entry) && on_port(slot.entry.port) == 0)
      ++counted[static_cast<size_t>(slot.entry.port)];
  });
  findings.each("learned", learned_,
                [&](const uint32_t &count, size_t port) { findings.is("", count, counted[port]); });
}

// Nobody limits what the CPU port learns.
void L2Block::check(Findings &findings) const {
  table_.check(findings);
  findings.at_most("aging", aging_, kMaxAging);
  findings.is("unused", unused_, 0);
  findings.each("limits", limits_, [&](const LearnLimit &limit, size_t port) {
    const bool front = port != VCHIP_CPU_PORT;
    findings.at_most("enabled", limit.enabled, front ? 1 : 0);
    findings.in("limit", limit.limit, front ? 0 : kMaxLearnLimit, kMaxLearnLimit);
  });
}

}  // namespace vchip
