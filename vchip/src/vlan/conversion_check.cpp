// SPDX-License-Identifier: MIT
#include "common/numbers.h"
#include "document/findings.h"
#include "vlan/conversion_block.h"

namespace vchip {
namespace {

// The bytes of the record between a flag and the word after it.
void check_gap(Findings &findings, const uint8_t &flag, const uint32_t &word) {
  const uint8_t *from = &flag + 1;
  const auto *to = reinterpret_cast<const uint8_t *>(&word);
  findings.zero_bytes("padding", from, static_cast<size_t>(to - from));
}

// Of a call that was killed the flag that a key is ignored and the key may be
// from two entries; that entry is not valid.
void check_keys(Findings &findings, const chip_vlan_egress_entry &entry) {
  constexpr uint64_t kAny = UINT32_MAX;
  const bool whole = entry.valid != 0;
  findings.flag("ignore_vid", entry.ignore_vid);
  check_gap(findings, entry.ignore_vid, entry.vid);
  findings.at_most("vid", entry.vid, whole && entry.ignore_vid == 0 ? kVlanIds - 1 : kAny);
  findings.flag("ignore_second_key", entry.ignore_second_key);
  check_gap(findings, entry.ignore_second_key, entry.second_key);
  findings.any("second_key", entry.second_key);
  findings.flag("ignore_port", entry.ignore_port);
  check_gap(findings, entry.ignore_port, entry.port);
  findings.at_most("port", entry.port, whole && entry.ignore_port == 0 ? VCHIP_PORTS - 1 : kAny);
}

}  // namespace

void ConversionBlock::check(Findings &findings) const {
  findings.each("egress", egress_, [&](const chip_vlan_egress_entry &entry, size_t) {
    findings.flag("valid", entry.valid);
    check_keys(findings, entry);
    findings.any("field6", entry.field6);
    findings.any("field7", entry.field7);
    findings.any("field10", entry.field10);
    findings.any("field11", entry.field11);
    findings.any("field13", entry.field13);
    findings.any("field14", entry.field14);
    findings.at_most("new_vid", entry.new_vid, kVlanIds - 1);
  });
  findings.each_at_most("modes", modes_, kMaxBlockMode);
}

}  // namespace vchip
