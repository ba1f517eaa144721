// SPDX-License-Identifier: MIT
#include "acl/acl_count_block.h"
#include "acl/meter_block.h"
#include "document/findings.h"

namespace vchip {

void MeterBlock::check(Findings &findings) const {
  findings.each("meters", meters_, [&](const Meter &meter, size_t number) {
    const uint32_t slot = meter.entry.burst_slot;
    findings.flag("enable", meter.entry.enable);
    findings.at_most("rate", meter.entry.rate, kMaxMeterRate);
    findings.at_most("burst_slot", meter.entry.burst_slot, CHIP_ACL_BURST_SLOTS - 1);
    findings.at_most("mode", meter.mode, kMaxMeterMode);
    findings.any("bucket.level", meter.bucket.level);
    findings.any("bucket.time", meter.bucket.time);
    // The slot says how much the bucket holds.
    if (slot < CHIP_ACL_BURST_SLOTS && meter.bucket.level != kFull)
      findings.at_most("bucket.level", meter.bucket.level,
                       fill(static_cast<uint32_t>(number)).size);
  });
  findings.each_at_most("burst", burst_.size, kMaxMeterBurst);
}

// Whatever was counted.
void AclCountBlock::check(Findings &findings) const {
  findings.any("packets", packets_);
  findings.any("bytes", bytes_);
}

}  // namespace vchip
