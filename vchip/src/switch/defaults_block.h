// SPDX-License-Identifier: MIT
// Settings of a unit that management programs write once, at their start.
#ifndef VCHIP_SWITCH_DEFAULTS_BLOCK_H
#define VCHIP_SWITCH_DEFAULTS_BLOCK_H

#include <cstdint>

namespace vchip {

class Dump;
class Findings;

inline constexpr uint32_t kMaxPrioritySource = 1;

class DefaultsBlock {
 public:
  static constexpr uint32_t kLayout = 2;
  // Power-on values differ from what management programs set, so that a missing
  // initialisation shows.
  void power_on() {
    zero_source_learned_ = 1;
    priority_source_ = kMaxPrioritySource;
    meters_count_gap_ = 1;
  }
  void repair() {}  // single words, each valid on its own
  void dump(const char *name, Dump &unit) const;
  void check(Findings &findings) const;

  bool zero_source_learned() const { return zero_source_learned_ != 0; }
  void set_zero_source_learned(bool learned) { zero_source_learned_ = learned; }
  uint32_t priority_source() const { return priority_source_; }
  void set_priority_source(uint32_t source) { priority_source_ = source; }
  bool meters_count_gap() const { return meters_count_gap_ != 0; }
  void set_meters_count_gap(bool count) { meters_count_gap_ = count; }

 private:
  uint32_t zero_source_learned_;
  uint32_t priority_source_;
  uint32_t meters_count_gap_;
};

}  // namespace vchip

#endif
