// SPDX-License-Identifier: MIT
// Meters that rules refer to, and the burst sizes that they share.
#ifndef VCHIP_ACL_METER_BLOCK_H
#define VCHIP_ACL_METER_BLOCK_H

#include <swctl-vchip/vchip.h>
#include <swctl/platform/field_records.h>

#include <cstdint>

#include "common/bucket.h"

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kMaxMeterMode = 1;
inline constexpr uint32_t kMaxMeterRate = 0xFFFFF;
inline constexpr uint32_t kMaxMeterBurst = 0xFFFF;

class MeterBlock {
 public:
  static constexpr uint32_t kLayout = 2;
  void power_on();
  void repair() {}  // a meter is off while it is written; sizes are single words
  bool sound() const;
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  uint32_t mode(uint32_t meter) const { return meters_[meter].mode; }
  void set_mode(uint32_t meter, uint32_t mode) { meters_[meter].mode = mode; }
  const chip_acl_meter &entry(uint32_t meter) const { return meters_[meter].entry; }
  void set_entry(uint32_t meter, const chip_acl_meter &entry, uint64_t now);
  Fill fill(uint32_t meter) const;
  const Bucket &bucket(uint32_t meter) const { return meters_[meter].bucket; }
  void take(uint32_t meter, uint64_t tokens, uint64_t now) {
    meters_[meter].bucket.take(fill(meter), tokens, now);
  }
  const chip_acl_burst &burst() const { return burst_; }
  void set_burst(const chip_acl_burst &burst, uint64_t now);

 private:
  struct Meter {
    chip_acl_meter entry;
    uint32_t mode;
    Bucket bucket;
  };
  void dump_meter(Dump &entry, uint32_t number) const;

  Meter meters_[VCHIP_METERS];
  chip_acl_burst burst_;
};

}  // namespace vchip

#endif
